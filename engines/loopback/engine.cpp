// The loopback engine: what is its own, and its entry point.

#include <memory>

#include "engines/loopback/rays.h"
#include "engines/loopback/settings.h"
#include "engines/scene/tables.h"

namespace Zant::Loopback {
namespace {

std::unique_ptr<Engine::RayContext> createRays() {
    return std::make_unique<RayBlocks>();
}

const Engine::Profile profile = {
    "Zant loopback engine",
    ZANT_LOOPBACK_VERSION,
    "Takes every command, checks it against the vocabulary, keeps what it declares, renders nothing.",
    errorPrefix,
    faultVariable,
    readSettings,
    createRays,
};

}  // namespace
}  // namespace Zant::Loopback

/// The only name that the engine exports.
extern "C" ZANT_EXPORTED void zant3_init(Zant::Library* library) {
    Zant::Engine::enter(library, Zant::Loopback::profile);
}
