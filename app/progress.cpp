#include "app/progress.h"

#include <fmt/core.h>

#include <algorithm>

#include "own/streams.h"

namespace Zant::App {
namespace {

constexpr auto aMoment = std::chrono::milliseconds(500);
constexpr auto betweenDrawings = std::chrono::milliseconds(100);
constexpr int barWidth = 40;

}  // namespace

void Progress::start(const std::string& what, size_t total) {
    finish();
    name_ = what;
    all_ = total;
    done_ = 0;
    started_ = drawn_ = Clock::now();
}

void Progress::advance(size_t bytes) {
    done_ += bytes;
    const auto now = Clock::now();
    if (now - started_ < aMoment || now - drawn_ < betweenDrawings || !Platform::isTerminal(stderr)) return;
    drawn_ = now;
    draw();
}

void Progress::draw() {
    visible_ = true;
    const double share = all_ ? std::min(1.0, static_cast<double>(done_) / static_cast<double>(all_)) : 1.0;
    const int filled = static_cast<int>(share * barWidth);
    fmt::print(stderr, "\r[{:#<{}}{:<{}}] {:3.0f} %  {}\033[K", "", filled, "", barWidth - filled, share * 100.0,
               name_);
    std::fflush(stderr);
}

void Progress::finish() {
    if (visible_) fmt::print(stderr, "\r\033[K");
    visible_ = false;
}

}  // namespace Zant::App
