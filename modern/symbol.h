#ifndef ZANT_MODERN_SYMBOL_H
#define ZANT_MODERN_SYMBOL_H

#include <string>
#include <string_view>
#include <utility>

#include "modern/name.h"
#include "modern/scene.h"

namespace zant {

namespace detail {

struct access;

/// An object with the client's handle of its kind.
template <class Handle>
struct object_of final : object {
    Handle handle;

    template <class... Arguments>
    object_of(scene_state& state, const zant::name& called, Arguments... arguments)
        : object(state, called.text()), handle(state.buffer(), arguments..., called.c_str()) {
        symbol = &handle;
    }
};

}  // namespace detail

/// A named object of the engine: a surface, a light, a shape. It owns the object: its end deletes it.
///
/// A symbol starts with a name and nothing else; the command that declares the object takes it as its first argument.
/// It can be moved. When its scene or session has ended it is empty, and commands refuse it.
///
/// Threads: as its scene.
class symbol {
public:
    symbol() = default;
    /// Names a symbol, and sends nothing.
    symbol(const basic_scene& scene, const zant::name& called) { make<Zant::Symbol>(scene.state_, called); }
    symbol(symbol&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    symbol& operator=(symbol&& other) noexcept {
        symbol taken(std::move(other));
        std::swap(object_, taken.object_);
        return *this;
    }
    ~symbol() { reset(); }

    /// Deletes the engine's object. The symbol is empty afterwards.
    void reset() {
        if (object_) object_->scene->drop(std::exchange(object_, nullptr));
    }

    explicit operator bool() const { return object_ && object_->scene->has_instance(); }
    /// The text that it was named with.
    std::string_view name() const { return object_ ? std::string_view(object_->text) : std::string_view(); }
    /// What the engine calls it.
    std::string_view engine_name() const { return object_ ? object_->symbol->name : ""; }
    /// Whether the engine knows the object.
    bool is_declared() const { return *this && object_->symbol->registered != 0; }

    /// Takes an object that the engine has by this name already. It is deleted with the symbol.
    bool link() {
        return declare_by("symbol::link", [this] { object_->symbol->registerSymbol(); });
    }

protected:
    static detail::scene_state* state_of(const basic_scene& scene) { return scene.state_; }

    /// Makes the object, unless there is no scene.
    template <class Handle, class... Arguments>
    void make(detail::scene_state* scene, const zant::name& called, Arguments... arguments) {
        if (scene) object_ = new detail::object_of<Handle>(*scene, called, arguments...);
    }

    template <class Handle>
    Handle& handle() const {
        return static_cast<Handle&>(*object_->symbol);
    }

    detail::scene_state* state() const { return object_->scene; }

    /// Runs what declares or finds the object in the engine.
    /// @return whether the engine knows it now
    template <class Operation>
    bool declare_by(const char* command, const Operation& operation) const {
        return object_ && state()->perform(command, operation) && require_declared(command);
    }

    bool require_declared(const char* command) const {
        if (!object_) return false;
        return is_declared() || state()->refuse(command, object_->text + " has not been declared");
    }

    /// The same for what goes past the commands, and is held back like them.
    bool require_open(const char* command) const {
        return require_declared(command) && (state()->is_open() || state()->refuse(command));
    }

private:
    friend struct detail::access;
    detail::object* object_ = nullptr;
};

namespace detail {

/// What the arguments of commands may know of symbols.
struct access {
    static object* of(const symbol& from) { return from.object_; }
};

}  // namespace detail
}  // namespace zant

#endif
