// A C++ host in one file: a listener of its own receives the engine's text.
//
// usage: listener ENGINE_DIRECTORY FILE...      (the directory with its final separator)

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "client/zant.h"

namespace {

/// One text stream of the engine, written line by line after its number.
class NumberedText : public Zant::TextListener {
public:
    void textLine(const char* text) override { line += text; }
    void textNewLine() override {
        std::cout << "[" << ++number << "] " << line << "\n";
        line.clear();
    }
    void getTextLine(const char*, _ZantEventTextBufferData* answer) override { answer->text = nullptr; }
    int getTextFlags() override { return 0; }

private:
    std::string line;
    int number = 0;
};

/// Gives each stream an object of its own; the library destroys it when the engine closes the stream.
class Listener : public Zant::DispatchLinkedListener {
public:
    Zant::TextListener* createTextListner() override { return new NumberedText; }
};

int parseFile(Zant::Instance& instance, const char* name) {
    std::ifstream file(name, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return instance.parse(text.c_str(), name, Zant::ParseText);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: listener ENGINE_DIRECTORY FILE...\n";
        return 2;
    }
    Listener listener;
    Zant::Library* library = Zant::getLibrary(argv[1]);
    Zant::Instance* instance = library->createInstanceWithListner(&listener);
    if (!instance) {
        std::cerr << "listener: no engine: " << library->getLoadError() << "\n";
        return 3;
    }
    int code = 0;
    for (int i = 2; i < argc; ++i)
        code |= parseFile(*instance, argv[i]);
    // The last instance takes the engine with it: it was loaded for the first one.
    library->releaseInstance(instance);
    std::cout << "engine unloaded: " << (library->isLoaded() ? "no" : "yes") << "\n";
    return code ? 1 : 0;
}
