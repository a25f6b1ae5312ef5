#include "app/progress.h"

#include <fmt/core.h>
#include <unistd.h>

#include <algorithm>

namespace Zant::App {
namespace {

constexpr auto aMoment = std::chrono::milliseconds(500);
constexpr auto betweenDrawings = std::chrono::milliseconds(100);
constexpr int barWidth = 40;

}  // namespace

void Progress::start(const std::string& what, size_t total) {
    finish();
    name = what;
    all = total;
    done = 0;
    started = drawn = Clock::now();
}

void Progress::advance(size_t bytes) {
    done += bytes;
    const auto now = Clock::now();
    if (now - started < aMoment || now - drawn < betweenDrawings || !isatty(STDERR_FILENO)) return;
    drawn = now;
    draw();
}

void Progress::draw() {
    visible = true;
    const double share = all ? std::min(1.0, static_cast<double>(done) / static_cast<double>(all)) : 1.0;
    const int filled = static_cast<int>(share * barWidth);
    fmt::print(stderr, "\r[{:#<{}}{:<{}}] {:3.0f} %  {}\033[K", "", filled, "", barWidth - filled, share * 100.0, name);
    std::fflush(stderr);
}

void Progress::finish() {
    if (visible) fmt::print(stderr, "\r\033[K");
    visible = false;
}

}  // namespace Zant::App
