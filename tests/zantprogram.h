#ifndef ZANT_TESTS_ZANTPROGRAM_H
#define ZANT_TESTS_ZANTPROGRAM_H

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <iterator>
#include <string>

#include "testkit/environment.h"

/// The built program, run as a person runs it.
namespace ZantProgram {

struct Outcome {
    int code;            ///< -signal when it died by one
    std::string output;  ///< both streams
};

/// A line of the shell while it runs.
class Running {
public:
    explicit Running(const std::string& line) {
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

/// Runs a line of the shell.
inline Outcome run(const std::string& line) {
    return Running(line).end();
}

/// The line that starts the program in place of the shell.
inline std::string lineOf(const std::string& arguments) {
    return "exec " ZANT_PROGRAM " " + arguments;
}

inline Outcome zant(const std::string& arguments) {
    return run(lineOf(arguments));
}

/// A name in a folder of this test program's own, which goes with it.
inline std::string temporary(const std::string& name) {
    static const Zant::Testkit::TemporaryFolder folder;
    return folder.name() + "/" + name;
}

inline std::string contentOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void write(const std::string& name, const std::string& content) {
    std::ofstream(name, std::ios::binary) << content;
}

inline size_t countOf(const std::string& what, const std::string& text) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
        ++count;
    return count;
}

}  // namespace ZantProgram

#endif
