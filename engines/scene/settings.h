#ifndef ZANT_ENGINES_SCENE_SETTINGS_H
#define ZANT_ENGINES_SCENE_SETTINGS_H

#include <memory>
#include <string>

#include "engines/scene/faults.h"
#include "engines/scene/picture.h"
#include "language/writer.h"

namespace Zant::Engine {

using namespace Language;

/// What is asked of an engine, for as long as it has hosts.
struct Settings {
    bool doubleVertexMaps = false;                             ///< vertex maps hold doubles instead of floats
    std::string transcript;                                    ///< file of the commands that were carried out
    TextWriter::Numbers numbers = TextWriter::Numbers::Exact;  ///< how the transcript writes them
    bool symbols = false;                                      ///< names are followed, and wrong ones refused
    std::string summary;                                       ///< file of the forms that were taken without effect
    std::string watch;                                         ///< file of the calls that the contract forbids
    std::shared_ptr<const Picture> picture;  ///< stands for every picture of an engine that traces none; or null
    Faults faults;
};

/// Reads the environment. What it does not understand it says on the standard error.
/// @param prefix of the variables, such as "ZANT_LOOPBACK_"
/// @param errorPrefix begins what is said
Settings readSettings(const char* prefix, const char* errorPrefix);

}  // namespace Zant::Engine

#endif
