#include "client/engine/tables.h"

namespace Zant {

void Vtables::exit() {
    // The engine may look at the record while it exits: it must find nothing of itself but the table that it exits by.
    parser = nullptr;
    raytrace = nullptr;
    bitmap = nullptr;
    mt = nullptr;
    if (library) {
        library->exit();
        library = nullptr;
    }
}

}  // namespace Zant
