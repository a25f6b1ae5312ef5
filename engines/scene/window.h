#ifndef ZANT_ENGINES_SCENE_WINDOW_H
#define ZANT_ENGINES_SCENE_WINDOW_H

#include <string>

#include "engines/scene/events.h"
#include "engines/scene/picture.h"

namespace Zant::Engine {

/// A window on the host's side. Every operation raises events; without a window it raises none. Used by one thread at a
/// time.
class Window {
public:
    explicit Window(Events& events) : events_(events) {}

    bool isOpen() const { return handle_ != nullptr; }
    /// Opens one, unless there is one.
    /// @return whether there is one now; a host may have none to give
    bool open();
    /// Closes it.
    void close();

    /// A host that refuses the size has no window any more.
    /// @return whether there still is one
    bool resize(int width, int height);
    /// Sets the title, when it is another one.
    void setTitle(const std::string& title);
    /// Shows a part of the picture.
    void show(const Picture& picture, const Tile& tile);
    /// All of the picture has been shown.
    void present(const Picture& picture);

    /// The flags are those of engines/records/eventrecords.h.
    void setFlags(int flags);
    int flags();
    /// Asks for the mouse: its resolution, or where it is.
    void askMouseResolution();
    void askMouse();
    /// @return the code of the key that is reported, 0 for none
    int key();

private:
    int64_t ask(int32_t selector);
    template <class Detail>
    void raise(_ZantEventKind kind, Detail& detail);

    Events& events_;
    void* handle_ = nullptr;
    std::string title_;
};

}  // namespace Zant::Engine

#endif
