#ifndef ZANT_APP_MISSINGSLOTS_H
#define ZANT_APP_MISSINGSLOTS_H

#include <string>
#include <vector>

#include "client/engine/tables.h"

namespace Zant::App {

/// A table that an engine has not written, or a slot of one that is null although the client calls it. Loading does not
/// ask for any of them but the library table, so that an engine without them loads.
struct MissingSlot {
    std::string what;  ///< "no bitmap table", "parser table: slot 4, getValue, is null"
    std::string who;   ///< who meets it, and how: "Bitmap symbols will crash"
};

/// All that is missing in an engine's tables, in their order. Calls nothing.
std::vector<MissingSlot> findMissingSlots(const Vtables& tables);

}  // namespace Zant::App

#endif
