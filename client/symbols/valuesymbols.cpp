#include "client/symbols/valuesymbols.h"

#include <algorithm>

#include "client/keywords/numbers.h"

namespace Zant {

namespace {

constexpr int32_t failedAxes = -1;

ZantParserExchangeBuffer recordOf(int32_t code) {
    ZantParserExchangeBuffer record{};
    record.type = code;
    return record;
}

/// The count and the components in use; the others stay as they were in the target.
void copyVector(Vector& target, const ZantVectorCore& source) {
    target.count = source.count;
    std::copy_n(source.values, std::clamp(source.count, 0, 4), target.values);
}

}  // namespace

// ---- DoubleSymbol ---------------------------------------------------------------------------------------------------

void DoubleSymbol::registerSymbol() {
    define(Enums::cmd_var);
    Symbol::registerSymbol(HandleValue, nullptr);
}

int DoubleSymbol::directSet(const Double& number) const {
    ZantParserExchangeBuffer record = recordOf(ZantValueNumber);
    record.value.number = number.value;
    return setValue(record);
}

bool DoubleSymbol::directGet(Double& number) const {
    ZantParserExchangeBuffer record{};
    const bool delivered = readValue(record, ZantValueNumber);
    number.value = delivered ? record.value.number : 0.0;
    return delivered;
}

// ---- StringSymbol ---------------------------------------------------------------------------------------------------

void StringSymbol::registerSymbol() {
    define(Enums::cmd_string);
    Symbol::registerSymbol(HandleValue, nullptr);
}

int StringSymbol::directSet(const String& text) const {
    ZantParserExchangeBuffer record = recordOf(ZantValueString);
    record.value.string = text.value;
    return setValue(record);
}

bool StringSymbol::directGet(String& text) const {
    ZantParserExchangeBuffer record{};
    const bool delivered = readValue(record, ZantValueString);
    text.value = delivered ? record.value.string : nullptr;
    return delivered;
}

const char* StringSymbol::toString(DynamicBuffer&) const {
    String text;
    directGet(text);
    return text.value;
}

// ---- VectorSymbol ---------------------------------------------------------------------------------------------------

void VectorSymbol::registerSymbol() {
    define(Enums::cmd_vector);
    Symbol::registerSymbol(HandleValue, nullptr);
}

int VectorSymbol::directSet(const Vector& vector) const {
    ZantParserExchangeBuffer record = recordOf(ZantValueVector);
    record.value.vector = vector;
    return setValue(record);
}

bool VectorSymbol::directGet(Vector& vector) const {
    ZantParserExchangeBuffer record{};
    if (!readValue(record, ZantValueVector)) {
        vector.count = 0;
        return false;
    }
    copyVector(vector, record.value.vector);
    return true;
}

// ---- AxesSymbol -----------------------------------------------------------------------------------------------------

void AxesSymbol::registerSymbol() {
    define(Enums::cmd_axes);
    Symbol::registerSymbol(HandleValue, nullptr);
}

int AxesSymbol::directSet(const Axes& axes) const {
    ZantParserExchangeBuffer record = recordOf(ZantValueAxes);
    record.value.axes = axes;
    return setValue(record);
}

bool AxesSymbol::directGet(Axes& axes) const {
    ZantParserExchangeBuffer record{};
    if (!readValue(record, ZantValueAxes)) {
        axes.rows = failedAxes;
        return false;
    }
    Axes::copy(axes, record.value.axes);
    return true;
}

// ---- CoordSysSymbol -------------------------------------------------------------------------------------------------

int CoordSysSymbol::directSet(const CoordSys& coordSys) const {
    ZantParserExchangeBuffer record = recordOf(ZantValueCoordSys);
    record.value.coordSys = coordSys;
    return setValue(record);
}

bool CoordSysSymbol::directGet(CoordSys& coordSys) const {
    ZantParserExchangeBuffer record{};
    if (!readValue(record, ZantValueCoordSys)) {
        coordSys.axes.rows = failedAxes;
        return false;
    }
    coordSys = CoordSys(record.value.coordSys);
    return true;
}

}  // namespace Zant
