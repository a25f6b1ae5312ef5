#ifndef ZANT_ENGINES_SCENE_VIEWSETTINGS_H
#define ZANT_ENGINES_SCENE_VIEWSETTINGS_H

#include "engines/scene/execution.h"

namespace Zant::Engine {

/// `view size` and `view camAspect`.
Outcome setView(Execution& execution);
/// `sett outputTo`: the file that pictures are written to.
Outcome setOutput(Execution& execution);
/// Whether the format that a command names at a place, if it names one, can be written.
Outcome checkFormat(const Execution& execution, size_t format);

}  // namespace Zant::Engine

#endif
