#ifndef ZANT_APP_PROGRESS_H
#define ZANT_APP_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <string>

namespace Zant::App {

/// A progress bar on standard error: only on a terminal, and only when there is more than a moment of work.
class Progress {
public:
    /// Begins a piece of work of `total` bytes.
    void start(const std::string& what, size_t total);
    /// Tells that so many bytes more are done.
    void advance(size_t bytes);
    /// Takes the bar away.
    void finish();

private:
    using Clock = std::chrono::steady_clock;
    void draw();

    std::string name_;
    size_t all_ = 0;
    size_t done_ = 0;
    Clock::time_point started_;
    Clock::time_point drawn_;
    bool visible_ = false;
};

}  // namespace Zant::App

#endif
