#include "app/kinds.h"

#include <cstddef>

namespace Zant::App {
namespace {

// In the order of ArgumentKind.
const KindRow kinds[] = {
    {"", "keyword", "", "the word; in quick text its number: `[6]`", "its number"},
    {"d", "number", "double", "`0.5`, at most eight decimals", "0, then the double"},
    {"i", "integer", "int", "`2`", "as a number"},
    {"b", "truth value", "bool", "`1` or `0`", "as a number"},
    {"u", "unsigned", "unsigned long", "`2`", "as a number"},
    {"s", "text", "const char*, const wchar_t*", "`\"wood.png\"`, a quote inside doubled",
     "its length in bytes, then the bytes and a zero byte"},
    {"V", "vector", "const Vector&", "`(1,0.5,0.25)`, one to four components", "their count, then the components"},
    {"A", "axes", "const Axes&", "`<90,0,0>`: heading, pitch and bank in degrees, radians in memory",
     "the number of rows, then three doubles for each"},
    {"C", "coordinate system", "const CoordSys&", "`(0,1.5,-4)` and, unless it is the eye, the axes after an at sign",
     "the three doubles of the position, then the axes"},
    {"S", "symbol", "const Symbol&", "its name",
     "0, then its registered word; its name as a text while it is not registered"},
    {"N", "declared symbol", "Symbol&", "its name; the function registers the symbol", "as a symbol"},
    {"B", "bitmap", "const BitmapSymbol&", "its name", "as a symbol"},
    {"M", "mesh", "const MeshSymbol&", "its name", "as a symbol"},
    {"X", "vertex map", "const VertexMapSymbol&", "its name", "as a symbol"},
    {"Ld", "list of numbers", "const VarLenDouble&", "`{0,1,2}`; a single item needs no braces",
     "-2, the length of the items in bytes, the items, -3"},
    {"LV", "list of vectors", "const VarLenVector&", "`{(0,2,0),(1,0.5,0.25)}`", "the same"},
    {"LC", "list of coordinate systems", "const VarLenCoordSys&", "as the items, in braces", "the same"},
    {"LS", "list of symbols", "const VarLenSymbol&", "`{object,object2}`", "the same"},
};
static_assert(sizeof kinds / sizeof kinds[0] == static_cast<size_t>(ArgumentKind::SymbolList) + 1,
              "one row for each kind");

}  // namespace

const KindRow& kindRow(ArgumentKind kind) {
    return kinds[static_cast<size_t>(kind)];
}

}  // namespace Zant::App
