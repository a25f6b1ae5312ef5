#include "app/session.h"

#include <cstdio>
#include <filesystem>

#include "app/text.h"
#include "client/host.h"

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

std::string engineDirectory(const std::string& asked) {
    static const char here = 0;
    const std::string name = asked.empty() ? "loopback" : asked;
    if (name != "loopback" && name != "preview") return asked;
    const std::string engines = moduleDirectory(&here) + ZANT_ENGINES_FROM_BIN;
    return std::filesystem::u8path(engines + name + "/").lexically_normal().u8string();
}

TextListener* ConsoleListener::createTextListner() {
    return new ConsoleText;
}

}  // namespace Zant::App
