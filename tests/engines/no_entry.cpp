// A module that opens like an engine but has no entry point.
#include "own/compiler.h"

extern "C" ZANT_EXPORTED int zant3_initialise();
extern "C" int zant3_initialise() {
    return 0;
}
