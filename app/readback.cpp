#include "app/readback.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <vector>

#include "language/reader.h"

namespace Zant::App {

using namespace Language;

namespace {

std::string row(const double* values, int count) {
    return fmt::format("({})", fmt::join(values, values + count, ", "));
}

std::string describe(const ZantAxesCore& axes) {
    switch (axes.rows) {
        case 1:
            return "axes " + row(axes.m, 3);
        case 2:
            return fmt::format("heading {} pitch {} bank {} (radians), scale {} {} {}", axes.m[0], axes.m[1], axes.m[2],
                               axes.m[3], axes.m[4], axes.m[5]);
        case 3:
            return fmt::format("matrix {} {} {}", row(axes.m, 3), row(axes.m + 3, 3), row(axes.m + 6, 3));
        default:
            return "<>";
    }
}

std::string describe(const ZantCoordSysCore& system) {
    return row(system.position, 3) + " @ " + describe(system.axes);
}

ZantParserExchangeBuffer ask(const Instance& instance, void* handle, int type) {
    ZantParserExchangeBuffer record{};
    record.type = type;
    instance.getValue(handle, &record);
    return record;
}

/// The object's own text: the engine says how long it is, then fills it in. Empty when it gives none.
std::string textOf(const Instance& instance, void* handle) {
    ZantParserExchangeBuffer record = ask(instance, handle, ZantValueText);
    if (record.type != ZantValueText || record.value.text.length == 0) return "";
    std::vector<char> storage(record.value.text.length + 1);
    record = {};
    record.type = ZantValueText;
    record.value.text = {storage.data(), storage.size()};
    instance.getValue(handle, &record);
    return record.type == ZantValueText && record.value.text.text ? record.value.text.text : "";
}

/// Vectors and coordinate systems travel under one code: what an object is, its text says, which declares it. Without
/// one a guess remains: vectors have one to four components, and where their count is, coordinate systems have a part
/// of an angle.
std::string describeVectorCode(const ZantExchangeValue& value, const std::string& text) {
    TextReader reader{std::string_view(text)};
    Command declaration;
    const bool declared = reader.next(declaration) == ReadResult::Command && !declaration.values().empty();
    const ValueKind kind = declared ? declaration.values().back().kind : ValueKind::Keyword;
    const bool looksLikeVector = value.vector.count >= 1 && value.vector.count <= 4;
    if (kind == ValueKind::CoordSys) return describe(value.coordSys);
    if (kind == ValueKind::Vector && looksLikeVector) return row(value.vector.values, value.vector.count);
    if (!text.empty()) return text;
    const char* const guess = " (a guess: the engine gives no text of it)";
    return (looksLikeVector ? row(value.vector.values, value.vector.count) : describe(value.coordSys)) + guess;
}

}  // namespace

std::optional<std::string> readBack(const Instance& instance, const std::string& name) {
    void* const handle = instance.findObject(name.c_str(), HandleValue);
    if (!handle) return std::nullopt;
    // Engines deliver what the object is, whatever code was asked for; the others are asked for in turn.
    for (const int type : {ZantValueNumber, ZantValueString, ZantValueVector, ZantValueAxes}) {
        const ZantParserExchangeBuffer record = ask(instance, handle, type);
        if (record.type != type) continue;
        if (type == ZantValueNumber) return fmt::format("{}", record.value.number);
        if (type == ZantValueString) return record.value.string ? record.value.string : "";
        if (type == ZantValueAxes) return describe(record.value.axes);
        return describeVectorCode(record.value, textOf(instance, handle));
    }
    return "a value of another kind";
}

}  // namespace Zant::App
