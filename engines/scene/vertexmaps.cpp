#include "engines/scene/vertexmaps.h"

#include <algorithm>
#include <cmath>

namespace Zant::Engine {
namespace {

// Counts travel as doubles; a NaN is refused with the rest.
bool isCount(double value, double least, double most) {
    return value >= least && value <= most && value == std::floor(value);
}

}  // namespace

bool VertexMap::shape(double dimension, double samples, double rows, bool fixedSize) {
    if (!isCount(dimension, 0, mostComponents) || !isCount(samples, 1, mostComponents)) return false;
    const double length = std::max(dimension * samples, 1.0);
    if (!isCount(rows, 0, std::floor(static_cast<double>(mostValues) / length))) return false;
    const auto values = static_cast<size_t>(rows * dimension * samples);
    std::vector<float> floatValues(doubles_ ? 0 : values);
    std::vector<double> doubleValues(doubles_ ? values : 0);
    floatValues_.swap(floatValues);
    doubleValues_.swap(doubleValues);
    record_ = {static_cast<uint64_t>(rows), nullptr, static_cast<int32_t>(dimension), static_cast<int32_t>(samples)};
    fixedSize_ = fixedSize;
    linkValues();
    return true;
}

bool VertexMap::resize(double rows) {
    const size_t mostRows = mostValues / std::max<size_t>(rowLength(), 1);
    if (!isCount(rows, 0, static_cast<double>(mostRows))) return false;
    store(static_cast<size_t>(rows));
    return true;
}

bool VertexMap::set(double row, const double* values, size_t count) {
    if (count > rowLength() || !isCount(row, 0, static_cast<double>(mostValues))) return false;
    const auto index = static_cast<size_t>(row);
    if (index >= record_.size && (fixedSize_ || !resize(row + 1))) return false;
    const size_t first = index * rowLength();
    for (size_t place = 0; place < count; ++place) {
        if (doubles_)
            doubleValues_[first + place] = values[place];
        else
            floatValues_[first + place] = static_cast<float>(values[place]);
    }
    return true;
}

double VertexMap::get(size_t row, size_t place) const {
    const size_t index = row * rowLength() + place;
    return doubles_ ? doubleValues_[index] : static_cast<double>(floatValues_[index]);
}

void VertexMap::clear() {
    std::fill(floatValues_.begin(), floatValues_.end(), 0.0F);
    std::fill(doubleValues_.begin(), doubleValues_.end(), 0.0);
}

void VertexMap::store(size_t rows) {
    const size_t values = rows * rowLength();
    if (doubles_)
        doubleValues_.resize(values);
    else
        floatValues_.resize(values);
    record_.size = rows;
    linkValues();
}

void VertexMap::linkValues() {
    record_.values = doubles_ ? static_cast<void*>(doubleValues_.data()) : static_cast<void*>(floatValues_.data());
}

}  // namespace Zant::Engine
