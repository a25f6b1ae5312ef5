// zant run: drives an engine with command files and shows its text.

#include <fmt/core.h>

#include "app/inputfile.h"
#include "app/program.h"
#include "app/readback.h"
#include "app/session.h"
#include "app/text.h"
#include "app/textpieces.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/host.h"
#include "client/protos/protos.h"
#include "own/streams.h"

namespace Zant::App {
namespace {

/// Sends text under the file's own name, so that its includes are looked for beside it.
bool sendText(const Instance& instance, InputFile& file) {
    bool fine = true;
    TextPieces pieces(file);
    for (std::string piece; pieces.next(piece);) {
        for (const Diagnostic& zero : pieces.zeroBytes())
            complain(zero.describe(file.name().c_str()));
        fine &= pieces.zeroBytes().empty();
        fine &= instance.parse(piece.c_str(), file.name().c_str(), ParseText) == 0;
    }
    return fine;
}

/// Sends blocks as the binary buffer does. Engines know a block's own offsets only, so that its place is told here.
bool sendBlocks(const Instance& instance, InputFile& file) {
    bool fine = true;
    BlockFile blocks(file);
    for (ReadResult result; (result = blocks.next()) != ReadResult::End;) {
        Diagnostic refusal{{blocks.start(), 0, 0}, "the engine refuses this block", ""};
        if (result == ReadResult::Error)
            refusal = blocks.diagnostic();
        else if (instance.parse(blocks.block().data(), nullptr, ParseBinary) == 0)
            continue;
        fine = false;
        complain(refusal.describe(file.name().c_str()));
    }
    return fine;
}

bool runFile(const Instance& instance, const std::string& name) {
    InputFile file(name);
    if (file.encoding() == InputFile::Encoding::Text) return sendText(instance, file);
    if (file.encoding() == InputFile::Encoding::Blocks) return sendBlocks(instance, file);
    complain(file.wideText().describe(file.name().c_str()));
    return false;
}

bool showValue(const Instance& instance, const std::string& name) {
    const auto value = readBack(instance, name);
    if (value)
        fmt::print("{}\n", shownOnTerminal(name + " = " + *value));
    else
        complain(fmt::format("zant run: the engine has no value '{}'", name));
    return value.has_value();
}

/// Says how far a picture is, in one line on a terminal. It has one window, and shows no pixels.
class PictureListener : public ConsoleListener {
public:
    void* createWindow() override { return this; }
    int setWindowSize(void*, const _ZantEventWindow&) override { return 1; }
    void setWindowTitle(void*, const char* title) override {
        if (!Platform::isTerminal(stderr)) return;
        fmt::print(stderr, "\r{}\033[K", shown(title));
        std::fflush(stderr);
    }
    void destroyWindow(void*) override {
        if (Platform::isTerminal(stderr)) fmt::print(stderr, "\r\033[K");
    }
};

bool draw(Instance& instance, const std::string& file) {
    Prototyper prototyper(&instance);
    render0(prototyper.protos());
    if (prototyper.buffer->errorCode == 0) view1_save_png(prototyper.protos(), file.c_str());
    return prototyper.buffer->errorCode == 0;
}

std::string engineFor(const RunOptions& options) {
    const bool draws = options.engine.empty() && !options.picture.empty();
    return engineDirectory(draws ? "preview" : options.engine);
}

}  // namespace

int run(const RunOptions& options) {
    const std::string directory = engineFor(options);
    Session session(directory.c_str());
    PictureListener console;
    const UniqueInstance instance = session.createInstance(console);
    if (!instance) {
        complain(fmt::format("zant run: {}", session.reason()));
        return EngineNotLoaded;
    }
    bool fine =
        readAll(options.files, [&](const std::string& name) { return runFile(*instance, name); }) == Outcome::Fine;
    for (const std::string& name : options.values)
        fine &= showValue(*instance, name);
    if (!options.picture.empty()) fine = draw(*instance, options.picture) && fine;
    return fine ? Fine : InputHasErrors;
}

}  // namespace Zant::App
