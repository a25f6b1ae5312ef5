// The two commands as flatbuffers, in one builder that is reused.
#include "bench/peers/commands.h"
#include "command_generated.h"

namespace peers {

namespace {

flat::Vector3 vectorOf(const Zant::Vector& v) {
    return {v.values[0], v.values[1], v.values[2]};
}

::flatbuffers::FlatBufferBuilder builder(1024);

auto write(const LightValues& v) {
    const flat::Vector3 position = vectorOf(v.position), colour = vectorOf(v.colour), direction = vectorOf(v.direction);
    return flat::CreateLight(builder, 11, 20, &position, &colour, &direction, v.symbol, v.brightness, v.samples,
                             v.depth);
}

auto write(const GradientsValues& v) {
    return flat::CreateGradients(builder, 46, 6, v.first, v.second);
}

template <class Values>
[[gnu::noinline]] void send(const Values& v) {
    builder.Clear();
    builder.Finish(write(v));
    receive(builder.GetBufferPointer());
}

}  // namespace

void flatbuffers(const Lights& values) {
    for (const LightValues& v : values)
        send(v);
}

void flatbuffers(const Gradients& values) {
    for (const GradientsValues& v : values)
        send(v);
}

}  // namespace peers
