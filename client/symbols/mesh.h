#ifndef ZANT_CLIENT_SYMBOLS_MESH_H
#define ZANT_CLIENT_SYMBOLS_MESH_H

#include "client/symbols/symbol.h"
#include "client/values/varlen.h"

namespace Zant {

class VertexMapSymbol;

/// A mesh of the engine. Its points come from a vertex map, its polygons from commands.
///
/// Threads: as its command buffer, one at a time.
class MeshSymbol : public Symbol {
public:
    using Symbol::Symbol;

    /// Sends the command that creates the mesh, and registers it.
    void registerSymbol();

    /// Adds one polygon. The three integers are the engine's; they are sent in this order around the list.
    void addPoly(int value1, const VarLenDouble& list, int value2, int value3);

    /// Lets the mesh take its points from a vertex map.
    void points(const VertexMapSymbol& map);
};

}  // namespace Zant

#endif
