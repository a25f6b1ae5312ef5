#ifndef ZANT_TESTS_SHELL_H
#define ZANT_TESTS_SHELL_H

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "zantprogram.h"

/// Lines of a shell that run the program: pipes, redirections and signals. Not for Windows, which has no shell like it.
namespace ZantProgram {

/// A line of the shell while it runs.
class Running {
public:
    explicit Running(std::string lineToRun) : line(std::move(lineToRun)) {
        int ends[2];
        if (pipe(ends) != 0) return;
        child = fork();
        if (child == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            close(ends[1]);
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        from = ends[0];
    }
    ~Running() {
        if (child > 0) end(SIGKILL);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

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
        return {line, WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), output};
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

    std::string line;
    pid_t child = -1;
    int from = -1;
    std::string output;
};

/// Runs a line of the shell.
inline Outcome run(const std::string& line) {
    return Running(line).end();
}

/// The line that starts the program in place of the shell.
inline std::string lineOf(const std::string& arguments) {
    return "exec " ZANT_PROGRAM " " + arguments;
}

/// A test whose lines run in its folder. A shell finds the program, as the program has to find its engine from wherever
/// it runs.
class ShellTest : public Test {
protected:
    Outcome shell(const std::string& line) const {
        const std::string programs = std::filesystem::path(ZANT_PROGRAM).parent_path().string();
        return run("cd '" + folder + "'; PATH=" + programs + ":$PATH; " + line);
    }
};

}  // namespace ZantProgram

#endif
