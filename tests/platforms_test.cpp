// The same bytes on every platform: commands in the three encodings and the text of numbers, each as one checksum.
// And angles, the one thing that the client takes from the platform's mathematics, next to correctly rounded ones.
//
// The checksums were taken on Linux with x86-64, by this program. That the bytes behind them are the right ones is what
// the tests of numbers and commands show there, each with a definition of its own; here they only have to stay the
// same.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/keywords/enums.h"
#include "client/keywords/numbers.h"
#include "client/symbols/symbol.h"
#include "client/values/coordsys.h"
#include "own/textbuffer.h"
#include "tests/recordingengine.h"

using namespace Zant;

namespace {

/// FNV-1a with 64 bits.
class Checksum {
public:
    void add(std::string_view bytes) {
        for (const char byte : bytes)
            value_ = (value_ ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    }
    uint64_t value() const { return value_; }

private:
    uint64_t value_ = 14695981039346656037U;
};

/// SplitMix64, and numbers made of it by operations that round alike everywhere. write_angles.py has it as well.
class Numbers {
public:
    explicit Numbers(uint64_t seed) : state_(seed) {}

    uint64_t next() {
        uint64_t z = state_ += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }
    int below(int limit) { return static_cast<int>(next() % static_cast<uint64_t>(limit)); }

    /// From -limit up to limit, a power of two, without rounding.
    double within(double limit) { return static_cast<double>(next() >> 11) * 0x1p-52 * limit - limit; }

    /// Finite, with any exponent, subnormal numbers included.
    double ofAnyExponent() {
        const uint64_t digits = next() & ((uint64_t{1} << 52) - 1), sign = next() & uint64_t{1} << 63;
        const uint64_t bits = sign | next() % 2047 << 52 | digits;
        double number;
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }

    /// As scenes have them, for the most part.
    double any() {
        switch (below(5)) {
            case 0:
                return below(20001) - 10000;
            case 1:
                return (below(20001) - 10000) / 8.0;
            case 2:
                return below(2000000001) / 1e8;
            case 3:
                return within(1024.0);
            default:
                return ofAnyExponent();
        }
    }

private:
    uint64_t state_;
};

/// Commands with arguments of every kind, the same ones for every buffer. Angles come as angles: a matrix in text would
/// be decomposed by the platform's mathematics. The bytes of texts and names fill words, with their terminator, since a
/// block has no defined bytes behind them otherwise.
class Commands {
public:
    explicit Commands(CommandBuffer& buffer) : buffer_(buffer), sky_(buffer, "horizon"), odd_(buffer, "a \"b\",c") {}

    void makeNext() {
        static constexpr int words[] = {Enums::cmd_objectAdd, Enums::cmd_lightAdd, Enums::cmd_vector,
                                        Enums::cmd_axes,      Enums::cmd_surface,  Enums::cmd_background,
                                        Enums::cmd_blend,     Enums::cmd_shape};
        buffer_.addKeyword(Enums::cmd_strings, words[numbers_.below(8)]);
        for (int arguments = 1 + numbers_.below(4); arguments > 0; --arguments)
            addArgument();
        buffer_.parse();
    }

private:
    void addArgument() {
        switch (numbers_.below(8)) {
            case 0:
                return buffer_.addVector(vector());
            case 1:
                return buffer_.addAxes(angles());
            case 2:
                return buffer_.addCoordSys(system());
            case 3:
                return buffer_.addSymbol(numbers_.below(2) ? sky_ : odd_);
            case 4:
                return addText();
            case 5:
                return addList();
            default:
                return buffer_.addDouble(numbers_.any());
        }
    }

    void addText() {
        static const char* const texts[] = {"wood.jp", "say \"a\"", "two\nlines;{1,2}", "f\u00FCnf \u20AC fifth"};
        switch (const int choice = numbers_.below(6)) {
            case 4:
                return buffer_.addString(L"\U0001F4A1 on");
            case 5:
                return buffer_.addUtf16String(u"\U0001F4A1 on");
            default:
                ASSERT_EQ(std::strlen(texts[choice]) % 8, 7U);
                return buffer_.addString(texts[choice]);
        }
    }

