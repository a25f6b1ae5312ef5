#ifndef ZANT_TESTS_ZANTPROGRAM_H
#define ZANT_TESTS_ZANTPROGRAM_H

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "testkit/environment.h"

/// The built program, run as a person runs it.
namespace ZantProgram {

struct Outcome {
    std::string line;    ///< of the shell
    int code;            ///< -signal when it died by one
    std::string output;  ///< both streams
};

inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << outcome.line.substr(0, 300) << "\n" << outcome.output.substr(0, 5000);
}

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

inline std::string contentOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline size_t countOf(const std::string& what, const std::string& text) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size())
        ++count;
    return count;
}

/// Expects an exit code, and each of the texts in what was printed.
inline void expectShown(const Outcome& outcome, int code, const std::vector<std::string>& shown) {
    EXPECT_EQ(outcome.code, code) << outcome;
    for (const std::string& text : shown)
        EXPECT_NE(outcome.output.find(text), std::string::npos) << text << "\n" << outcome;
}

/// A test with a folder of its own, in which the program runs.
class Test : public testing::Test {
protected:
    /// Runs a line of the shell, which finds the program, as the program has to find its engine from wherever it runs.
    Outcome shell(const std::string& line) const {
        const std::string programs = std::filesystem::path(ZANT_PROGRAM).parent_path().string();
        return run("cd '" + folder + "'; PATH=" + programs + ":$PATH; " + line);
    }
    Outcome zant(const std::string& arguments) const { return shell("exec zant " + arguments); }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(folder + "/" + name, std::ios::binary) << content;
    }
    std::string content(const std::string& name) const { return contentOf(folder + "/" + name); }

    const Zant::Testkit::TemporaryFolder temporary;
    const std::string& folder = temporary.name();
};

}  // namespace ZantProgram

#endif
