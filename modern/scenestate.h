#ifndef ZANT_MODERN_SCENESTATE_H
#define ZANT_MODERN_SCENESTATE_H

#include <string>
#include <string_view>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/host.h"
#include "client/symbols/symbol.h"
#include "modern/failure.h"
#include "modern/scenelistener.h"
#include "own/counter.h"

namespace zant {

namespace detail {
class scene_state;
}

/// How commands are written. A host links the code of the encodings that it names.
class encoding {
public:
    /// Blocks, which are fastest.
    static encoding binary() { return of<Zant::CommandBinaryBuffer>(); }
    /// Text with numbers for keywords.
    static encoding quick_text() { return of<Zant::CommandQuickTextBuffer>(); }
    /// Text that people can read.
    static encoding text() { return of<Zant::CommandTextBuffer>(); }

    friend bool operator==(const encoding& a, const encoding& b) { return a.make_ == b.make_; }

private:
    friend class detail::scene_state;

    template <class Buffer>
    static Zant::CommandBuffer* make_one(Zant::Instance* instance) {
        return new Buffer(instance);
    }
    template <class Buffer>
    static void discard_of(Zant::CommandBuffer& buffer) {
        static_cast<Buffer&>(buffer).discard();
    }
    template <class Buffer>
    static encoding of() {
        return {make_one<Buffer>, discard_of<Buffer>};
    }

    encoding(Zant::CommandBuffer* (*make)(Zant::Instance*), void (*discard)(Zant::CommandBuffer&))
        : make_(make), discard_(discard) {}

    Zant::CommandBuffer* (*make_)(Zant::Instance*);
    void (*discard_)(Zant::CommandBuffer&);
};

/// What follows a failure: nothing more is sent until it is cleared, or the next command is sent as if nothing were.
enum class on_failure { stop, go_on };

namespace detail {

/// What a symbol owns. It stays where it is when the symbol moves, and keeps the state of its scene.
struct object {
    scene_state* scene;
    std::string text;  // its name, whole, as it was given
    Zant::Symbol* symbol = nullptr;
    object* next = nullptr;  // among those whose deletion waits

    inline object(scene_state& owner, std::string name);
    object(const object&) = delete;
    object& operator=(const object&) = delete;
    inline virtual ~object();
};

/// What a scene and its symbols share: the instance, the buffer, and what has failed. It outlives the instance, which
/// ends with the scene or its session.
class scene_state {
public:
    Zant::ProtoBase protos;  // what the typed functions are given
    scene_listener listener;
    Zant::ResizableBuffer scratch;           // of the command that is being written
    scene_state* next_of_session = nullptr;  // the session's, which holds it

    scene_state(Zant::Session& session, encoding commands, failure_handler handler)
        : handler_(std::move(handler)), encoding_(commands) {
        instance_ = session.createInstance(listener);
        protos.buffer = encoding_.make_(instance());
        set_open(has_instance());
    }
    scene_state(const scene_state&) = delete;
    scene_state& operator=(const scene_state&) = delete;

    Zant::CommandBuffer& buffer() const { return *protos.buffer; }
    Zant::Instance* instance() const { return instance_.get(); }
    bool has_instance() const { return static_cast<bool>(instance_); }

    /// Whether commands are sent: nothing has failed, and the instance lives.
    bool is_open() const { return (listener.gate.get() & scene_listener::closed) == 0; }

    // ---- One command ----

    /// Runs an operation that writes commands.
    /// @return whether all of them were accepted
    template <class Operation>
    bool perform(const char* command, const Operation& operation) {
        if (listener.gate.get() != 0 && !begin(command)) return false;
        write(operation);
        return buffer().errorCode == 0 || fail(command);
    }

    /// A command that cannot be sent, for this reason or because the scene is not open.
    ZANT_COLD bool refuse(const char* command, std::string_view reason = {}) {
        if (!is_open() && failures_ != 0) return skip(command);
        return fail({command, 0, std::string(is_open() ? reason : "the scene has ended")});
    }

    // ---- What has failed ----

    const failure* first_failure() const { return failures_ != 0 ? &first_ : nullptr; }
    size_t failures() const { return failures_; }
    /// The same without regard to clear().
    size_t failures_ever() const { return failures_ever_; }
    size_t skipped() const { return skipped_; }
    on_failure mode() const { return mode_; }

    void set_mode(on_failure mode) { mode_ = mode; }
    void set_handler(failure_handler handler) {
        handler_ = std::move(handler);
        is_told_ = false;
    }

    /// Sends again. What a failure has left in the buffer is dropped.
    ZANT_COLD void reopen() {
        discard();
        buffer().error(0);
        set_open(has_instance());
        if (is_open()) delete_waiting();
    }

