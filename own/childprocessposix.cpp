#include "own/childprocess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "own/dl.h"

extern char** environ;

namespace Zant {
namespace Platform {
namespace {

constexpr size_t pieceSize = 65536;  // all that a pipe holds, so that one read empties it
constexpr int wordsDescriptor = 3;   // in the child

[[noreturn]] void fail(int reason) {
    throw std::runtime_error(std::string("cannot start a process: ") + std::strerror(reason));
}

struct Pipe {
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) fail(errno);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
    }
    ~Pipe() {
        close(ends[0]);
        closeWriteEnd();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeWriteEnd() {
        if (ends[1] >= 0) close(std::exchange(ends[1], -1));
    }
    int ends[2];
};

/// The parent's end of a pipe, read without waiting.
struct Reader {
    void read(const TakePiece& take) {
        const ssize_t count = ::read(asked.fd, piece.data(), piece.size());
        if (count == 0) asked.fd = -1;  // it has ended, and is not asked again
        if (count > 0) take({piece.data(), static_cast<size_t>(count)});
    }
    pollfd asked;
    std::vector<char> piece = std::vector<char>(pieceSize);
};

/// What is done between the start of a process and that of its program.
class Preparation {
public:
    Preparation(const Pipe& text, const Pipe& words, const std::string& folder) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, text.ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, text.ends[1], STDERR_FILENO);
        posix_spawn_file_actions_adddup2(&actions, words.ends[1], wordsDescriptor);
        if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&attributes, 0);
        sigset_t usual;
        sigemptyset(&usual);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE})
            sigaddset(&usual, signal);
        posix_spawnattr_setsigdefault(&attributes, &usual);
    }
    ~Preparation() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    Preparation(const Preparation&) = delete;
    Preparation& operator=(const Preparation&) = delete;

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

ChildStatus statusOf(int status) {
    if (!WIFSIGNALED(status)) return {WEXITSTATUS(status), "", false};
    return {0, strsignal(WTERMSIG(status)), WTERMSIG(status) == SIGBUS};
}

}  // namespace

struct Child::State {
    Pipe text, words;
    pid_t process = -1;
    Reader said{{text.ends[0], POLLIN, 0}}, told{{words.ends[0], POLLIN, 0}};
    bool ended = false;
    ChildStatus status;
};

Child::Child(const std::vector<std::string>& command, const std::string& folder) : state_(new State) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    std::fflush(nullptr);
    const Preparation preparation(state_->text, state_->words, folder);
    const int reason = posix_spawnp(&state_->process, arguments[0], &preparation.actions, &preparation.attributes,
                                    arguments.data(), environ);
    if (reason != 0) fail(reason);
    state_->text.closeWriteEnd();
    state_->words.closeWriteEnd();
}

Child::~Child() {
    end();
}

void Child::listen(int milliseconds, const TakePiece& text, const TakePiece& words) {
    pollfd both[] = {state_->said.asked, state_->told.asked};
    poll(both, 2, milliseconds);
    state_->said.read(text);
    state_->told.read(words);
}

bool Child::hasEnded() const {
    if (state_->ended) return true;
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(state_->process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == state_->process;
}

ChildStatus Child::end() {
    if (std::exchange(state_->ended, true)) return state_->status;
    kill(-state_->process, SIGKILL);
    int status = 0;
    waitpid(state_->process, &status, 0);
    return state_->status = statusOf(status);
}

// By a name that also finds a file that has been replaced since, where no emulator has to find it.
std::vector<std::string> thisProgram() {
    static const char here = 0;
    const char* const emulator = std::getenv("ZANT_EMULATOR");
    if (!emulator || !*emulator) return {"/proc/self/exe"};
    std::vector<std::string> command;
    std::istringstream words(emulator);
    for (std::string word; words >> word;)
        command.push_back(word);
    command.push_back(DllFileOf(&here));
    return command;
}

// A parent that had died before it could take the process along reads no words.
void joinParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    pollfd words{wordsDescriptor, POLLOUT, 0};
    if (poll(&words, 1, 0) == 1 && (words.revents & POLLERR)) leaveAtOnce(1);
    fcntl(wordsDescriptor, F_SETFD, FD_CLOEXEC);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // a child that is ended has said its last line
}

void writeToParent(std::string_view text) {
    // Without its pipe, a child is one that never finished.
    [[maybe_unused]] const ssize_t written = write(wordsDescriptor, text.data(), text.size());
}

void leaveAtOnce(int code) {
    _exit(code);
}

}  // namespace Platform
}  // namespace Zant
