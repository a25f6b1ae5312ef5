// The two commands as Cap'n Proto messages, built in scratch space that is reused.
#include <capnp/message.h>

#include <cstring>

#include "bench/peers/commands.h"
#include "command.capnp.h"

namespace peers {

namespace {

void set(capn::Vector3::Builder target, const Zant::Vector& v) {
    target.setX(v.values[0]);
    target.setY(v.values[1]);
    target.setZ(v.values[2]);
}

void set(capn::Light::Builder light, const LightValues& v) {
    light.setCommand(11);
    light.setKind(20);
    set(light.initPosition(), v.position);
    set(light.initColour(), v.colour);
    set(light.initDirection(), v.direction);
    light.setSymbol(v.symbol);
    light.setBrightness(v.brightness);
    light.setSamples(v.samples);
    light.setDepth(v.depth);
}

void set(capn::Gradients::Builder gradients, const GradientsValues& v) {
    gradients.setCommand(46);
    gradients.setKind(6);
    gradients.setFirst(v.first);
    gradients.setSecond(v.second);
}

/// The message builder wants its scratch space zeroed, and zeroes what it used when it ends.
::capnp::word scratch[64];

template <class Root, class Values>
[[gnu::noinline]] void send(const Values& v) {
    ::capnp::MallocMessageBuilder message(kj::ArrayPtr<::capnp::word>(scratch, 64));
    set(message.initRoot<Root>(), v);
    receive(message.getSegmentsForOutput().begin());
}

}  // namespace

void capnproto(const Lights& values) {
    for (const LightValues& v : values)
        send<capn::Light>(v);
}

void capnproto(const Gradients& values) {
    for (const GradientsValues& v : values)
        send<capn::Gradients>(v);
}

}  // namespace peers
