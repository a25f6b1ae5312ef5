#ifndef ZANT_ENGINES_PREVIEW_PNGFILE_H
#define ZANT_ENGINES_PREVIEW_PNGFILE_H

#include <string>

#include "engines/scene/picture.h"

namespace Zant::Preview {

/// Writes a picture as PNG: 8 bits of sRGB and straight alpha. Values below 0 and NaN become 0, those above 1 become 1.
/// The file is there as a whole or as it was before; the same picture gives the same bytes. What is no regular file,
/// such as a pipe, is written to. Threads: any, also for the same file.
/// @return what went wrong; empty for nothing
std::string writePng(const Engine::Picture& picture, const std::string& file);

}  // namespace Zant::Preview

#endif
