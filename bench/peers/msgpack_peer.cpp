// The two commands as msgpack arrays, in one buffer that is reused.
#include <msgpack.hpp>

#include "bench/peers/commands.h"

namespace peers {

namespace {

using Packer = ::msgpack::packer<::msgpack::sbuffer>;

void packVector(Packer& packer, const Zant::Vector& v) {
    packer.pack_array(3).pack_double(v.values[0]).pack_double(v.values[1]).pack_double(v.values[2]);
}

void write(Packer& packer, const LightValues& v) {
    packer.pack_array(9).pack_int(11).pack_int(20);
    packVector(packer, v.position);
    packVector(packer, v.colour);
    packVector(packer, v.direction);
    packer.pack_uint64(v.symbol).pack_double(v.brightness).pack_double(v.samples).pack_double(v.depth);
}

void write(Packer& packer, const GradientsValues& v) {
    packer.pack_array(4).pack_int(46).pack_int(6).pack_double(v.first).pack_double(v.second);
}

::msgpack::sbuffer buffer(1024);

template <class Values>
[[gnu::noinline]] void send(const Values& v) {
    buffer.clear();
    Packer packer(buffer);
    write(packer, v);
    receive(buffer.data());
}

}  // namespace

void msgpack(const Lights& values) {
    for (const LightValues& v : values)
        send(v);
}

void msgpack(const Gradients& values) {
    for (const GradientsValues& v : values)
        send(v);
}

}  // namespace peers
