#ifndef ZANT_ENGINES_LOOPBACK_FAULTMENU_H
#define ZANT_ENGINES_LOOPBACK_FAULTMENU_H

#include <string>

#include "engines/scene/faults.h"

namespace Zant::Loopback {

/// Reads a list of faults separated by commas, such as "foreign-event, slow-command=50"; spaces around them do not
/// matter.
/// @param complaints receives one line for every entry that is not a fault; such entries are left out.
Engine::Faults parseFaults(const std::string& list, std::string& complaints);

}  // namespace Zant::Loopback

#endif
