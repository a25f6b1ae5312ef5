#include "client/symbols/mesh.h"

#include "client/commands/commandbuffer.h"
#include "client/keywords/enums.h"
#include "client/symbols/vertexmap.h"

namespace Zant {

namespace {

constexpr int meshOpCommand = 80;
constexpr int meshCommand = 99;
constexpr int meshAddPolyCommand = 100;
constexpr int pointsOperation = 9;

}  // namespace

void MeshSymbol::registerSymbol() {
    define(meshCommand);
    Symbol::registerSymbol(HandleMesh, nullptr);
}

void MeshSymbol::addPoly(int value1, const VarLenDouble& list, int value2, int value3) {
    buffer->addKeyword(Enums::cmd_strings, meshAddPolyCommand);
    buffer->addSymbol(*this);
    buffer->addDouble(value1);
    buffer->addVarLenDouble(list);
    buffer->addDouble(value2);
    buffer->addDouble(value3);
    buffer->parse();
}

void MeshSymbol::points(const VertexMapSymbol& map) {
    buffer->addKeyword(Enums::cmd_strings, meshOpCommand);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::meshOperations_strings, pointsOperation);
    buffer->addSymbol(map);
    buffer->parse();
}

}  // namespace Zant
