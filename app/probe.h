#ifndef ZANT_APP_PROBE_H
#define ZANT_APP_PROBE_H

#include <string>

namespace Zant::App {

/// What opening an engine step by step has shown.
struct ProbeFinding {
    std::string text;  ///< a line per step
    bool loads;
};

/// Opens the engine of a directory in a process of its own, every symbol bound at once: an engine that crashes takes
/// that process with it and becomes a finding. Throws std::runtime_error when no process can be started.
ProbeFinding probeEngine(const std::string& directory);

}  // namespace Zant::App

#endif
