#ifndef ZANT_MODERN_ZANT_HPP
#define ZANT_MODERN_ZANT_HPP

/// The face that is hard to misuse. It is installed above modern/, as zant.hpp.
///
/// A zant::session loads the engine, a zant::scene takes commands, and what either of them made ends with it. Nothing
/// of it is compiled beforehand: it is a layer of inline code over the classes and typed functions, and may stand
/// beside them.

#include "modern/bitmap.h"
#include "modern/commands/files.h"
#include "modern/commands/geometry.h"
#include "modern/commands/lights.h"
#include "modern/commands/looks.h"
#include "modern/commands/rendering.h"
#include "modern/mesh.h"
#include "modern/value.h"

namespace zant {

/// A scene with every command. Include the headers in modern/commands/ and name a zant::scene_of<...> where some are
/// enough.
using scene = scene_of<geometry_commands, looks_commands, lights_commands, rendering_commands, files_commands>;

}  // namespace zant

#endif
