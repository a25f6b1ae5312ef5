// The limit: the same words copied into a block of the right size by hand.
#include <cstring>

#include "bench/peers/commands.h"

namespace peers {

namespace {

struct VectorWords {
    int64_t count;
    double values[3];
};

struct NumberWords {
    int64_t zero;
    double value;
};

struct LightBlock {
    int64_t length, command, kind;
    VectorWords position, colour, direction;
    uint64_t zero, symbol;
    NumberWords brightness, samples, depth;
    int64_t end;
};
static_assert(sizeof(LightBlock) == 192, "the block of the binary encoding");

struct GradientsBlock {
    int64_t length, command, kind;
    NumberWords first, second;
    int64_t end;
};
static_assert(sizeof(GradientsBlock) == 64, "the block of the binary encoding");

VectorWords wordsOf(const Zant::Vector& v) {
    return {3, {v.values[0], v.values[1], v.values[2]}};
}

void write(LightBlock& block, const LightValues& v) {
    block = {192,
             11,
             20,
             wordsOf(v.position),
             wordsOf(v.colour),
             wordsOf(v.direction),
             0,
             v.symbol,
             {0, v.brightness},
             {0, static_cast<double>(v.samples)},
             {0, static_cast<double>(v.depth)},
             -3};
}

void write(GradientsBlock& block, const GradientsValues& v) {
    block = {64, 46, 6, {0, v.first}, {0, v.second}, -3};
}

template <class Block>
Block block;

template <class Block, class Value>
[[gnu::noinline]] void send(const Value& v) {
    write(block<Block>, v);
    receive(&block<Block>);
}

template <class Block, class Values>
void sendAll(const Values& values) {
    for (const auto& v : values)
        send<Block>(v);
}

}  // namespace

void copyByHand(const Lights& values) {
    sendAll<LightBlock>(values);
}

void copyByHand(const Gradients& values) {
    sendAll<GradientsBlock>(values);
}

}  // namespace peers
