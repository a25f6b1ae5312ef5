#ifndef ZANT_TESTS_HANDMADEBLOCK_H
#define ZANT_TESTS_HANDMADEBLOCK_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

/// A binary block as it should be, put together by hand. Padding is not compared.
class HandmadeBlock {
public:
    HandmadeBlock() { word(0); }
    HandmadeBlock& word(uint64_t value) { return bytes(&value, sizeof value); }
    HandmadeBlock& real(double value) { return bytes(&value, sizeof value); }
    HandmadeBlock& number(double value) { return word(0).real(value); }
    HandmadeBlock& reals(std::initializer_list<double> values) {
        for (double value : values)
            real(value);
        return *this;
    }
    HandmadeBlock& text(const std::string& characters) {
        word(characters.size()).bytes(characters.c_str(), characters.size() + 1);
        compared.resize((compared.size() + 7) / 8 * 8, false);
        expected.resize(compared.size());
        return *this;
    }
    /// Begins a list; endList() fills its length in.
    HandmadeBlock& list() {
        word(static_cast<uint64_t>(-2)).word(0);
        items = expected.size();
        return *this;
    }
    HandmadeBlock& endList() {
        end();
        const uint64_t length = expected.size() - items;
        std::memcpy(&expected[items - sizeof length], &length, sizeof length);
        return *this;
    }

    /// Whether a block that was sent is this one with its end marker and length.
    testing::AssertionResult is(const std::string& sent) const {
        HandmadeBlock whole = *this;
        whole.end();
        const uint64_t length = whole.expected.size();
        std::memcpy(&whole.expected[0], &length, sizeof length);
        if (sent.size() != length) return testing::AssertionFailure() << sent.size() << " bytes, not " << length;
        for (size_t i = 0; i < length; ++i) {
            if (whole.compared[i] && sent[i] != whole.expected[i])
                return testing::AssertionFailure() << "differs at byte " << i;
        }
        return testing::AssertionSuccess();
    }

private:
    HandmadeBlock& end() { return word(static_cast<uint64_t>(-3)); }
    HandmadeBlock& bytes(const void* data, size_t size) {
        expected.append(static_cast<const char*>(data), size);
        compared.resize(expected.size(), true);
        return *this;
    }
    std::string expected;
    std::vector<bool> compared;
    size_t items = 0;  // offset of the items of the last list
};

#endif
