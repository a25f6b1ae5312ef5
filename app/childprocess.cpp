#include "app/childprocess.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Zant::App {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int glanceMilliseconds = 20;
constexpr size_t pieceSize = 65536;  // all that a pipe holds, so that one read empties it

// What the last line says when the child came to its end. Only this program's own code says it: an exit code is not
// enough, since the code that is tried may end the process with any.
constexpr const char* done = "done";

// ---- inside of the child --------------------------------------------------------------------------------------------

int wordPipe = -1;
bool actIsOver = false;

void sayDone() {
    if (actIsOver) tellParent(done);
}

struct Pipe {
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot start a process");
    }
    ~Pipe() {
        close(ends[0]);
        close(ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int ends[2];
};

void standAlone(pid_t parent, const Pipe& text, const Pipe& words) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE})
        std::signal(signal, SIG_DFL);
    const int nothing = open("/dev/null", O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    dup2(text.ends[1], STDOUT_FILENO);
    dup2(text.ends[1], STDERR_FILENO);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // a child that is ended has said its last line
    wordPipe = words.ends[1];
}

// What the act throws ends the child, as it would end a host.
[[noreturn]] void actInChild(const std::function<int()>& act, const ChildRules& rules) noexcept {
    if (rules.withExitHandlers) std::atexit(sayDone);  // the first of the child's, and so the last that runs
    const int code = act();
    std::fflush(nullptr);
    actIsOver = true;
    if (rules.withExitHandlers) {
        tellParent("the process ends");
        std::exit(code);
    }
    sayDone();
    _exit(code);
}

// ---- the parent's side ----------------------------------------------------------------------------------------------

bool hasEnded(pid_t child) {
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == child;
}

/// One of the child's pipes, read without waiting.
class Reader {
public:
    explicit Reader(Pipe& pipe) : from{pipe.ends[0], POLLIN, 0} {
        fcntl(from.fd, F_SETFL, O_NONBLOCK);
        close(std::exchange(pipe.ends[1], -1));
    }

    /// What is there; afterwards the pipe is not asked again if it has ended.
    std::string_view read() {
        const ssize_t count = ::read(from.fd, piece_.data(), piece_.size());
        if (count == 0) from.fd = -1;
        return {piece_.data(), count > 0 ? static_cast<size_t>(count) : 0};
    }

    pollfd from;

private:
    std::vector<char> piece_ = std::vector<char>(pieceSize);
};

/// What the child says, and where it is.
class Listener {
public:
    Listener(Pipe& text, Pipe& words, const TakeOutput& taker) : said_(text), told_(words), output_(taker) {}

    void listen(int milliseconds) {
        pollfd both[] = {said_.from, told_.from};
        poll(both, 2, milliseconds);
        if (const std::string_view piece = said_.read(); !piece.empty()) output_(piece);
        takeWords(told_.read());
    }

    const std::string& lastWord() const { return word_; }

private:
    void takeWords(std::string_view piece) {
        for (const char c : piece) {
            if (c == '\n')
                word_ = std::exchange(unfinished_, {});
            else if (unfinished_.size() < 256)
                unfinished_ += c;
        }
    }

    Reader said_, told_;
    const TakeOutput& output_;
    std::string word_, unfinished_;
};

/// Waits for the child's end, or brings it about. @return whether it ended by itself.
bool attend(pid_t child, const ChildRules& rules, Listener& listener) {
    const Clock::time_point deadline = Clock::now() + rules.limit;
    while (!hasEnded(child)) {
        if (Clock::now() >= deadline || (rules.stop && *rules.stop)) return false;
        listener.listen(glanceMilliseconds);
    }
    return true;
}

}  // namespace

std::string ChildEnd::trouble() const {
    if (!inTime) return fmt::format("did not come back within {} s", limit.count());
    if (WIFSIGNALED(status)) return fmt::format("died: {}", strsignal(WTERMSIG(status)));
    if (!finished) return fmt::format("ended the process, with exit code {}", WEXITSTATUS(status));
    return WEXITSTATUS(status) == 0 ? "" : fmt::format("exit code {}", WEXITSTATUS(status));
}

ChildEnd runInChild(const std::function<int()>& act, const ChildRules& rules, const TakeOutput& output) {
    Pipe text, words;
    std::fflush(nullptr);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("cannot start a process");
    if (child == 0) {
        standAlone(parent, text, words);
        actInChild(act, rules);
    }
    setpgid(child, child);
    Listener listener(text, words, output);
    const bool inTime = attend(child, rules, listener);
    kill(-child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    listener.listen(0);
    const bool finished = listener.lastWord() == done;
    return {finished ? "" : listener.lastWord(), finished, inTime, status, rules.limit};
}

void tellParent(const std::string& doing) {
    const std::string line = doing + '\n';
    // Without its pipe, a child is one that never finished.
    [[maybe_unused]] const ssize_t written = write(wordPipe, line.data(), line.size());
}

}  // namespace Zant::App
