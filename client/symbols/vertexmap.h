#ifndef ZANT_CLIENT_SYMBOLS_VERTEXMAP_H
#define ZANT_CLIENT_SYMBOLS_VERTEXMAP_H

#include <cstddef>
#include <cstdint>

#include "client/symbols/symbol.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"
#include "own/unsigned64.h"

namespace Zant {

/// The client's view of a linked vertex map: a table of numbers, read and written in place.
///
/// A row (vertex) holds samples, a sample holds as many components as the map has dimensions. The engine keeps floats
/// or doubles; values are converted on the way. Nothing checks the link or the indices.
///
/// Threads: any number, as long as each value is touched by one of them and the engine does not change the map
/// meanwhile.
class VertexMapInfo {
public:
    ZantVertexMapRecord* record = nullptr;  ///< the engine's; null while not linked
    bool isDouble = false;                  ///< whether the values are doubles

    Unsigned64 getSize() const { return record->size; }
    int getDimension() const { return record->dimension; }
    int getSamples() const { return record->samples; }

    /// @return the row's first value, or null when the map holds doubles
    float* getRowFloatPtr(Unsigned64 row) const { return isDouble ? nullptr : floats() + index(row, 0, 0); }
    /// @return the row's first value, or null when the map holds floats
    double* getRowDoublePtr(Unsigned64 row) const { return isDouble ? doubles() + index(row, 0, 0) : nullptr; }

    float getValueFloat(Unsigned64 row, int component, int sample) const {
        return get<float>(index(row, component, sample));
    }
    double getValueDouble(Unsigned64 row, int component, int sample) const {
        return get<double>(index(row, component, sample));
    }

    /// Stores one value. Note the order: the value stands between the component and the sample.
    void setValue(Unsigned64 row, int component, float value, int sample) const {
        set(index(row, component, sample), value);
    }
    void setValue(Unsigned64 row, int component, double value, int sample) const {
        set(index(row, component, sample), value);
    }

    /// Copies the components of one sample out of the map.
    void getRow(Unsigned64 row, float* out, int sample) const { read(index(row, 0, sample), out); }
    void getRow(Unsigned64 row, double* out, int sample) const { read(index(row, 0, sample), out); }

    /// Copies the components of one sample into the map.
    void setRow(Unsigned64 row, const float* in, int sample) const { write(index(row, 0, sample), in); }
    void setRow(Unsigned64 row, const double* in, int sample) const { write(index(row, 0, sample), in); }

private:
    float* floats() const { return static_cast<float*>(record->values); }
    double* doubles() const { return static_cast<double*>(record->values); }

    /// Counts in values; the products inside a row are formed in 32 bits, as the engine forms them.
    size_t index(Unsigned64 row, int component, int sample) const {
        return row * static_cast<size_t>(product(record->dimension, record->samples)) +
               static_cast<size_t>(product(sample, record->dimension)) + static_cast<size_t>(component);
    }

    /// Wraps in two's complement.
    static int32_t product(int a, int b) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
    }

    template <class Value>
    Value get(size_t at) const {
        return isDouble ? static_cast<Value>(doubles()[at]) : static_cast<Value>(floats()[at]);
    }

    template <class Value>
    void set(size_t at, Value value) const {
        if (isDouble) {
            doubles()[at] = static_cast<double>(value);
        } else {
            floats()[at] = static_cast<float>(value);
        }
    }

    template <class Value>
    void read(size_t at, Value* out) const {
        isDouble ? copy(doubles() + at, out) : copy(floats() + at, out);
    }

    template <class Value>
    void write(size_t at, const Value* in) const {
        isDouble ? copy(in, doubles() + at) : copy(in, floats() + at);
    }

    /// The components of one sample.
    template <class From, class To>
    void copy(const From* from, To* to) const {
        for (int i = 0, count = record->dimension; i < count; ++i) {
            to[i] = static_cast<To>(from[i]);
        }
    }
};

/// A vertex map of the engine, filled by command or through direct().
///
/// Threads: as its command buffer, one at a time; for the linked rows see VertexMapInfo.
class VertexMapSymbol : public Symbol {
public:
    VertexMapInfo info;  ///< the link

    explicit VertexMapSymbol(CommandBuffer& commands, const char* symbolName = nullptr)
        : Symbol(commands, symbolName) {}

    /// Sends the command that creates the map, registers and links it.
    /// @param dimension components per sample
    /// @param size rows; 0 for a map that grows, and samples is not sent then
    /// @param samples samples per row
    void registerSymbol(int dimension, Unsigned64 size, int samples);

    /// Links the map; without a handle the link is cleared.
    void refreshDirectLink();

    /// @return the link, or null while there is none
    const VertexMapInfo* direct() const { return info.record ? &info : nullptr; }

    /// Sends one row by command: as "vertex2d" when the vector has two components, otherwise as "vertex3d".
    void data(Unsigned64 row, const Vector& vector);
    /// Sends one row of any length by command.
    void data(Unsigned64 row, const VarLenDouble& list);
};

}  // namespace Zant

#endif
