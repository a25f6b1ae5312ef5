// The two commands as protobuf messages.
#include "bench/peers/commands.h"
#include "command.pb.h"

namespace peers {

namespace {

void set(google::protobuf::RepeatedField<double>& field, const Zant::Vector& vector) {
    field.Clear();
    field.Add(vector.values, vector.values + 3);
}

void set(proto::LightMessage& message, const LightValues& v) {
    message.set_command(11);
    message.set_kind(20);
    set(*message.mutable_position(), v.position);
    set(*message.mutable_colour(), v.colour);
    set(*message.mutable_direction(), v.direction);
    message.set_symbol(v.symbol);
    message.set_brightness(v.brightness);
    message.set_samples(v.samples);
    message.set_depth(v.depth);
}

void set(proto::GradientsMessage& message, const GradientsValues& v) {
    message.set_command(46);
    message.set_kind(6);
    message.set_first(v.first);
    message.set_second(v.second);
}

// Message and block are reused.
template <class Message>
Message message;
uint8_t block[512];

template <class Message, class Values>
[[gnu::noinline]] void send(const Values& v) {
    set(message<Message>, v);
    message<Message>.ByteSizeLong();
    message<Message>.SerializeWithCachedSizesToArray(block);
    receive(block);
}

}  // namespace

void protobuf(const Lights& values) {
    for (const LightValues& v : values)
        send<proto::LightMessage>(v);
}

void protobuf(const Gradients& values) {
    for (const GradientsValues& v : values)
        send<proto::GradientsMessage>(v);
}

}  // namespace peers
