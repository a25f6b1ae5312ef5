#ifndef ZANT_APP_CHILDPROCESS_H
#define ZANT_APP_CHILDPROCESS_H

#include <chrono>
#include <csignal>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "own/childprocess.h"

namespace Zant::App {

/// For code that may crash, hang or end its process: a task runs in a child process, which is this program started once
/// more, and the parent, which holds the clock, tells what became of it. What the child leaves running ends with it.
/// It has nothing to read, and it dies with its parent.

using Arguments = std::vector<std::string>;

/// What a child can be started for.
struct ChildTask {
    const char* name;
    int (*act)(const Arguments& arguments);  ///< answers the exit code
    /// Whether the child ends as a process does, by exit() with everything that it runs, or at once.
    bool withExitHandlers;
};

/// What became of a child.
struct ChildEnd {
    std::string lastWord;  ///< what it said last by tellParent(); empty when it came to the end of its task
    bool finished;         ///< it came to the end of its task, and of its exit handlers where it has them
    bool inTime;           ///< it ended by itself; otherwise it was ended when its time was up
    Platform::ChildStatus status;
    std::chrono::seconds limit;

    /// "died: Segmentation fault", "did not come back within 10 s"; empty when it finished with exit code 0.
    std::string trouble() const;
    /// The exit code of a child that came to its end; -1 of every other one.
    int answer() const;
};

struct ChildRules {
    std::chrono::seconds limit;
    /// The child is ended as soon as this is not 0; null for never.
    const volatile std::sig_atomic_t* stop = nullptr;
};

/// Takes the child's standard output and standard error as they come, in pieces of any size.
using TakeOutput = Platform::TakePiece;

/// Runs a task in a child until it ends. Throws std::runtime_error when no process can be started.
ChildEnd runInChild(const ChildTask& task, const Arguments& arguments, const ChildRules& rules,
                    const TakeOutput& output);

/// Called in a child before each thing that it does, in words that go on after "while": "opening the file".
void tellParent(const std::string& doing);

/// In a process that runInChild() has started: does the task and ends the process. Returns in every other one.
void actIfChild(std::initializer_list<const ChildTask*> tasks, int argc, char** argv);

}  // namespace Zant::App

#endif
