// A host's static constructor that runs before any other, and writes numbers.
#include "tests/early_numbers.h"

#include "own/str2num.h"

namespace {

struct Early {
    Early() {
        size_t room = sizeof text;
        Zant::double_2_sci(-12.25, text, room, 8, 5);
        char* rest = text + Zant::s2n_strlen(text);
        *rest++ = ' ';
        --room;
        Zant::double_2_sci(1.5e10, rest, room, 8, 5);
    }

    char text[40];
};

__attribute__((init_priority(101))) Early early;

}  // namespace

const char* const earlyText = early.text;
