#ifndef ZANT_MODERN_SESSION_H
#define ZANT_MODERN_SESSION_H

#include <string>
#include <utility>

#include "modern/scenestate.h"

namespace zant {

/// The engine of the process, for as long as the session lives. Begin it in the plug-in's start hook, end it in its
/// stop hook, and never make it static (see Zant::Session).
///
/// The end of the session ends its scenes: scenes and symbols that are left over are empty, and nothing keeps the
/// engine loaded. Sessions are counted in a module: the last one that ends unloads the engine, at once.
///
/// Threads: one at a time. Scenes may be given to other threads, and are given up before the session ends; it does not
/// end within an event of one of them.
class session {
public:
    /// Loads the engine of a directory; an empty one, or null, leaves the search to the platform.
    explicit session(const char* directory) : session(std::string(directory ? directory : "")) {}
    explicit session(const std::string& directory = {}) : shared_(new shared(Zant::withSeparator(directory))) {}
    session(session&& other) noexcept : shared_(std::exchange(other.shared_, nullptr)) {}
    session& operator=(session&& other) noexcept {
        session taken(std::move(other));
        std::swap(shared_, taken.shared_);
        return *this;
    }
    ~session() { end(); }

    /// Whether the engine is loaded; reason() says why not.
    explicit operator bool() const { return shared_ && shared_->engine; }

    /// Why the engine could not be loaded, or why it refused the last scene. Ask on the same thread.
    std::string reason() const {
        if (!shared_) return "the session has ended";
        const char* const reason = shared_->engine.reason();
        return reason ? reason : "";
    }

    /// Ends the scenes, and unloads the engine unless another session has it. Does nothing the second time.
    void end() {
        shared* const ended = std::exchange(shared_, nullptr);
        if (!ended) return;
        while (detail::scene_state* const scene = ended->newest) {
            ended->newest = scene->next_of_session;
            scene->end();
            scene->let_go();
        }
        delete ended;
    }

private:
    friend class basic_scene;

    struct shared {
        Zant::Session engine;
        detail::scene_state* newest = nullptr;  // of the scenes, those that have ended among them

        explicit shared(const std::string& directory) : engine(directory.empty() ? nullptr : directory.c_str()) {}
    };

    ZANT_COLD detail::scene_state* make_scene(encoding commands, failure_handler handler) {
        let_go_of_ended();
        auto* const scene = new detail::scene_state(shared_->engine, commands, std::move(handler));
        scene->next_of_session = std::exchange(shared_->newest, scene);
        scene->hold();
        return scene;
    }

    void let_go_of_ended() {
        detail::scene_state** place = &shared_->newest;
        while (detail::scene_state* const scene = *place) {
            if (scene->is_held_once()) {
                *place = scene->next_of_session;
                scene->let_go();
            } else {
                place = &scene->next_of_session;
            }
        }
    }

    shared* shared_;
};

}  // namespace zant

#endif
