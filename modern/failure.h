#ifndef ZANT_MODERN_FAILURE_H
#define ZANT_MODERN_FAILURE_H

#include <cstdio>
#include <new>  // std::exception, for less than <exception> costs to include
#include <string>
#include <utility>

#include "modern/callback.h"

namespace zant {

/// A command that was refused.
struct failure {
    std::string command;  ///< the function: "fg2_gradients", "mesh::polygons"
    int code = 0;         ///< the engine's, or 0 when the command was refused before it was sent
    std::string text;     ///< the lines that the engine wrote meanwhile, or the reason of the refusal

    /// All of it, for people.
    ZANT_COLD std::string message() const {
        std::string all = command;
        all.append(" failed");
        if (code != 0) {
            // std::to_string() brings a table that keeps a plug-in from being unloaded.
            char digits[16];
            std::snprintf(digits, sizeof digits, "%d", code);
            all.append(" with code ").append(digits);
        }
        if (!text.empty()) all.append(": ").append(text);
        return all;
    }
};

/// Is told of each failure as it happens. It may throw, and then the command throws.
class failure_handler : public callback<void(const failure&)> {
public:
    bool tells_skipped = false;  ///< whether it is told of commands that a failure before them holds back as well
    using callback::callback;
};

#if defined(__cpp_exceptions) || defined(_CPPUNWIND)

/// What throwing() throws.
class error : public std::exception {
public:
    explicit error(failure cause) : cause_(std::move(cause)), message_(cause_.message()) {}
    const failure& cause() const noexcept { return cause_; }
    const char* what() const noexcept override { return message_.c_str(); }

private:
    failure cause_;
    std::string message_;
};

/// Failures are thrown, as zant::error.
inline failure_handler throwing() {
    failure_handler handler([](const failure& cause) { throw error(cause); });
    handler.tells_skipped = true;
    return handler;
}

#endif

}  // namespace zant

#endif
