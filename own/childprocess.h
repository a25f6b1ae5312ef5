#ifndef ZANT_OWN_CHILDPROCESS_H
#define ZANT_OWN_CHILDPROCESS_H

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "own/cxx17.h"

/// Programs that are started by name, and what they say. Internal. Texts are UTF-8.
namespace Zant {
namespace Platform {

/// How a process came to its end.
struct ChildStatus {
    int code = 0;  ///< the exit code
    std::string
        death;  ///< "Segmentation fault", "access violation (exception C0000005)"; empty when it ended by itself
    bool missedFile = false;  ///< it died since a file in its memory ends early
};

/// Takes what a process says as it comes, in pieces of any size.
using TakePiece = std::function<void(std::string_view)>;

/// A program that runs. It has nothing to read. What it leaves running ends with it, and it dies with this process.
class Child {
public:
    /// @param command the program's file, or a name that the search path finds, and its arguments
    /// @param folder to run in; empty for that of this process
    /// Throws std::runtime_error when it cannot be started.
    explicit Child(const std::vector<std::string>& command, const std::string& folder = {});
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Waits for it to say something, at most so long.
    /// @param text takes its standard output and standard error
    /// @param words takes what it writes by writeToParent()
    void listen(int milliseconds, const TakePiece& text, const TakePiece& words);

    bool hasEnded() const;

    /// Ends it, unless it has ended, with what it left running. What it said last can be listened to afterwards.
    ChildStatus end();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// The command that starts this program again, without arguments. Where this program runs in an emulator, the variable
/// ZANT_EMULATOR names that and its options, separated by blanks; it stands in front.
std::vector<std::string> thisProgram();

// ---- In a program that was started by Child -------------------------------------------------------------------------

/// To be called first: opens the way back, lets the process die with its parent, and makes standard output arrive line
/// by line.
void joinParent();

/// Writes to the parent past standard output, which the code that is tried may use. Without a parent nothing happens.
void writeToParent(std::string_view text);

/// Ends the process without anything that the end of a process runs.
[[noreturn]] void leaveAtOnce(int code);

}  // namespace Platform
}  // namespace Zant

#endif
