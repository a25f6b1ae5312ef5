// Writes own/decimaltables.inl, on the reference platform: build the target write_decimaltables, run it, and redirect
// its output.
#include <cmath>
#include <cstdio>

#include "own/decimaltables.h"
#include "tests/decimalreference.h"

namespace {

void writeTable(const char* name, int first, int last, double (*value)(int)) {
    std::printf("\nconstexpr double %s[] = {", name);
    for (int k = first; k <= last; ++k) {
        const double v = value(k);
        std::printf("%s", (k - first) % 4 == 0 ? "\n    " : " ");
        std::isinf(v) ? std::printf("infinity") : std::printf("%a", v);
        if (k != last) std::printf(",");
    }
    std::printf("};\n");
}

}  // namespace

int main() {
    using Zant::DecimalTables;
    std::printf("// Written by tests/write_decimaltables.cpp on Linux, x86-64, with glibc's pow and log.\n");
    writeTable("powersOfTen", DecimalTables::lowestPower, DecimalTables::highestPower, DecimalReference::power);
    writeTable("exponentThresholds", DecimalTables::lowestPower, DecimalTables::highestPower, DecimalReference::reach);
    writeTable("digitThresholds", 0, DecimalTables::mostWholeDigits, DecimalReference::moreDigits);
    return 0;
}
