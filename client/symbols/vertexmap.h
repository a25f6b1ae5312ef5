#ifndef ZANT_CLIENT_SYMBOLS_VERTEXMAP_H
#define ZANT_CLIENT_SYMBOLS_VERTEXMAP_H

#include <cstdint>

#include "client/symbols/symbol.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"

namespace Zant {

/// The client's view of a linked vertex map: a table of numbers, read and written in place.
///
/// A row (vertex) holds samples, a sample holds as many components as the map has dimensions. The engine keeps floats
/// or doubles; values are converted on the way. Nothing checks the link or the indices.
class VertexMapInfo {
public:
    ZantVertexMapRecord* record = nullptr;  ///< the engine's; null while not linked
    bool isDouble = false;                  ///< whether the values are doubles

    unsigned long getSize() const { return record->size; }
    int getDimension() const { return record->dimension; }
    int getSamples() const { return record->samples; }

    /// @return the row's first value, or null when the map holds doubles
    float* getRowFloatPtr(unsigned long row) const;
    /// @return the row's first value, or null when the map holds floats
    double* getRowDoublePtr(unsigned long row) const;

    float getValueFloat(unsigned long row, int component, int sample) const;
    double getValueDouble(unsigned long row, int component, int sample) const;

    /// Stores one value. Note the order: the value stands between the component and the sample.
    void setValue(unsigned long row, int component, float value, int sample) const;
    void setValue(unsigned long row, int component, double value, int sample) const;

    /// Copies the components of one sample out of the map.
    void getRow(unsigned long row, float* out, int sample) const;
    void getRow(unsigned long row, double* out, int sample) const;

    /// Copies the components of one sample into the map.
    void setRow(unsigned long row, const float* in, int sample) const;
    void setRow(unsigned long row, const double* in, int sample) const;

private:
    /// Counts in elements, the product of dimension and samples in 32 bits as the engine forms it.
    size_t index(unsigned long row, int component, int sample) const {
        const int rowLength = record->dimension * record->samples;
        return row * static_cast<size_t>(rowLength) + static_cast<size_t>(sample * record->dimension + component);
    }
    float* floats() const { return static_cast<float*>(record->values); }
    double* doubles() const { return static_cast<double*>(record->values); }
};

/// A vertex map of the engine, filled by command or through direct().
class VertexMapSymbol : public Symbol {
public:
    VertexMapInfo info;  ///< the link

    explicit VertexMapSymbol(CommandBuffer& commands, const char* symbolName = nullptr)
        : Symbol(commands, symbolName) {}

    /// Sends the command that creates the map, registers and links it.
    /// @param dimension components per sample
    /// @param size rows; 0 for a map that grows, and samples is not sent then
    /// @param samples samples per row
    void registerSymbol(int dimension, unsigned long size, int samples);

    /// Links the map; without a handle the link is cleared.
    void refreshDirectLink();

    /// @return the link, or null while there is none
    const VertexMapInfo* direct() const { return info.record ? &info : nullptr; }

    /// Sends one row by command: as "vertex2d" when the vector has two components, otherwise as "vertex3d".
    void data(unsigned long row, const Vector& vector);
    /// Sends one row of any length by command.
    void data(unsigned long row, const VarLenDouble& list);
};

}  // namespace Zant

#endif
