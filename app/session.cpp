#include "app/session.h"

#include <cstdio>
#include <filesystem>

#include "app/text.h"

namespace Zant::App {
namespace {

class ConsoleText : public TextListener {
public:
    void textLine(const char* text) override { std::fputs(shownOnTerminal(text).c_str(), stdout); }
    void textNewLine() override {
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
    void getTextLine(const char*, _ZantEventTextBufferData* answer) override { answer->text = nullptr; }
    int getTextFlags() override { return 0; }
};

}  // namespace

std::string loopbackDirectory() {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    return (program.parent_path() / ZANT_LOOPBACK_FROM_BIN).lexically_normal().string();
}

TextListener* ConsoleListener::createTextListner() {
    return new ConsoleText;
}

Session::Session(const std::string& directory) : engine(nullptr) {
    const std::string from = directory.empty() ? loopbackDirectory() : directory;
    if (!engine.load(from.c_str())) {
        failure = engine.getLoadError();
        return;
    }
    live = engine.createInstanceWithListner(&console);
    if (!live) failure = "the engine refuses to create an instance";
}

Session::~Session() {
    engine.releaseInstance(live);
    engine.release();
}

}  // namespace Zant::App
