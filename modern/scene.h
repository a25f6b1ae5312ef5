#ifndef ZANT_MODERN_SCENE_H
#define ZANT_MODERN_SCENE_H

#include <string>
#include <string_view>
#include <utility>

#include "modern/session.h"

namespace zant {

/// A scene of the engine, without its commands: they are zant::scene's, or those of a zant::scene_of<...> that has some
/// groups of them only.
///
/// A command that the engine refuses is a failure: it is kept when it is the first one, told to the handler if there is
/// one, and then the scene sends nothing more until clear(). Commands answer whether the engine has taken them.
///
/// The scene ends with its owner or with its session, whichever comes first. Its symbols are empty then.
///
/// Threads: one at a time, together with its symbols. What the engine raises, the callbacks are told on its threads; a
/// callback may use the scene, and does not end it.
class basic_scene {
public:
    basic_scene() = default;

    /// Makes a scene in the engine. When the engine refuses, the scene has ended and the reason is its first failure.
    /// @param handler is told of failures; by default they are only collected
    explicit basic_scene(session& engine, encoding commands = encoding::binary(), failure_handler handler = {})
        : basic_scene() {
        if (!engine.shared_) return;
        state_ = engine.make_scene(commands, std::move(handler));
        if (!state_->has_instance()) state_->fail({"scene", 0, engine.reason()});
    }
    basic_scene(session& engine, failure_handler handler)
        : basic_scene(engine, encoding::binary(), std::move(handler)) {}

    basic_scene(basic_scene&& other) noexcept : state_(std::exchange(other.state_, nullptr)) {}
    basic_scene& operator=(basic_scene&& other) noexcept {
        basic_scene taken(std::move(other));
        std::swap(state_, taken.state_);
        return *this;
    }
    ~basic_scene() { end(); }

    /// Ends the scene in the engine. The handle is empty afterwards.
    void end() {
        detail::scene_state* const ended = std::exchange(state_, nullptr);
        if (!ended) return;
        ended->end();
        ended->set_handler({});  // which may own symbols of the scene
        ended->let_go();
    }

    /// Whether the scene lives in the engine.
    explicit operator bool() const { return state_ && state_->has_instance(); }

    // ---- Failures ----

    /// Whether commands are held back, because one has failed or the scene has ended.
    bool failed() const { return !state_ || !state_->is_open(); }
    /// The first failure since clear(), or null. It stays until clear().
    const failure* first_failure() const { return state_ ? state_->first_failure() : nullptr; }
    /// The first failure, for people, or that the scene has ended; empty when neither is so.
    std::string reason() const {
        if (const failure* const first = first_failure()) return first->message();
        return failed() ? "the scene has ended" : "";
    }
    /// How many commands have failed since clear().
    std::size_t failures() const { return state_ ? state_->failures() : 0; }
    /// How many commands were not sent since then, because of a failure before them.
    std::size_t skipped() const { return state_ ? state_->skipped() : 0; }

    /// Forgets the failures and sends again. Nothing of what was held back is sent.
    void clear() {
        if (state_) state_->clear();
    }

    /// Tells each failure to a function, which goes with the scene; one that throws makes the command throw. It is not
    /// told of what a destructor meets: that is only kept.
    void on_failure(failure_handler handler) {
        if (state_) state_->set_handler(std::move(handler));
    }

    // ---- Events: set these before the engine raises any ----

    /// Lines that the engine writes; without a function it writes them itself.
    void on_text(callback<void(std::string_view)> function) { set(&callbacks::text, std::move(function)); }
    /// The engine asks for a line of text; the function says whether there is an answer.
    void on_question(callback<bool(std::string_view prompt, std::string& answer)> function) {
        set(&callbacks::question, std::move(function));
    }
    /// The engine shows pixels in a preview window. With any of the functions from here on, the window is the host's.
    void on_pixels(callback<void(const _ZantEventPixelTable&)> function) {
        set(&callbacks::pixels, std::move(function));
    }
    void on_copied_pixels(callback<void(const _ZantEventPixelRectangle&)> function) {
        set(&callbacks::copied_pixels, std::move(function));
    }
    /// The window gets a size; the function says whether it can have it.
    void on_window_size(callback<bool(const _ZantEventWindow&)> function) {
        set(&callbacks::window_size, std::move(function));
    }
    void on_window_title(callback<void(std::string_view)> function) {
        set(&callbacks::window_title, std::move(function));
    }
    /// The engine asks where the mouse is, or for the next key.
    void on_mouse(callback<void(_ZantEventMousePosition&)> function) { set(&callbacks::mouse, std::move(function)); }
    void on_key(callback<void(_ZantEventKey&)> function) { set(&callbacks::key, std::move(function)); }

    // ---- Everything else ----

    /// Runs commands that are given as text.
    /// @param source names the text in the engine's messages
    bool run(const std::string& commands, const std::string& source = "commands") {
        if (!state_) return false;
        return state_->perform("run", [&] {
            const int code = state_->instance()->parse(commands.c_str(), source.c_str(), Zant::ParseText);
            if (code != 0) state_->buffer().error(code);
        });
    }

    /// The instance, for what has no place here, or null when the scene has ended.
    Zant::Instance* instance() const { return state_ ? state_->instance() : nullptr; }

private:
    friend class symbol;
    friend class scope;
    template <class, class>
    friend class command_group;
    using callbacks = detail::scene_callbacks;

    template <class Function>
    void set(Function callbacks::*place, Function function) {
        if (state_) state_->listener.callbacks.*place = std::move(function);
    }

    detail::scene_state* state_ = nullptr;
};

/// Decides for a while what follows a failure. Scopes end in the opposite order of their beginning; nothing that was
/// sent is undone.
///
/// - on_failure::go_on: each command is on its own; a failure is kept, counted and told, and the next command is sent.
/// - on_failure::stop: the commands of the scope are a group; the first failure holds back the rest of it. After the
///   scope the scene goes on if the scope around it does.
class scope {
public:
    scope(basic_scene& scene, zant::on_failure mode) : state_(scene.state_) {
        if (!state_) return;
        state_->hold();
        outer_ = state_->mode();
        failures_before_ = state_->failures_ever();
        was_open_ = state_->is_open();
        state_->set_mode(mode);
    }
    scope(const scope&) = delete;
    scope& operator=(const scope&) = delete;
    ~scope() {
        if (!state_) return;
        state_->set_mode(outer_);
        if (was_open_ && !state_->is_open() && outer_ == zant::on_failure::go_on) state_->reopen();
        state_->let_go();
    }

    /// How many commands have failed in the scope, those before a clear() among them.
    std::size_t failures() const { return state_ ? state_->failures_ever() - failures_before_ : 0; }

private:
    detail::scene_state* state_;
    zant::on_failure outer_ = zant::on_failure::stop;
    std::size_t failures_before_ = 0;
    bool was_open_ = false;
};

}  // namespace zant

#endif
