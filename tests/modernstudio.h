#ifndef ZANT_TESTS_MODERNSTUDIO_H
#define ZANT_TESTS_MODERNSTUDIO_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "loopbackhost.h"
#include "modern/zant.hpp"

/// What the tests of zant.hpp have in common.
namespace zant::tests {

using Texts = std::vector<std::string>;

/// What arrives at the engine's parser, byte by byte, while the engine carries it out; or nothing, when it does not
/// pass on.
class Tap {
public:
    explicit Tap(const scene& watched, bool passesOn = true)
        : library_(watched.instance()->library), engine_(library_->vtables.parser) {
        table_ = *engine_;
        table_.parse = [](void* parser, const void* data, const char* source, int mode) {
            const char* const bytes = static_cast<const char*>(data);
            std::uint64_t length = 0;
            if (mode == Zant::ParseBinary) std::memcpy(&length, bytes, sizeof length);
            current->sent_.emplace_back(bytes, mode == Zant::ParseBinary ? length : std::strlen(bytes));
            return current->engine_->parse(parser, data, source, mode);
        };
        if (!passesOn) table_.parse = [](void*, const void*, const char*, int) { return 0; };
        library_->vtables.parser = &table_;
        current = this;
    }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() { library_->vtables.parser = engine_; }

    /// Everything since the last call.
    Texts take() { return std::exchange(sent_, {}); }

private:
    static inline Tap* current = nullptr;
    Zant::Library* library_;
    const Zant::ParserFunctionsVtable* engine_;
    Zant::ParserFunctionsVtable table_;
    Texts sent_;
};

const encoding encodings[] = {encoding::binary(), encoding::quick_text(), encoding::text()};

/// A scene of an engine of its own, whose lines of text it collects.
struct Studio {
    session engine{ZANT_LOOPBACK_DIR};
    std::string lines;
    scene stage;

    explicit Studio(encoding commands = encoding::text(), failure_handler handler = {})
        : stage(engine, commands, std::move(handler)) {
        stage.on_text([this](std::string_view line) { lines.append(line).append("\n"); });
    }
};

inline std::string said(const basic_scene& stage) {
    return stage.first_failure() ? stage.first_failure()->message() : "";
}

/// The client's own handle of a symbol.
inline Zant::Symbol& old(const symbol& of) {
    return *detail::access::of(of)->symbol;
}

/// A command that the engine refuses.
inline bool refused(scene& stage) {
    vertex_map none(stage, "none");
    return stage.vertexMapOp1_flush(none);
}

}  // namespace zant::tests

#endif
