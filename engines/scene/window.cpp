#include "engines/scene/window.h"

#include <cstring>

#include "engines/records/eventrecords.h"

namespace Zant::Engine {
namespace {

// The selector is the first four bytes of the field.
void select(ZantEventData& event, int32_t selector) {
    std::memcpy(&event.text, &selector, sizeof selector);
}

}  // namespace

bool Window::open() {
    if (isOpen()) return true;
    ZantEventData event{};
    event.kind = EventCreateWindow;
    events_.raise(event);
    handle_ = event.handle;
    title_.clear();
    return isOpen();
}

void Window::close() {
    if (isOpen()) events_.raise(EventDestroyWindow, handle_);
    handle_ = nullptr;
}

bool Window::resize(int width, int height) {
    if (!isOpen()) return false;
    WindowSize size{width, height};
    ZantEventData event{};
    event.kind = EventSetWindowSize;
    event.handle = handle_;
    event.value = reinterpret_cast<int64_t>(&size);
    events_.raise(event);
    handle_ = event.handle;
    return isOpen();
}

void Window::setTitle(const std::string& title) {
    if (!isOpen() || title == title_) return;
    title_ = title;
    events_.raise(EventSetWindowTitle, handle_, title_.c_str());
}

void Window::show(const Picture& picture, const Tile& tile) {
    const size_t first = picture.place(tile.left, tile.top);
    const auto width = static_cast<size_t>(picture.width);
    PixelTable table{picture.width,
                     picture.height,
                     tile.left,
                     tile.top,
                     tile.width(),
                     tile.height(),
                     &picture.pixels[first].red,
                     width * sizeof(Picture::Pixel),
                     &picture.depths[first],
                     &picture.objects[first],
                     width * sizeof(float)};
    static_assert(sizeof(Picture::Pixel) == 4 * sizeof(float) && sizeof(uint32_t) == sizeof(float));
    raise(EventSetPixels, table);
}

void Window::present(const Picture& picture) {
    const PixelArea whole{0, 0, picture.width, picture.height};
    PixelRectangle rectangle{whole, whole};
    raise(EventCopyPixels, rectangle);
}

void Window::setFlags(int flags) {
    if (!isOpen()) return;
    ZantEventData event{};
    event.kind = EventSetWindowFlags;
    event.handle = handle_;
    event.value = flags;
    events_.raise(event);
}

int Window::flags() {
    return static_cast<int>(ask(0));
}

void Window::askMouseResolution() {
    ask(1);
}

void Window::askMouse() {
    _ZantEventMousePosition position{};
    raise(EventGetMousePosition, position);
    raise(EventGetMouseRawPosition, position);
}

int Window::key() {
    _ZantEventKey key{};
    raise(EventGetKey, key);
    return keyCode(key);
}

int64_t Window::ask(int32_t selector) {
    if (!isOpen()) return 0;
    ZantEventData event{};
    event.kind = EventGetWindowFlags;
    event.handle = handle_;
    select(event, selector);
    events_.raise(event);
    return event.value;
}

template <class Detail>
void Window::raise(_ZantEventKind kind, Detail& detail) {
    if (!isOpen()) return;
    ZantEventData event{};
    event.kind = kind;
    event.handle = handle_;
    event.value = reinterpret_cast<int64_t>(&detail);
    events_.raise(event);
}

}  // namespace Zant::Engine
