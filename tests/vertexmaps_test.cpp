// Linked vertex maps: where each value lies, and what is converted.
#include "client/symbols/vertexmap.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace Zant;

template <class Stored>
struct Map {
    Map(int dimension, int samples, size_t rows)
        : values(static_cast<size_t>(dimension * samples) * rows + 1, Stored(-1)) {
        record = {rows, values.data(), dimension, samples};
        info.record = &record;
        info.isDouble = sizeof(Stored) == sizeof(double);
    }
    std::vector<Stored> values;
    ZantVertexMapRecord record;
    VertexMapInfo info;
};

template <class Stored, class Value>
void expectRowsWork() {
    const Value value = static_cast<Value>(1.0 / 3);
    Map<Stored> map(3, 2, 10);
    const VertexMapInfo& info = map.info;
    info.setValue(5, 1, value, 1);
    EXPECT_EQ(map.values[34], static_cast<Stored>(value));
    EXPECT_EQ(info.getValueDouble(5, 1, 1), static_cast<double>(map.values[34]));
    EXPECT_EQ(info.getValueFloat(5, 1, 1), static_cast<float>(map.values[34]));

    const Value in[4] = {value, 2, 3, 4};
    info.setRow(9, in, 1);
    const std::vector<Stored> tail(map.values.end() - 5, map.values.end());
    EXPECT_EQ(tail, (std::vector<Stored>{-1, static_cast<Stored>(value), 2, 3, -1})) << "one sample, to the last value";
    Value out[4] = {0, 0, 0, 77};
    info.getRow(9, out, 1);
    EXPECT_EQ(out[0], static_cast<Value>(static_cast<Stored>(value)));
    EXPECT_EQ(out[2], 3);
    EXPECT_EQ(out[3], 77);

    Map<Stored> flat(0, 1, 1);
    flat.info.setRow(0, in, 0);
    EXPECT_EQ(flat.values[0], -1) << "no dimension, nothing moved";
}

TEST(VertexMaps, RowsAndValues) {
    expectRowsWork<float, float>();
    expectRowsWork<float, double>();
    expectRowsWork<double, float>();
    expectRowsWork<double, double>();
}

TEST(VertexMaps, HeaderAndRowPointers) {
    Map<float> floats(2, 4, 100);
    EXPECT_EQ(floats.info.getSize(), 100u);
    EXPECT_EQ(floats.info.getDimension(), 2);
    EXPECT_EQ(floats.info.getSamples(), 4);
    EXPECT_EQ(floats.info.getRowFloatPtr(7), floats.values.data() + 56);
    EXPECT_EQ(floats.info.getRowDoublePtr(7), nullptr);
    Map<double> doubles(2, 4, 100);
    EXPECT_EQ(doubles.info.getRowDoublePtr(7), doubles.values.data() + 56);
    EXPECT_EQ(doubles.info.getRowFloatPtr(7), nullptr);
}

TEST(VertexMaps, FarRowsDoNotOverflow) {
    // Only addresses are formed: the row term needs 64 bits.
    float first = 0;
    ZantVertexMapRecord record{1ull << 32, &first, 3, 1};
    VertexMapInfo info;
    info.record = &record;
    const auto distance =
        reinterpret_cast<uintptr_t>(info.getRowFloatPtr(1ul << 31)) - reinterpret_cast<uintptr_t>(&first);
    EXPECT_EQ(distance, 12ull << 31);
    // The products inside a row wrap at 32 bits.
    record.dimension = 65536;
    record.samples = 65537;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(info.getRowFloatPtr(1)) - reinterpret_cast<uintptr_t>(&first), 65536u * 4);
}

}  // namespace
