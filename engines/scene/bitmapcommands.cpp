// Commands that declare bitmaps and change their pixels.

#include <algorithm>

#include "engines/scene/drawing.h"
#include "engines/scene/execution.h"
#include "language/numbers.h"

namespace Zant::Engine {
namespace {

Outcome refusedSize(const Vector& size) {
    return {BadValue,
            "a bitmap cannot have the size " + numberText(size.values[0]) + " x " + numberText(size.values[1]), 2};
}

bool resize(Pixels& pixels, const Vector& size) {
    return size.count >= 2 && pixels.resize(Pixels::sideOf(size.values[0]), Pixels::sideOf(size.values[1]));
}

Outcome declareCopy(Execution& execution, _ZantPixelFormat format, const Pixels& source) {
    Pixels pixels(format);
    if (!pixels.copy(source)) return {OutOfMemory, "there is no memory for a copy of the bitmap"};
    execution.declare<Pixels>(std::move(pixels));
    return {};
}

// Forms that take pixels from elsewhere, from a file or a view, leave a bitmap without pixels.
Outcome declareBitmap(Execution& execution) {
    if (execution.isKeyword(1, "copy") || execution.isKeyword(1, "compress")) {
        const ObjectPointer source = execution.object(2);
        return declareCopy(execution, source->as<Pixels>()->format(), *source->as<Pixels>());
    }
    const char* word = execution.has(1) ? execution.command.keywordText(1) : "charRgba";
    const _ZantPixelFormat format = formatOfWord(word);
    Pixels pixels(format ? format : PixelCharRgba);
    if (format && execution.has(2) && !resize(pixels, execution.vector(2))) return refusedSize(execution.vector(2));
    execution.declare<Pixels>(std::move(pixels));
    return {};
}

Outcome copyBitmap(Execution& execution) {
    const ObjectPointer source = execution.object(2);
    if (execution.pixels(0).copy(*source->as<Pixels>())) return {};
    return {OutOfMemory, "there is no memory for a copy of the bitmap"};
}

const char* const notAColour = "a colour needs three or four components";

bool isColour(const Vector& colour) {
    return colour.count == 3 || colour.count == 4;
}

// Checks that the vectors from one place on are positions, the last one a colour.
Outcome checkDrawing(const Execution& execution, size_t colourPlace) {
    for (size_t place = 2; place < colourPlace; ++place) {
        if (execution.command.values()[place].kind != ValueKind::Vector) continue;
        if (execution.vector(place).count < 2) return {BadValue, "a position needs two components", place};
    }
    if (execution.has(colourPlace) && !isColour(execution.vector(colourPlace))) {
        return {BadValue, notAColour, colourPlace};
    }
    return {};
}

using Draw = void (*)(const Execution&, const Bitmap&);

struct DrawingRow {
    const char* word;
    size_t colourPlace;
    Draw draw;
};
const DrawingRow drawings[] = {
    {"plot", 3, [](const Execution& e, const Bitmap& b) { drawPoint(b, e.vector(2), e.vector(3)); }},
    {"line", 4, [](const Execution& e, const Bitmap& b) { drawLine(b, e.vector(2), e.vector(3), e.vector(4)); }},
    {"circle", 4, [](const Execution& e, const Bitmap& b) { drawCircle(b, e.vector(2), e.number(3), e.vector(4)); }},
    {"fill", 3, [](const Execution& e, const Bitmap& b) { drawFill(b, e.vector(2), e.vector(3), e.number(4, 0.0)); }},
    {"clear", 2,
     [](const Execution& e, const Bitmap& b) { drawClear(b, e.has(2) ? e.vector(2) : Vector(0, 0, 0, 0)); }},
};

Outcome draw(const DrawingRow& row, Execution& execution) {
    Outcome outcome = checkDrawing(execution, row.colourPlace);
    if (outcome.code != Fine) return outcome;
    const Pixels& pixels = execution.pixels(0);
    if (pixels.hasAccess()) row.draw(execution, pixels.bitmap());
    return {};
}

// Operations that need files or views are taken and do nothing.
Outcome operateOnBitmap(Execution& execution) {
    for (const DrawingRow& row : drawings) {
        if (execution.isKeyword(1, row.word)) return draw(row, execution);
    }
    if (execution.isKeyword(1, "copy")) return copyBitmap(execution);
    if (execution.isKeyword(1, "resize")) {
        return resize(execution.pixels(0), execution.vector(2)) ? Outcome{} : refusedSize(execution.vector(2));
    }
    if (execution.isKeyword(1, "show")) return showBitmap(execution);
    execution.hasEffect = false;
    return {};
}

bool isInside(const Bitmap& bitmap, const Vector& position) {
    const double x = position.values[0];
    const double y = position.values[1];
    return position.count >= 2 && x >= 0 && y >= 0 && x < bitmap.width && y < bitmap.height;
}

// Colours from a position on, row after row.
Outcome setPixels(Execution& execution) {
    const Pixels& pixels = execution.pixels(0);
    const Bitmap& bitmap = pixels.bitmap();
    const Vector& start = execution.vector(1);
    const VarLenVector colours = execution.vectors(2);
    if (colours.count == 0) return {};
    if (!pixels.hasAccess() || !isInside(bitmap, start)) return {BadValue, "the position is not in the bitmap", 1};
    const auto width = static_cast<size_t>(bitmap.width);
    size_t place = static_cast<size_t>(start.values[1]) * width + static_cast<size_t>(start.values[0]);
    if (colours.count > width * static_cast<size_t>(bitmap.height) - place) {
        return {BadValue, "there are more colours than pixels", 2};
    }
    const Vector* const end = colours.items + colours.count;
    if (!std::all_of(colours.items, end, isColour)) return {BadValue, notAColour, 2};
    for (const Vector* colour = colours.items; colour != end; ++colour, ++place) {
        bitmap.setPixel(static_cast<int>(place % width), static_cast<int>(place / width), *colour);
    }
    return {};
}

}  // namespace

const HandlerRow bitmapHandlers[] = {
    {"bitmap", declareBitmap},
    {"bitmapOp", operateOnBitmap},
    {"bitmapData", setPixels},
    {nullptr, nullptr},
};

}  // namespace Zant::Engine
