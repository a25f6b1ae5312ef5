#ifndef ZANT_MODERN_COMMANDGROUP_H
#define ZANT_MODERN_COMMANDGROUP_H

#include "modern/send.h"

namespace Zant {
class BitmapSymbol;
class MeshSymbol;
class VertexMapSymbol;
}  // namespace Zant

namespace zant {

class bitmap;
class mesh;
class vertex_map;

/// A scene with the commands of some groups: scene_of<looks_commands, lights_commands>.
template <template <class> class... Groups>
class scene_of : public basic_scene, public Groups<scene_of<Groups...>>... {
public:
    using basic_scene::basic_scene;
};

/// What the groups of commands have in common.
template <class Scene, class Group>
class command_group {
protected:
    template <class Function, class... Arguments>
    bool send(const char* command, Function* function, const Arguments&... arguments) {
        auto* const scene = static_cast<Scene*>(static_cast<Group*>(this));
        return detail::send(scene->state_, command, function, arguments...);
    }
};

}  // namespace zant

#endif
