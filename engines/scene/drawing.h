#ifndef ZANT_ENGINES_SCENE_DRAWING_H
#define ZANT_ENGINES_SCENE_DRAWING_H

#include "client/symbols/bitmap.h"

namespace Zant::Engine {

/// Drawing into pixel memory. Positions are in pixels, (0, 0) is the first one; fractions go to the nearest pixel.
/// What lies outside of the bitmap is left out. Positions that are not finite draw nothing. Colours have three or four
/// components; without the fourth, alpha is 1.

void drawPoint(const Bitmap& bitmap, const Vector& position, const Vector& colour);
/// Both ends belong to the line.
void drawLine(const Bitmap& bitmap, const Vector& from, const Vector& to, const Vector& colour);
/// The outline of a circle.
void drawCircle(const Bitmap& bitmap, const Vector& centre, double radius, const Vector& colour);
/// Every pixel.
void drawClear(const Bitmap& bitmap, const Vector& colour);
/// The area around a position whose pixels differ from the one there by at most the tolerance in each component;
/// it spreads to the four neighbours of a pixel.
void drawFill(const Bitmap& bitmap, const Vector& position, const Vector& colour, double tolerance);

}  // namespace Zant::Engine

#endif
