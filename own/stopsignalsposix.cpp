#include "own/stopsignals.h"

#include <iterator>

namespace Zant {
namespace Platform {
namespace {

constexpr int signals[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM};
struct sigaction before[std::size(signals)];
volatile std::sig_atomic_t lastSignal = 0;

void restore() {
    for (size_t i = 0; i < std::size(signals); ++i)
        sigaction(signals[i], &before[i], nullptr);
}

}  // namespace

StopSignals::StopSignals() {
    lastSignal = 0;
    struct sigaction keep {};
    keep.sa_handler = [](int signal) { lastSignal = signal; };
    keep.sa_flags = SA_RESTART;
    for (size_t i = 0; i < std::size(signals); ++i) {
        sigaction(signals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN) sigaction(signals[i], &keep, nullptr);
    }
}

StopSignals::~StopSignals() {
    restore();
}

const volatile std::sig_atomic_t* StopSignals::flag() const {
    return &lastSignal;
}

void StopSignals::passOn() {
    if (!received()) return;
    restore();
    std::raise(received());
}

}  // namespace Platform
}  // namespace Zant
