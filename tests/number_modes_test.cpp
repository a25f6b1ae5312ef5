// Number text in hosts that set the processor's floating-point modes, traps and flags as they like.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#ifdef __SSE2__
#include <immintrin.h>
#endif

#include "own/decimaltables.h"
#include "own/str2num.h"
#include "own/textbuffer.h"
#include "tests/decimalreference.h"
#include "tests/number_cases.h"

using namespace Zant;

namespace {

constexpr int errors = FE_INVALID | FE_OVERFLOW | FE_DIVBYZERO;

// The processor's modes, and those in which tiny numbers are zeros, as operands and as results.
#ifdef __SSE2__
constexpr uint64_t flushing = 0x8040;

uint64_t processorModes() {
    return _mm_getcsr();
}

void setProcessorModes(uint64_t modes) {
    _mm_setcsr(static_cast<unsigned>(modes));
}
#elif defined(__aarch64__)
constexpr uint64_t flushing = 1 << 24;

uint64_t processorModes() {
    uint64_t modes = 0;
    asm volatile("mrs %0, fpcr" : "=r"(modes));
    return modes;
}

void setProcessorModes(uint64_t modes) {
    asm volatile("msr fpcr, %0" : : "r"(modes));
}
#endif

std::string textOf(double x) {
    TextBuffer buffer;
    buffer.concat(x);
    return static_cast<const char*>(buffer);
}

// Every formatter, with settings up to where powers of ten end.
void write(double x, int decimals) {
    char out[1000];
    size_t room = sizeof out;
    double_2_sci(x, out, room, decimals, 5);
    room = sizeof out;
    double_2_decimal(x, out, room, decimals, 0);
    room = sizeof out;
    double_2_natural(x, out, room, decimals, 0);
}

const double extremes[] = {
    0.0,  -0.0, 5e-324, -5e-324, 1e-310,   2e-308, 1e-300, 1e300, 8e307,  std::numeric_limits<double>::max(),
    1e15, 1e22, 0x1p63, 0x1p64,  0x1p1000, 0.1,    1e5,    1e6,   999999, 9.99999999e5};

}  // namespace

TEST(DecimalTables, HoldWhatThePlatformsFunctionsGive) {
    const DecimalTables& tables = DecimalTables::get();
    for (int k = DecimalTables::lowestPower; k <= DecimalTables::highestPower; ++k) {
        ASSERT_EQ(tables.power(k), DecimalReference::power(k)) << k;
        ASSERT_EQ(tables.reach(k), DecimalReference::reach(k)) << k;
    }
    for (int count = 0; count <= DecimalTables::mostWholeDigits; ++count)
        ASSERT_EQ(tables.moreDigits(count), DecimalReference::moreDigits(count)) << count;
}

TEST(NumberModes, AgreeWithTheDefinitionInEveryRoundingMode) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        NumberCases cases(11);
        for (int i = 0; i < 60000; ++i) {
            const double x = cases.next();
            std::fesetround(mode);
            const std::string difference = differenceToOracle(x, 40, i % 3 == 0 ? 5 : 8, i % 3 == 0 ? 9 : 5);
            std::fesetround(FE_TONEAREST);
            ASSERT_EQ(difference, "") << "rounding mode " << mode;
        }
    }
}

TEST(NumberModes, RaiseNoErrorForFiniteNumbers) {
    NumberCases cases(12);
    for (int i = 0; i < 60000; ++i) {
        const double x = i < 20 ? extremes[i] : cases.next();
        if (!std::isfinite(x)) continue;
        for (const int mode : {FE_TONEAREST, FE_UPWARD}) {
            std::fesetround(mode);
            std::feclearexcept(FE_ALL_EXCEPT);
            for (const int decimals : {8, 3, 0})
                write(x, decimals);
            if (i < 1000) write(x, 320);
            const int raised = std::fetestexcept(errors);
            std::fesetround(FE_TONEAREST);
            ASSERT_EQ(raised, 0) << x;
        }
    }
}

#if defined(__SSE2__) || defined(__aarch64__)
TEST(NumberModes, KeepTheirTextWhereTheHostFlushesTinyNumbersToZero) {
    NumberCases cases(13);
    for (int i = 0; i < 60000; ++i) {
        const double x = i < 20 ? extremes[i] : cases.next();
        if (!std::isfinite(x)) continue;
        const std::string text = textOf(x);
        const uint64_t modes = processorModes();
        std::feclearexcept(FE_ALL_EXCEPT);
        setProcessorModes(processorModes() | flushing);
        const std::string flushed = textOf(x);
        const int raised = std::fetestexcept(errors);
        setProcessorModes(modes);
        ASSERT_EQ(raised, 0) << x;
        if (std::fabs(x) > 1e-290) {
            ASSERT_EQ(flushed, text);
        }
    }
}
#endif
