#include "engines/scene/events.h"

namespace Zant::Engine {

void Events::raise(ZantEventData& event) {
    if (closed_ || !instance_->eventFunction) return;
    event.instance = instance_;
    event.reserved = instance_->userData;
    guarded([&] { instance_->eventFunction(&event); });
}

void Events::raise(_ZantEventKind kind, void* handle, const char* text) {
    ZantEventData event{};
    event.kind = kind;
    event.handle = handle;
    event.text = text;
    raise(event);
}

}  // namespace Zant::Engine
