#include "client/symbols/mesh.h"

#include "client/commands/commandbuffer.h"
#include "client/keywords/enums.h"
#include "client/keywords/numbers.h"
#include "client/symbols/vertexmap.h"

namespace Zant {

void MeshSymbol::registerSymbol() {
    define(Enums::cmd_mesh);
    Symbol::registerSymbol(HandleMesh, nullptr);
}

void MeshSymbol::addPoly(int value1, const VarLenDouble& list, int value2, int value3) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_meshAddPoly);
    buffer->addSymbol(*this);
    buffer->addDouble(value1);
    buffer->addVarLenDouble(list);
    buffer->addDouble(value2);
    buffer->addDouble(value3);
    buffer->parse();
}

void MeshSymbol::points(const VertexMapSymbol& map) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_meshOp);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::meshOperations_strings, Enums::meshOperations_points);
    buffer->addSymbol(map);
    buffer->parse();
}

}  // namespace Zant
