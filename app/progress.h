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

    std::string name;
    size_t all = 0;
    size_t done = 0;
    Clock::time_point started;
    Clock::time_point drawn;
    bool visible = false;
};

}  // namespace Zant::App

#endif
