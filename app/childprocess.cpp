#include "app/childprocess.h"

#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace Zant::App {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int glanceMilliseconds = 20;
constexpr const char* mark = "--child";

// What the last line says when the child came to its end. Only this program's own code says it: an exit code is not
// enough, since the code that is tried may end the process with any.
constexpr const char* done = "done";

// ---- inside of the child --------------------------------------------------------------------------------------------

bool actIsOver = false;

void sayDone() {
    if (actIsOver) tellParent(done);
}

// What the act throws ends the child, as it would end a host.
[[noreturn]] void actInChild(const ChildTask& task, const Arguments& arguments) noexcept {
    Platform::joinParent();
    if (task.withExitHandlers) std::atexit(sayDone);  // the first of the child's, and so the last that runs
    const int code = task.act(arguments);
    std::fflush(nullptr);
    actIsOver = true;
    if (task.withExitHandlers) {
        tellParent("the process ends");
        std::exit(code);
    }
    sayDone();
    Platform::leaveAtOnce(code);
}

// ---- the parent's side ----------------------------------------------------------------------------------------------

/// What the child does, as it says itself.
class LastWord {
public:
    void take(std::string_view piece) {
        for (const char c : piece) {
            if (c == '\n')
                word_ = std::exchange(unfinished_, {});
            else if (unfinished_.size() < 256)
                unfinished_ += c;
        }
    }
    const std::string& word() const { return word_; }

private:
    std::string word_, unfinished_;
};

}  // namespace

std::string ChildEnd::trouble() const {
    if (!inTime) return fmt::format("did not come back within {} s", limit.count());
    if (!status.death.empty()) return fmt::format("died: {}", status.death);
    if (!finished) return fmt::format("ended the process, with exit code {}", status.code);
    return status.code == 0 ? "" : fmt::format("exit code {}", status.code);
}

int ChildEnd::answer() const {
    return finished && inTime && status.death.empty() ? status.code : -1;
}

ChildEnd runInChild(const ChildTask& task, const Arguments& arguments, const ChildRules& rules,
                    const TakeOutput& output) {
    Arguments command = Platform::thisProgram();
    command.insert(command.end(), {mark, task.name});
    command.insert(command.end(), arguments.begin(), arguments.end());
    Platform::Child child(command);
    LastWord last;
    const auto listen = [&](int milliseconds) {
        child.listen(milliseconds, output, [&](std::string_view words) { last.take(words); });
    };
    const Clock::time_point deadline = Clock::now() + rules.limit;
    bool inTime;
    while (!(inTime = child.hasEnded()) && Clock::now() < deadline && !(rules.stop && *rules.stop))
        listen(glanceMilliseconds);
    const Platform::ChildStatus status = child.end();
    listen(0);
    const bool finished = last.word() == done;
    return {finished ? "" : last.word(), finished, inTime, status, rules.limit};
}

void tellParent(const std::string& doing) {
    Platform::writeToParent(doing + '\n');
}

void actIfChild(std::initializer_list<const ChildTask*> tasks, int argc, char** argv) {
    if (argc < 3 || std::strcmp(argv[1], mark) != 0) return;
    for (const ChildTask* task : tasks)
        if (std::strcmp(argv[2], task->name) == 0) actInChild(*task, Arguments(argv + 3, argv + argc));
}

}  // namespace Zant::App
