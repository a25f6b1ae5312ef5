#include "client/encoding/prototyper.h"

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/engine/instance.h"

namespace Zant {

Prototyper::Prototyper(CommandBuffer* commands) {
    buffer = commands;
}

Prototyper::Prototyper(Instance* instance) : Prototyper(new CommandQuickTextBuffer(instance)) {}

Prototyper::~Prototyper() {
    if (ownsBuffer) delete buffer;
}

DirectPrototyper::DirectPrototyper(Instance* instance) : Prototyper(new CommandBinaryBuffer(instance)) {}

DirectPrototyper::~DirectPrototyper() = default;

int DirectPrototyper::parse(const char* text) {
    const Instance* instance = buffer->instance;
    return instance ? instance->parse(text, nullptr, ParseText) : 0;
}

}  // namespace Zant
