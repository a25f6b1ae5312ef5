#include <windows.h>

#include "own/stopsignals.h"

namespace Zant {
namespace Platform {
namespace {

volatile std::sig_atomic_t lastSignal = 0;

// On a thread of its own. While the console closes or the user logs off, the system waits for it, some seconds long.
BOOL WINAPI keep(DWORD event) {
    lastSignal = event == CTRL_C_EVENT ? SIGINT : SIGTERM;
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

}  // namespace

StopSignals::StopSignals() {
    lastSignal = 0;
    SetConsoleCtrlHandler(keep, TRUE);
}

StopSignals::~StopSignals() {
    SetConsoleCtrlHandler(keep, FALSE);
}

const volatile std::sig_atomic_t* StopSignals::flag() const {
    return &lastSignal;
}

void StopSignals::passOn() {
    if (received()) ExitProcess(static_cast<UINT>(STATUS_CONTROL_C_EXIT));
}

}  // namespace Platform
}  // namespace Zant
