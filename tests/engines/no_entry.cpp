// A module that opens like an engine but has no entry point.
extern "C" __attribute__((visibility("default"))) int zant3_initialise();
extern "C" int zant3_initialise() {
    return 0;
}
