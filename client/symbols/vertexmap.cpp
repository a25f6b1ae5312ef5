#include "client/symbols/vertexmap.h"

#include "client/commands/commandbuffer.h"
#include "client/engine/instance.h"
#include "client/keywords/enums.h"
#include "client/keywords/numbers.h"

namespace Zant {

namespace {

/// The engine's information integer that says, in bit 0, whether vertex maps hold doubles.
constexpr int vertexMapInformation = 1;

}  // namespace

void VertexMapSymbol::registerSymbol(int dimension, Unsigned64 size, int samples) {
    info = {};
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_vertexMap);
    buffer->addSymbol(*this);
    buffer->addDouble(dimension);
    if (size != 0) {
        buffer->addKeyword(Enums::vertexMapTypes_strings, Enums::vertexMapTypes_fixedSize);
        buffer->addDouble(static_cast<double>(size));
        buffer->addDouble(samples);
    }
    buffer->parse();
    Symbol::registerSymbol(HandleVertexMap, nullptr);
    refreshDirectLink();
}

void VertexMapSymbol::refreshDirectLink() {
    // The engine's handle of a vertex map is the address of its record.
    info.record = reinterpret_cast<ZantVertexMapRecord*>(handle);
    if (!info.record) return;
    info.isDouble = (buffer->instance->library->getInfoInt(vertexMapInformation) & 1) != 0;
}

void VertexMapSymbol::data(Unsigned64 row, const Vector& vector) {
    buffer->addKeyword(Enums::cmd_strings, vector.count == 2 ? Enums::cmd_vertex2d : Enums::cmd_vertex3d);
    buffer->addSymbol(*this);
    buffer->addDouble(static_cast<double>(row));
    buffer->addVector(vector);
    buffer->parse();
}

void VertexMapSymbol::data(Unsigned64 row, const VarLenDouble& list) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_vertexData);
    buffer->addSymbol(*this);
    buffer->addDouble(static_cast<double>(row));
    buffer->addVarLenDouble(list);
    buffer->parse();
}

}  // namespace Zant
