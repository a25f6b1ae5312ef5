// A module that says a word and then does something fatal, AT_OPENING, before anybody can ask for its entry point.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

const struct Opening {
    Opening() {
        std::puts("the engine says hello");
        AT_OPENING;
    }
} opening;

}  // namespace
