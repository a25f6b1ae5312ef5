#ifndef ZANT_OWN_STOPSIGNALS_H
#define ZANT_OWN_STOPSIGNALS_H

#include <csignal>

#include "own/cxx17.h"

namespace Zant {
namespace Platform {

/// While it lives, the signals that ask a program to end only set a flag, so that there is time to tidy up. Signals
/// that the program was started to ignore stay ignored. One at a time. Internal.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// The signal that came, or 0.
    int received() const { return *flag(); }
    const volatile std::sig_atomic_t* flag() const;

    /// Ends the program by the signal that came, as if it had not been kept; does nothing when none came.
    void passOn();
};

}  // namespace Platform
}  // namespace Zant

#endif
