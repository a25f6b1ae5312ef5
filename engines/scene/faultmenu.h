#ifndef ZANT_ENGINES_SCENE_FAULTMENU_H
#define ZANT_ENGINES_SCENE_FAULTMENU_H

#include <string>

#include "engines/scene/faults.h"

namespace Zant::Engine {

/// Reads a list of faults separated by commas, such as "foreign-event, slow-command=50"; spaces around them do not
/// matter.
/// @param errorPrefix begins each complaint
/// @param complaints receives one line for every entry that is not a fault; such entries are left out.
Faults parseFaults(const std::string& list, const char* errorPrefix, std::string& complaints);

}  // namespace Zant::Engine

#endif
