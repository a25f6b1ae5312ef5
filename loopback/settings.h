#ifndef ZANT_LOOPBACK_SETTINGS_H
#define ZANT_LOOPBACK_SETTINGS_H

#include <string>

#include "language/writer.h"
#include "loopback/faults.h"

namespace Zant::Loopback {

/// What the environment asks of the engine. It is read when the first host initialises the engine, and again after the
/// last one has made it exit.
struct Settings {
    bool doubleVertexMaps = false;                             // ZANT_LOOPBACK_DOUBLE_VERTEX_MAPS=1
    std::string transcript;                                    // ZANT_LOOPBACK_TRANSCRIPT, a file name
    TextWriter::Numbers numbers = TextWriter::Numbers::Exact;  // ZANT_LOOPBACK_NUMBERS, "exact" or "client"
    bool symbols = false;                                      // ZANT_LOOPBACK_SYMBOLS=1
    std::string summary;                                       // ZANT_LOOPBACK_SUMMARY, a file name
    std::string watch;                                         // ZANT_LOOPBACK_WATCH, a file name
    Faults faults;                                             // ZANT_LOOPBACK_FAULT
};

/// Reads the environment. What it does not understand it says on the standard error.
Settings readSettings();

}  // namespace Zant::Loopback

#endif
