#include "client/protos/generator/kinds.h"

namespace Generator {
namespace {

const Kind kinds[] = {
    {"d", "Double", "double ", "addDouble", "number", true},
    {"i", "Int", "int ", "addDouble", "integer", true},
    {"b", "Bool", "bool ", "addDouble", "flag", true},
    {"u", "Unsigned", "unsigned long ", "addDouble", "index", true},
    {"s", "String", "const char* ", "addString", "text", false},
    {"V", "Vector", "const Zant::Vector& ", "addVector", "vector", true},
    {"A", "Axes", "const Zant::Axes& ", "addAxes", "axes", false},
    {"C", "CoordSys", "const Zant::CoordSys& ", "addCoordSys", "coordSys", false},
    {"S", "Symbol", "const Zant::Symbol& ", "addSymbol", "symbol", false},
    {"N", "NewSymbol", "Zant::Symbol& ", "addSymbol", "symbol", false},
    {"B", "BitmapSymbol", "const Zant::BitmapSymbol& ", "addSymbol", "bitmap", false},
    {"M", "MeshSymbol", "const Zant::MeshSymbol& ", "addSymbol", "mesh", false},
    {"X", "VertexMapSymbol", "const Zant::VertexMapSymbol& ", "addSymbol", "vertexMap", false},
    {"Ld", "DoubleList", "const Zant::VarLenDouble& ", "addVarLenDouble", "numbers", false},
    {"LV", "VectorList", "const Zant::VarLenVector& ", "addVarLenVector", "vectors", false},
    {"LC", "CoordSysList", "const Zant::VarLenCoordSys& ", "addVarLenCoordSys", "coordSystems", false},
    {"LS", "SymbolList", "const Zant::VarLenSymbol& ", "addVarLenSymbol", "symbols", false},
};

}  // namespace

const Kind* findKind(const std::string& letter) {
    for (const Kind& kind : kinds) {
        if (letter == kind.letter) return &kind;
    }
    return nullptr;
}

}  // namespace Generator
