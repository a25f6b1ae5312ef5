// Two commands, a light with three vectors and one with two numbers, from the typed function to the parser, against
// what a host would otherwise write the same values with.
#include <random>

#include "bench/peers/commands.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/protos/protos.h"
#include "client/symbols/symbol.h"
#include "tests/silentengine.h"

namespace {

using namespace Zant;
using peers::Gradients;
using peers::GradientsValues;
using peers::Lights;
using peers::LightValues;

// A turn is long enough to be timed, and short enough not to be interrupted often: binary commands go round ten times.
constexpr size_t commandsPerTurn = 500;
constexpr size_t binaryRepeats = 10;

Lights exampleLights() {
    return Lights(commandsPerTurn,
                  {Vector(0, 10, 0), Vector(1, 1, 1), Vector(0, -1, 0), "sky", 0x600000c04a80, 0.5, 16, 2});
}

Lights randomLights() {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> position(-1000, 1000), unit(0, 1), direction(-1, 1);
    std::uniform_int_distribution<int> count(1, 64);
    Lights lights = exampleLights();
    for (LightValues& light : lights) {
        light.position = Vector(position(random), position(random), position(random));
        light.colour = Vector(unit(random), unit(random), unit(random));
        light.direction = Vector(direction(random), direction(random), direction(random));
        light.brightness = unit(random);
        light.samples = count(random);
        light.depth = count(random);
    }
    return lights;
}

Gradients exampleGradients() {
    return Gradients(commandsPerTurn, {0.5, 2});
}

Gradients randomGradients() {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> unit(0, 1), wide(-1000, 1000);
    Gradients gradients(commandsPerTurn);
    for (GradientsValues& values : gradients)
        values = {unit(random), wide(random)};
    return gradients;
}

void send(Prototyper& prototyper, Symbol& symbol, const Lights& lights) {
    void* const protos = prototyper.protos();
    for (const LightValues& v : lights) {
        symbol.registered = v.symbol;
        lightAdd7_adaptive(protos, v.position, v.colour, v.direction, symbol, v.brightness, v.samples, v.depth);
    }
}

void send(Prototyper& prototyper, Symbol&, const Gradients& gradients) {
    void* const protos = prototyper.protos();
    for (const GradientsValues& v : gradients)
        fg2_gradients(protos, v.first, v.second);
}

template <class Turn>
Contest::Turn repeated(Turn turn) {
    return [turn] {
        for (size_t i = 0; i < binaryRepeats; ++i)
            turn();
    };
}

template <class Values>
bool compare(const char* name, Instance* instance, const Values& values, double textTarget, double binaryTarget) {
    Prototyper plain(new CommandTextBuffer(instance)), quick(instance);
    DirectPrototyper direct(instance);
    Symbol symbol(*plain.buffer, "sky");

    Contest text(std::string(name) + ", text", values.size());
    text.ours(
        "Zant, plain text", [&] { send(plain, symbol, values); }, textTarget);
    text.ours("Zant, quick text", [&] { send(quick, symbol, values); });
    addTextPeers(text, values);

    Contest binary(std::string(name) + ", binary", values.size() * binaryRepeats);
    binary.ours("Zant, binary", repeated([&] { send(direct, symbol, values); }), binaryTarget);
    binary.aside("limit: copied by hand", repeated([&] { peers::copyByHand(values); }));
#ifdef ZANT_BENCH_PROTOBUF
    binary.peer("protobuf", repeated([&] { peers::protobuf(values); }));
#endif
#ifdef ZANT_BENCH_FLATBUFFERS
    binary.peer("flatbuffers", repeated([&] { peers::flatbuffers(values); }));
#endif
#ifdef ZANT_BENCH_MSGPACK
    binary.peer("msgpack", repeated([&] { peers::msgpack(values); }));
#endif
#ifdef ZANT_BENCH_CAPNPROTO
    binary.peer("Cap'n Proto", repeated([&] { peers::capnproto(values); }));
#endif
    const bool textMet = text.run();
    return binary.run() && textMet;
}

}  // namespace

peers::Receiver volatile peers::receiver = [](const void* data) { keep(*static_cast<const char*>(data)); };

int main() {
    Library library(SilentEngine::init, "");
    Instance* const instance = library.createInstanceWithListner(nullptr);
    bool met = compare("lightAdd adaptive", instance, exampleLights(), 0.50, 0.85);
    met &= compare("lightAdd adaptive, random", instance, randomLights(), 0.50, 0.85);
    // Binary without a target: of so short a command most is its five calls through the tables of the interface.
    met &= compare("fg gradients", instance, exampleGradients(), 0.65, 0);
    met &= compare("fg gradients, random", instance, randomGradients(), 0.65, 0);
    return met ? 0 : 1;
}
