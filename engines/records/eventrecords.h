#ifndef ZANT_ENGINES_RECORDS_EVENTRECORDS_H
#define ZANT_ENGINES_RECORDS_EVENTRECORDS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "client/engine/instance.h"
#include "client/engine/library.h"

/// What the engines that come with this library hand to a listener of windows: the loopback and the preview engine.
///
/// Another engine lays these records out in its own way, so a listener looks at them through the functions below, which
/// first ask the engine who it is. The records and what they point at are valid until the event returns.
///
/// Threads: as the event.
namespace Zant::Engine {

/// The size that a window is to have, in pixels.
struct WindowSize {
    int32_t width;
    int32_t height;
};

/// A part of a picture, row after row, the upper row first. Each pixel is red, green, blue and alpha as floats: linear,
/// from 0 to 1 but for lights that are brighter, the colours not multiplied by alpha.
struct PixelTable {
    int32_t pictureWidth;  ///< of the whole picture
    int32_t pictureHeight;
    int32_t left;  ///< where the first pixel stands in it
    int32_t top;
    int32_t width;  ///< of this part
    int32_t height;
    const float* rgba;
    size_t stride;            ///< bytes from one row of rgba to the next
    const float* depths;      ///< of each pixel, from the eye to what it shows, infinite for nothing; null without
    const uint32_t* objects;  ///< of each pixel, the number of what it shows, from 1; 0 for nothing; null without
    size_t valueStride;       ///< bytes from one row of depths to the next, and of objects

    /// The four floats of a pixel of this part.
    const float* pixel(int32_t x, int32_t y) const {
        return reinterpret_cast<const float*>(reinterpret_cast<const char*>(rgba) + static_cast<size_t>(y) * stride) +
               static_cast<size_t>(x) * 4;
    }
};

/// Pixels of the picture, from the left upper one to before the right lower one.
struct PixelArea {
    int32_t left, top, right, bottom;
};

/// Pixels that the window has been given before are to be copied within it. At the end of a picture both areas are the
/// whole of it: everything has been given, and can be presented.
struct PixelRectangle {
    PixelArea source;
    PixelArea target;
};

/// What a listener answers to getWindowFlags().
enum WindowAnswer : int {
    WindowIsClosed = 1,  ///< the user has closed it: the picture ends early
    WindowIsLost = 2     ///< its pixels are to be given again, all that there are
};

/// What setWindowFlags() hands over. None of these is an answer: a listener may keep the flags that it is given, and
/// give them back when it is asked.
enum WindowState : int {
    PictureIsMade = 4  ///< a picture is in the making
};

/// What keyCode() answers for keys that the engines know.
enum KeyCode : int32_t {
    KeyEscape = 27  ///< the picture ends early
};

/// Whether an engine is one of those that lay their records out as above.
inline bool hasRecordsOfOurs(const Instance* instance) {
    const char* name = instance && instance->libraryTable ? instance->libraryTable->getInfoString(0) : nullptr;
    return name && (std::strcmp(name, "Zant loopback engine") == 0 || std::strcmp(name, "Zant preview engine") == 0);
}

/// The record of an event as it is laid out above; null when another engine has sent it.
/// @param instance the one that the listener is active on
inline const WindowSize* windowSize(const Instance* instance, const _ZantEventWindow& record) {
    return hasRecordsOfOurs(instance) ? reinterpret_cast<const WindowSize*>(&record) : nullptr;
}
inline const PixelTable* pixelTable(const Instance* instance, const _ZantEventPixelTable& record) {
    return hasRecordsOfOurs(instance) ? reinterpret_cast<const PixelTable*>(&record) : nullptr;
}
inline const PixelRectangle* pixelRectangle(const Instance* instance, const _ZantEventPixelRectangle& record) {
    return hasRecordsOfOurs(instance) ? reinterpret_cast<const PixelRectangle*>(&record) : nullptr;
}

/// A key's code, that the first four bytes of `key` hold in the machine's order; 0 while no key is reported. Printable
/// keys have the code of their character.
inline int32_t keyCode(const _ZantEventKey& record) {
    int32_t code = 0;
    if (record.present) std::memcpy(&code, record.key, sizeof code);
    return code;
}
/// Reports a key to the engine.
inline void setKeyCode(_ZantEventKey& record, int32_t code) {
    std::memcpy(record.key, &code, sizeof code);
    record.present = 1;
}

}  // namespace Zant::Engine

#endif
