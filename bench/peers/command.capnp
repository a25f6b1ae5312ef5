@0xb1a5c0ffee15900d;

using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace("peers::capn");

struct Vector3 {
    x @0 :Float64;
    y @1 :Float64;
    z @2 :Float64;
}

struct Light {
    command @0 :UInt32;
    kind @1 :UInt32;
    position @2 :Vector3;
    colour @3 :Vector3;
    direction @4 :Vector3;
    symbol @5 :UInt64;
    brightness @6 :Float64;
    samples @7 :Float64;
    depth @8 :Float64;
}

struct Gradients {
    command @0 :UInt32;
    kind @1 :UInt32;
    first @2 :Float64;
    second @3 :Float64;
}
