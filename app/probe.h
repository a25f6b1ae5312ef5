#ifndef ZANT_APP_PROBE_H
#define ZANT_APP_PROBE_H

#include <chrono>
#include <string>

#include "app/childprocess.h"

namespace Zant::App {

/// What opening an engine step by step has shown.
struct ProbeFinding {
    std::string text;  ///< a line per step, and what the engine itself printed
    bool loads;        ///< a host's load succeeds, and nothing ended the process on the way to an instance and back
    bool complete;     ///< it loads, and nothing that a client calls is missing
};

/// Opens the engine of a directory in a process of its own, every symbol bound at once: an engine that crashes, hangs
/// or ends the process takes that process with it and becomes a finding. What it shows goes to `output` as it comes.
/// Throws std::runtime_error when no process can be started.
ProbeFinding probeEngine(const std::string& directory, std::chrono::seconds limit = std::chrono::seconds(10),
                         const TakeOutput& output = nullptr);

}  // namespace Zant::App

#endif