    ZANT_COLD void clear() {
        failures_ = skipped_ = 0;
        first_ = {};
        reopen();
    }

    /// Keeps a failure, tells of it, and stops.
    /// @return false
    ZANT_COLD bool fail(const failure& cause, bool tells = true) {
        if (failures_++ == 0) first_ = cause;
        ++failures_ever_;
        discard();
        if (mode_ == on_failure::stop) {
            set_open(false);
        } else {
            buffer().error(0);
        }
        if (tells && handler_) tell(cause);
        return false;
    }

    // ---- Owners ----

    void hold() { holders_.up(); }
    void let_go() {
        if (holders_.down()) destroy();
    }
    bool is_held_once() const { return holders_.get() == 1; }

    /// Ends the instance, and with it the objects of the engine. The symbols that are left over are empty.
    ZANT_COLD void end() {
        set_open(false);
        instance_.reset();
        delete_waiting();
        listener.callbacks = {};
    }

    /// Deletes an object of the engine, now or as soon as the failure that stops the scene is cleared.
    ZANT_COLD void drop(object* dropped) {
        if (has_instance() && !is_open()) {
            dropped->next = std::exchange(waiting_, dropped);
        } else {
            delete_now(dropped);
        }
    }

private:
    ~scene_state() { delete protos.buffer; }
    ZANT_COLD void destroy() { delete this; }

    void set_open(bool is_open) {
        is_open ? listener.gate.clearBits(scene_listener::closed) : listener.gate.setBits(scene_listener::closed);
    }

    /// What is to be done before a command when the gate says so. @return whether the command is sent
    ZANT_COLD bool begin(const char* command) {
        if (!is_open()) return refuse(command);
        listener.drop_lines();
        return true;
    }

    /// A command that an exception ends is dropped.
    template <class Operation>
    void write(const Operation& operation) {
        struct guard {
            scene_state* state;
            ~guard() {
                if (state) state->discard();
            }
        } unfinished{this};
        operation();
        unfinished.state = nullptr;
    }

    void discard() { encoding_.discard_(buffer()); }

    /// The engine's refusal. When a callback's command has failed during this one, that is the failure.
    ZANT_COLD bool fail(const char* command) {
        return is_open() && fail({command, buffer().errorCode, listener.take_lines()});
    }

    /// The handler may set another one, and end the scene and its session: it and the state stay until it returns. It
    /// is not told of what fails while it runs.
    ZANT_COLD void tell(const failure& cause) {
        struct telling {
            scene_state* state;
            failure_handler handler;
            ~telling() {
                if (std::exchange(state->is_told_, false)) state->handler_ = std::move(handler);
                state->let_go();
            }
        } guard{this, std::move(handler_)};
        hold();
        is_told_ = true;
        guard.handler(cause);
    }

    ZANT_COLD bool skip(const char* command) {
        ++skipped_;
        if (!handler_ || !handler_.tells_skipped) return false;
        failure skipped{command, 0, "not sent, after "};
        skipped.text.append(first_.message());
        tell(skipped);
        return false;
    }

    /// All of them, unless one is refused and stops the scene again.
    void delete_waiting() {
        while (waiting_ && (is_open() || !has_instance())) {
            object* const first = waiting_;
            waiting_ = first->next;
            delete_now(first);
        }
    }

    /// Destroys an object, whose symbol sends the command, unless the engine does not know it. A refusal is kept and
    /// not told: destructors come here.
    ZANT_COLD void delete_now(object* dropped) {
        const bool is_sent = has_instance();
        if (!is_sent) dropped->symbol->registered = 0;
        listener.drop_lines();
        hold();  // the object may be the last holder
        delete dropped;
        if (!is_sent) {
            discard();  // of a scene that never had an instance, whose symbols write all the same
        } else if (buffer().errorCode != 0) {
            fail({"delete", buffer().errorCode, listener.take_lines()}, false);
        }
        let_go();
    }

    failure_handler handler_;
    bool is_told_ = false;  // whether the handler runs, and has not been replaced
    encoding encoding_;
    on_failure mode_ = on_failure::stop;
    Zant::UniqueInstance instance_;
    failure first_;
    size_t failures_ = 0;
    size_t failures_ever_ = 0;
    size_t skipped_ = 0;
    object* waiting_ = nullptr;
    Zant::Counter holders_{1};
};

inline object::object(scene_state& owner, std::string name) : scene(&owner), text(std::move(name)) {
    scene->hold();
}

inline object::~object() {
    scene->let_go();
}

}  // namespace detail
}  // namespace zant

#endif
