#ifndef ZANT_ENGINES_SCENE_EVENTS_H
#define ZANT_ENGINES_SCENE_EVENTS_H

#include <atomic>
#include <thread>

#include "client/engine/instance.h"
#include "engines/scene/guarded.h"

namespace Zant::Engine {

/// Raises the events of one instance: each carries the host's user data in its reserved word, and an exception of the
/// host is lost with its event.
///
/// Any thread may raise. No lock of the engine is to be held then: a host may call the engine from within.
class Events {
public:
    /// @param foreignThread perform() works on a thread of the engine's own.
    Events(Instance* instance, bool foreignThread) : instance_(instance), foreignThread_(foreignThread) {}

    /// Runs work that raises events, and returns when it is done.
    template <class Work>
    void perform(const Work& work) {
        if (!foreignThread_) return work();
        std::thread([&] { guarded(work); }).join();
    }

    /// Raises one event, and leaves the host's answer in the record.
    void raise(ZantEventData& event);
    void raise(_ZantEventKind kind, void* handle, const char* text = nullptr);

    /// No event comes any more: the instance has ended, and its record is not read again.
    void close() { closed_ = true; }
    bool isClosed() const { return closed_; }

private:
    Instance* const instance_;
    const bool foreignThread_;
    std::atomic<bool> closed_{false};
};

}  // namespace Zant::Engine

#endif
