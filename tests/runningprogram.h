#ifndef ZANT_TESTS_RUNNINGPROGRAM_H
#define ZANT_TESTS_RUNNINGPROGRAM_H

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>

namespace Zant::Tests {

struct Outcome {
    int code;            // -signal when the program died by one
    std::string output;  // both streams
};

/// The command-line host while it runs, as a user of a shell starts it.
class RunningProgram {
public:
    explicit RunningProgram(const std::string& arguments) {
        int ends[2];
        if (pipe(ends) != 0) return;
        child = fork();
        if (child == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            close(ends[1]);
            const std::string line = "exec " ZANT_PROGRAM " " + arguments;
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        from = ends[0];
    }
    ~RunningProgram() {
        if (child > 0) end(SIGKILL);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Reads on until the text has been printed. @return whether it came before the output ended or a minute went by.
    bool waitFor(const std::string& text) {
        while (output.find(text) == std::string::npos)
            if (!readOn(60000)) return false;
        return true;
    }

    /// Waits for the end, which a signal other than 0 brings about.
    Outcome end(int signal = 0) {
        if (signal) kill(child, signal);
        while (readOn(-1)) {
        }
        close(from);
        int status = 0;
        waitpid(child, &status, 0);
        child = -1;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), output};
    }

private:
    bool readOn(int milliseconds) {
        pollfd ready{from, POLLIN, 0};
        if (poll(&ready, 1, milliseconds) <= 0) return false;
        std::array<char, 4096> piece;
        const ssize_t count = read(from, piece.data(), piece.size());
        if (count > 0) output.append(piece.data(), static_cast<size_t>(count));
        return count > 0;
    }

    pid_t child = -1;
    int from = -1;
    std::string output;
};

inline Outcome runProgram(const std::string& arguments) {
    return RunningProgram(arguments).end();
}

inline size_t countOf(const std::string& what, const std::string& text) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
        ++count;
    return count;
}

}  // namespace Zant::Tests

#endif
