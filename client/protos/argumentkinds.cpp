#include "client/protos/argumentkinds.h"

namespace Zant {
namespace {

#define ZANT_KIND(kind) ArgumentKind::kind, #kind

// One place for each kind, in the order of ArgumentKind: what it is, how it reads, what the typed functions make of it.
// clang-format off
constexpr KindRow kinds[] = {
    {ZANT_KIND(Keyword), "", ValueKind::Keyword, false,
     "keyword", "a keyword", "the word; in quick text its number: `[6]`", "its number",
     "", "", "addKeyword", "", false},
    {ZANT_KIND(Double), "d", ValueKind::Number, false,
     "number", "a number", "`0.5`, at most eight decimals", "0, then the double",
     "double", "double", "addDouble", "number", true},
    {ZANT_KIND(Int), "i", ValueKind::Number, false,
     "integer", "an integer", "`2`", "as a number",
     "int", "int", "addDouble", "integer", true},
    {ZANT_KIND(Bool), "b", ValueKind::Number, false,
     "truth value", "0 or 1", "`1` or `0`", "as a number",
     "bool", "flag", "addDouble", "flag", true},
    {ZANT_KIND(Unsigned), "u", ValueKind::Number, false,
     "unsigned", "an integer of 0 or more", "`2`", "as a number",
     "Zant::Unsigned64", "index", "addDouble", "index", true},
    {ZANT_KIND(String), "s", ValueKind::String, false,
     "text", "a text in double quotes", "`\"wood.png\"`, a quote inside doubled",
     "its length in bytes, then the bytes and a zero byte",
     "const char*", "const text&", "addString", "text", false},
    {ZANT_KIND(Vector), "V", ValueKind::Vector, false,
     "vector", "a vector", "`(1,0.5,0.25)`, one to four components", "their count, then the components",
     "const Zant::Vector&", "const vector&", "addVector", "vector", true},
    {ZANT_KIND(Axes), "A", ValueKind::Axes, false,
     "axes", "axes", "`<90,0,0>`: heading, pitch and bank in degrees, radians in memory",
     "the number of rows, then three doubles for each",
     "const Zant::Axes&", "const axes&", "addAxes", "axes", false},
    {ZANT_KIND(CoordSys), "C", ValueKind::CoordSys, false,
     "coordinate system", "a coordinate system", "`(0,1.5,-4)` and, unless it is the eye, the axes after an at sign",
     "the three doubles of the position, then the axes",
     "const Zant::CoordSys&", "const coord_sys&", "addCoordSys", "coordSys", false},
    {ZANT_KIND(Symbol), "S", ValueKind::Symbol, false,
     "symbol", "the name of a symbol", "its name",
     "0, then its registered word; its name as a text while it is not registered",
     "const Zant::Symbol&", "const symbol&", "addSymbol", "symbol", false},
    {ZANT_KIND(NewSymbol), "N", ValueKind::Symbol, false,
     "declared symbol", "the name of a symbol", "its name; the function registers the symbol", "as a symbol",
     "Zant::Symbol&", "symbol&", "addSymbol", "symbol", false},
    {ZANT_KIND(BitmapSymbol), "B", ValueKind::Symbol, false,
     "bitmap", "the name of a symbol", "its name", "as a symbol",
     "const Zant::BitmapSymbol&", "const bitmap&", "addSymbol", "bitmap", false},
    {ZANT_KIND(MeshSymbol), "M", ValueKind::Symbol, false,
     "mesh", "the name of a symbol", "its name", "as a symbol",
     "const Zant::MeshSymbol&", "const mesh&", "addSymbol", "mesh", false},
    {ZANT_KIND(VertexMapSymbol), "X", ValueKind::Symbol, false,
     "vertex map", "the name of a symbol", "its name", "as a symbol",
     "const Zant::VertexMapSymbol&", "const vertex_map&", "addSymbol", "vertexMap", false},
    {ZANT_KIND(DoubleList), "Ld", ValueKind::Number, true,
     "list of numbers", "a list of numbers", "`{0,1,2}`; a single item needs no braces",
     "-2, the length of the items in bytes, the items, -3",
     "const Zant::VarLenDouble&", "const numbers&", "addVarLenDouble", "numbers", false},
    {ZANT_KIND(VectorList), "LV", ValueKind::Vector, true,
     "list of vectors", "a list of vectors", "`{(0,2,0),(1,0.5,0.25)}`", "the same",
     "const Zant::VarLenVector&", "const vectors&", "addVarLenVector", "vectors", false},
    {ZANT_KIND(CoordSysList), "LC", ValueKind::CoordSys, true,
     "list of coordinate systems", "a list of coordinate systems", "as the items, in braces", "the same",
     "const Zant::VarLenCoordSys&", "const coord_systems&", "addVarLenCoordSys", "coordSystems", false},
    {ZANT_KIND(SymbolList), "LS", ValueKind::Symbol, true,
     "list of symbols", "a list of symbols", "`{object,object2}`", "the same",
     "const Zant::VarLenSymbol&", "const symbols&", "addVarLenSymbol", "symbols", false},
};
// clang-format on

#undef ZANT_KIND

constexpr bool isInOrder() {
    size_t index = 0;
    for (const KindRow& row : kinds) {
        if (static_cast<size_t>(row.kind) != index++) return false;
    }
    return index == kindCount;
}
static_assert(isInOrder(), "one row for each kind");

}  // namespace

const KindRow& kindRow(ArgumentKind kind) {
    return kinds[static_cast<size_t>(kind)];
}

const KindRow* findKind(const std::string& letter) {
    for (const KindRow& row : kinds) {
        if (*row.letter && letter == row.letter) return &row;
    }
    return nullptr;
}

std::string letterLegend(const char* lineBreak) {
    std::string text;
    for (const KindRow& row : kinds) {
        if (!*row.letter) continue;
        const bool breaks = row.kind == ArgumentKind::Symbol || row.kind == ArgumentKind::DoubleList;
        if (!text.empty()) text += breaks ? std::string(",") + lineBreak : ", ";
        text += std::string(row.letter) + " " + row.name;
    }
    return text;
}

}  // namespace Zant
