#include "app/stopsignals.h"

#include <iterator>

namespace Zant::App {
namespace {

volatile std::sig_atomic_t lastSignal = 0;

}  // namespace

StopSignals::StopSignals() {
    lastSignal = 0;
    struct sigaction keep {};
    keep.sa_handler = [](int signal) { lastSignal = signal; };
    keep.sa_flags = SA_RESTART;
    for (size_t i = 0; i < std::size(signals); ++i) {
        sigaction(signals[i], nullptr, &before_[i]);
        if (before_[i].sa_handler != SIG_IGN) sigaction(signals[i], &keep, nullptr);
    }
}

StopSignals::~StopSignals() {
    restore();
}

void StopSignals::restore() {
    for (size_t i = 0; i < std::size(signals); ++i)
        sigaction(signals[i], &before_[i], nullptr);
}

const volatile std::sig_atomic_t* StopSignals::flag() const {
    return &lastSignal;
}

void StopSignals::passOn() {
    if (!received()) return;
    restore();
    std::raise(received());
}

}  // namespace Zant::App
