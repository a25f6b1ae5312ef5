#ifndef ZANT_ENGINES_SCENE_PIXMAP_H
#define ZANT_ENGINES_SCENE_PIXMAP_H

#include <memory>
#include <string>

#include "engines/scene/picture.h"

namespace Zant::Engine {

/// Reads a binary PPM file: "P6", 8 bits for each colour, sRGB.
/// @param file its name; an empty one names no picture
/// @param complaints receives a line, after the prefix, when the file cannot be read or is none
/// @return null then
std::shared_ptr<const Picture> readPixmap(const std::string& file, const char* errorPrefix, std::string& complaints);

}  // namespace Zant::Engine

#endif
