#ifndef ZANT_ENGINES_SCENE_VERTEXMAPS_H
#define ZANT_ENGINES_SCENE_VERTEXMAPS_H

#include <cstddef>
#include <vector>

#include "client/records/zant_records.h"
#include "engines/scene/handles.h"

namespace Zant::Engine {

/// A table of numbers: rows of samples, each of `dimension` components, held as floats or as doubles.
///
/// Hosts read the record in place: it stays where it is for the life of the object that holds the map. The values may
/// move when the map grows.
class VertexMap {
public:
    static constexpr int mostComponents = 1024;  // per sample, and samples per row
    static constexpr size_t mostValues = size_t{1} << 27;

    explicit VertexMap(bool doubles) : doubles_(doubles) {}
    VertexMap(const VertexMap&) = delete;
    VertexMap& operator=(const VertexMap&) = delete;
    VertexMap(VertexMap&&) = default;  // the values stay where they are, the record does not
    VertexMap& operator=(VertexMap&&) = default;

    const ZantVertexMapRecord& record() const { return record_; }
    size_t rowLength() const { return static_cast<size_t>(record_.dimension) * static_cast<size_t>(record_.samples); }

    /// Begins anew, with rows of zeros. A map of fixed size does not grow when a row after the last one is set.
    /// @return false when the numbers are refused; then nothing has changed.
    bool shape(double dimension, double samples, double rows, bool fixedSize);
    /// Changes the number of rows; new ones are zeros. @return false when it is refused.
    bool resize(double rows);
    /// Sets values of a row from its first one on.
    /// @return false when the row or its length is beyond what the map can hold; then nothing has changed.
    bool set(double row, const double* values, size_t count);
    /// One value, by its place in the row.
    double get(size_t row, size_t place) const;
    /// Sets every value to 0.
    void clear();

private:
    void store(size_t rows);
    void linkValues();

    alignas(1 << handleTagBits) ZantVertexMapRecord record_ = {0, nullptr, 0, 1};
    bool doubles_;
    bool fixedSize_ = false;
    std::vector<float> floatValues_;
    std::vector<double> doubleValues_;
};

}  // namespace Zant::Engine

#endif
