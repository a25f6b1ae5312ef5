// The loopback engine: what is its own, and its entry point.

#include "engines/scene/tables.h"

namespace {

const Zant::Engine::Profile profile = {
    "Zant loopback engine",
    ZANT_ENGINE_VERSION,
    "Takes every command, checks it against the vocabulary, keeps what it declares, traces nothing.",
    "loopback engine: ",
    "ZANT_LOOPBACK_",
    "ZANT_LOOPBACK_FAULT",
};

}  // namespace

/// The only name that the engine exports.
extern "C" ZANT_EXPORTED void zant3_init(Zant::Library* library) {
    Zant::Engine::enter(library, profile);
}