    void addList() {
        const auto count = static_cast<size_t>(numbers_.below(4));
        switch (numbers_.below(4)) {
            case 0: {
                const Double items[] = {{numbers_.any()}, {numbers_.any()}, {numbers_.any()}};
                return buffer_.addVarLenDouble({items, count});
            }
            case 1: {
                const Vector items[] = {vector(), vector(), vector()};
                return buffer_.addVarLenVector({items, count});
            }
            case 2: {
                const CoordSys items[] = {system(), system(), system()};
                return buffer_.addVarLenCoordSys({items, count});
            }
            default: {
                const Symbol* const items[] = {&sky_, &odd_, &sky_};
                return buffer_.addVarLenSymbol({items, count});
            }
        }
    }

    // Statements rather than arguments of a call, which are evaluated in an order of the compiler's.
    Vector vector() {
        Vector result;
        for (double& value : result.values)
            value = numbers_.any();
        result.count = 1 + numbers_.below(4);
        return result;
    }
    Axes angles() {
        AxesHpb result;
        for (int i = 0; i < 6; ++i)
            result.m[i] = i < 3 ? numbers_.within(8.0) : numbers_.any();
        return numbers_.below(4) == 0 ? Axes() : Axes(result);
    }
    CoordSys system() {
        const Vector place = vector();
        return CoordSys(Vector(place.values[0], place.values[1], place.values[2]), angles());
    }

    CommandBuffer& buffer_;
    Numbers numbers_{1};
    const Symbol sky_, odd_;
};

struct EncodingTest : RecordingEngine::Test {
    template <class Buffer>
    uint64_t checksumOf() {
        Buffer buffer(instance);
        Commands commands(buffer);
        Checksum sum;
        for (int i = 0; i < 100000; ++i) {
            commands.makeNext();
            sum.add(RecordingEngine::state.parsed.at(0).data);
            RecordingEngine::state.parsed.clear();
        }
        EXPECT_EQ(RecordingEngine::state.count, 100000U);
        RecordingEngine::state.count = 0;
        return sum.value();
    }
};

/// How many doubles further the one lies.
uint64_t stepsBetween(double a, double b) {
    const auto place = [](double number) {
        int64_t bits;
        std::memcpy(&bits, &number, sizeof bits);
        return bits < 0 ? INT64_MIN - bits : bits;
    };
    const int64_t one = place(a), other = place(b);
    return static_cast<uint64_t>(std::max(one, other)) - static_cast<uint64_t>(std::min(one, other));
}

double doubleOf(const std::string& bits) {
    const uint64_t word = std::stoull(bits, nullptr, 16);
    double number;
    std::memcpy(&number, &word, sizeof number);
    return number;
}

}  // namespace

TEST_F(EncodingTest, CommandsHaveTheSameBytesOnEveryPlatform) {
    EXPECT_EQ(checksumOf<CommandTextBuffer>(), 611039075919134940U);
    EXPECT_EQ(checksumOf<CommandQuickTextBuffer>(), 399641119206748784U);
    EXPECT_EQ(checksumOf<CommandBinaryBuffer>(), 9025570177876285809U);
}

TEST(Platforms, NumberTextsHaveTheSameBytesOnEveryPlatform) {
    Numbers numbers(2);
    Checksum sum;
    TextBuffer text;
    for (int i = 0; i < 1000000; ++i) {
        text.dataSize = 0;
        text.concat(numbers.ofAnyExponent());
        sum.add(static_cast<const char*>(text));
        sum.add(";");
    }
    EXPECT_EQ(sum.value(), 15271665071891927842U);
}

TEST(Platforms, AnglesDifferByTwoUnitsInTheLastPlaceAtMost) {
    std::ifstream file(ZANT_SOURCE_DIR "/tests/data/angles.txt");
    Numbers numbers(3);
    uint64_t largest = 0;
    int differing = 0, lines = 0;
    const auto compare = [&](double computed, const std::string& expected) {
        const uint64_t steps = stepsBetween(computed, doubleOf(expected));
        largest = std::max(largest, steps);
        differing += steps != 0;
    };
    for (std::string sine, cosine, heading; file >> sine >> cosine >> heading; ++lines) {
        Matrix3x3 rotation;
        rotation.setRotation(0, 1, numbers.within(8.0));
        compare(rotation.m[1], sine);
        compare(rotation.m[0], cosine);
        const double y = numbers.within(1.0), x = numbers.within(1.0);
        compare(AxesHpb(Matrix3x3(x, 0, -y, 0, 1, 0, y, 0, x)).m[0], heading);
    }
    std::printf("%d of %d angles differ, by at most %d in the last place\n", differing, 3 * lines,
                static_cast<int>(largest));
    EXPECT_EQ(lines, 1000);
    EXPECT_LE(largest, 2U);
}
