// The preview engine: what is its own, and its entry point.

#include <memory>

#include "engines/preview/embreetracer.h"
#include "engines/preview/pngfile.h"
#include "engines/scene/tables.h"

namespace Zant::Preview {
namespace {

const Engine::Profile profile = {
    "Zant preview engine",
    ZANT_ENGINE_VERSION,
    "Does what the loopback engine does, and draws the geometry of a scene by stated assumptions.",
    "preview engine: ",
    "ZANT_PREVIEW_",
    "ZANT_PREVIEW_FAULT",
    createEmbreeTracer,
    writePng,
};

}  // namespace
}  // namespace Zant::Preview

/// The only name that the engine exports.
extern "C" ZANT_EXPORTED void zant3_init(Zant::Library* library) {
    Zant::Engine::enter(library, Zant::Preview::profile);
}
