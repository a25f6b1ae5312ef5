// Drives one scene of a few dozen objects through typed functions, once in each encoding, and shows that the engine
// understood the same three times: the loopback engine writes down what it was told, as command text.
//
// usage: scene LOOPBACK_DIRECTORY      (with its final separator)

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "client/zant.h"
#include "testkit/environment.h"

using namespace Zant;

namespace {

using Symbols = std::vector<std::unique_ptr<Symbol>>;

Symbol& declare(Symbols& symbols, CommandBuffer& buffer, const std::string& name) {
    symbols.push_back(std::make_unique<Symbol>(buffer, name.c_str()));
    return *symbols.back();
}

void addSettings(void* p) {
    sett3_imageSampler_qmcAdaptive(p, 2, 16, 0.01);
    sett1_pixelFilter_lanczos(p, 1.5);
    fg2_gradients(p, 0.5, 2);
    camera3_perspective(p, Vector(640, 480), 45, CoordSys(Vector(0, 1.5, -4), Axes(AxesHpb(0, 0.25, 0))));
}

/// A row of balls, each with a surface of its own.
void addBalls(void* p, CommandBuffer& buffer, Symbols& symbols, Symbol& planks) {
    for (int i = 0; i < 12; ++i) {
        const std::string number = std::to_string(i);
        Symbol& paint = declare(symbols, buffer, "paint" + number);
        color2(p, paint, Vector(0.5, i / 16.0, 0.25));
        Symbol& matt = declare(symbols, buffer, "matt" + number);
        surface3_diffuse(p, matt, paint, i);
        Symbol& ball = declare(symbols, buffer, "ball" + number);
        shape3_sphere(p, ball, Vector(i * 0.75, 0.5, 0), 0.375);
        shapeAdd3(p, ball, matt, planks);
    }
}

void addLights(void* p, CommandBuffer& buffer, Symbols& symbols) {
    const Vector positions[] = {Vector(0, 3, 0), Vector(2, 3, 0)};
    Symbol& lamp = declare(symbols, buffer, "lamp");
    light3_point(p, lamp, VarLenVector(positions), Vector(10, 10, 9));
    instanceAdd3_light(p, "chair", CoordSys(Vector(1, 0, 0), Axes()), 1);
}

/// The same calls, whatever the encoding of the buffer is.
void buildScene(Protos* p, CommandBuffer& buffer) {
    Symbols symbols;
    addSettings(p);
    Symbol& planks = declare(symbols, buffer, "planks");
    mapping4_rect(p, planks, Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1));
    addBalls(p, buffer, symbols, planks);
    addLights(p, buffer, symbols);
    render0(p);
    // The symbols go last declared, first deleted.
    while (!symbols.empty())
        symbols.pop_back();
}

void drive(Instance* instance, const std::string& encoding) {
    if (encoding == "text") {
        Prototyper proto(new CommandTextBuffer(instance));
        buildScene(proto.protos(), *proto.buffer);
    } else if (encoding == "quick") {
        Prototyper proto(instance);
        buildScene(proto.protos(), *proto.buffer);
    } else {
        DirectPrototyper proto(instance);
        buildScene(proto.protos(), *proto.buffer);
    }
}

std::string contentOf(const std::filesystem::path& name) {
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What the engine understood, as the text of its transcript.
std::string understood(const char* engine, const std::string& encoding) {
    const auto transcript = std::filesystem::temp_directory_path() / ("zant_scene_" + encoding + ".zant");
    std::filesystem::remove(transcript);
    const Testkit::ScopedVariable file("ZANT_LOOPBACK_TRANSCRIPT", transcript.string());
    const Testkit::ScopedVariable numbers("ZANT_LOOPBACK_NUMBERS", "client");  // as text buffers write them
    Library library(engine);
    Instance* instance = library.createInstance();
    if (!instance) {
        std::cerr << "scene: no engine: " << library.getLoadError() << "\n";
        return "";
    }
    drive(instance, encoding);
    library.releaseInstance(instance);
    const std::string text = contentOf(transcript);
    std::filesystem::remove(transcript);
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: scene LOOPBACK_DIRECTORY\n";
        return 2;
    }
    const std::string text = understood(argv[1], "text");
    if (text.empty()) return 3;
    std::cout << text.substr(0, 600) << "...\n";
    int code = 0;
    for (const char* encoding : {"quick", "binary"}) {
        const bool same = understood(argv[1], encoding) == text;
        std::cout << "scene: " << encoding << (same ? ": understood the same as plain text\n" : ": DIFFERS\n");
        code |= same ? 0 : 1;
    }
    return code;
}
