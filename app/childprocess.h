#ifndef ZANT_APP_CHILDPROCESS_H
#define ZANT_APP_CHILDPROCESS_H

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <string_view>

namespace Zant::App {

/// For code that may crash, hang or end its process: an act runs in a child process, and the parent, which holds the
/// clock, tells what became of it. The child is a process group of its own; what it leaves running ends with it.
/// It has nothing to read, and it dies with its parent.

/// What became of a child.
struct ChildEnd {
    std::string lastWord;  ///< what it said last by tellParent(); empty when it came to the end of its act
    bool finished;         ///< it came to the end of its act, and of its exit handlers where it has them
    bool inTime;           ///< it ended by itself; otherwise it was ended when its time was up
    int status;            ///< as waitpid() gives it

    /// "died: Segmentation fault", "did not come back within 10 s"; empty when it finished with exit code 0.
    std::string trouble() const;
    std::chrono::seconds limit;
};

struct ChildRules {
    std::chrono::seconds limit;
    /// Whether the child ends as a process does, by exit() with everything that it runs, or at once.
    bool withExitHandlers = false;
    /// The child is ended as soon as this is not 0; null for never.
    const volatile std::sig_atomic_t* stop = nullptr;
};

/// Takes the child's standard output and standard error as they come, in pieces of any size.
using TakeOutput = std::function<void(std::string_view)>;

/// Runs an act in a child until it ends; what it returns is the exit code.
/// Throws std::runtime_error when no process can be started.
ChildEnd runInChild(const std::function<int()>& act, const ChildRules& rules, const TakeOutput& output);

/// Called in a child before each thing that it does, in words that go on after "while": "opening the file".
void tellParent(const std::string& doing);

}  // namespace Zant::App

#endif
