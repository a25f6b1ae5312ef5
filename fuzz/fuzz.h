#ifndef ZANT_FUZZ_FUZZ_H
#define ZANT_FUZZ_FUZZ_H

#include <cstdio>
#include <cstdlib>

#include "tests/languagecheck.h"

namespace Zant {

/// Ends the process when a check found a fault, which the fuzzer then keeps as a finding.
inline void demand(const CheckResult& result) {
    if (result.fault.empty()) return;
    std::fprintf(stderr, "%s\n", result.fault.c_str());
    std::abort();
}

}  // namespace Zant

#endif
