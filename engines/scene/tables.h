#ifndef ZANT_ENGINES_SCENE_TABLES_H
#define ZANT_ENGINES_SCENE_TABLES_H

#include "client/engine/library.h"
#include "engines/scene/profile.h"

namespace Zant::Engine {

/// What an engine's entry point does: takes the host in and writes the five tables into its record, or writes nothing
/// when the host is refused. All hosts of a process meet the same profile.
void enter(Library* host, const Profile& profile);

}  // namespace Zant::Engine

#endif
