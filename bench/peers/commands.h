#ifndef ZANT_BENCH_PEERS_COMMANDS_H
#define ZANT_BENCH_PEERS_COMMANDS_H

#include <cstdint>
#include <vector>

#include "bench/contest.h"
#include "client/values/vector.h"

/// What a host would write the same commands with instead.
///
/// Every way works under the same conditions: one function that is not inlined writes one command from its values into
/// storage that is reused, and hands it to receive(), as the engine's parser is called.
namespace peers {

/// Takes one finished command; reached through a pointer, as an engine is.
using Receiver = void (*)(const void* data);
extern Receiver volatile receiver;

inline void receive(const void* data) {
    receiver(data);
}

/// lightAdd adaptive position,colour,direction,symbol,brightness,samples,depth
struct LightValues {
    Zant::Vector position, colour, direction;
    const char* symbolName;
    uint64_t symbol;
    double brightness;
    int samples, depth;
};

/// fg gradients first,second
struct GradientsValues {
    double first, second;
};

using Lights = std::vector<LightValues>;
using Gradients = std::vector<GradientsValues>;

void addTextPeers(Contest& contest, const Lights& values);
void addTextPeers(Contest& contest, const Gradients& values);

void copyByHand(const Lights& values);
void copyByHand(const Gradients& values);

void protobuf(const Lights& values);
void protobuf(const Gradients& values);
void flatbuffers(const Lights& values);
void flatbuffers(const Gradients& values);
void msgpack(const Lights& values);
void msgpack(const Gradients& values);
void capnproto(const Lights& values);
void capnproto(const Gradients& values);

}  // namespace peers

#endif
