#include "engines/scene/drawing.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Zant::Engine {
namespace {

struct Pixel {
    int x;
    int y;
};

// Hosts may trap floating-point errors: nothing here may overflow or leave the real numbers. Squares and differences
// of numbers up to this one do not.
constexpr double farthest = 1e150;

bool isInReach(double number) {
    return std::isfinite(number) && std::fabs(number) <= farthest;
}

bool isInReach(const Vector& position) {
    return isInReach(position.values[0]) && isInReach(position.values[1]);
}

void plot(const Bitmap& bitmap, double x, double y, const Vector& colour) {
    const double column = std::floor(x + 0.5);
    const double row = std::floor(y + 0.5);
    if (!(column >= 0 && row >= 0 && column < bitmap.width && row < bitmap.height)) return;
    bitmap.setPixel(static_cast<int>(column), static_cast<int>(row), colour);
}

// Narrows the part of a line, from 0 to 1, to where start + part * length lies between -1 and the limit.
void clip(double start, double length, double limit, double& first, double& last) {
    if (std::fabs(length) <= 1 / farthest) {
        if (start < -1 || start > limit) last = -1;
        return;
    }
    const double low = (-1 - start) / length;
    const double high = (limit - start) / length;
    first = std::max(first, std::min(low, high));
    last = std::min(last, std::max(low, high));
}

// The area of a fill: pixels near enough to the first one, each taken once.
class Area {
public:
    Area(const Bitmap& bitmap, Pixel start, double tolerance)
        : bitmap_(bitmap),
          tolerance_(tolerance),
          taken_(static_cast<size_t>(bitmap.width) * static_cast<size_t>(bitmap.height)) {
        bitmap.getPixel(start.x, start.y, wanted_);
        offer(start.x, start.y);
    }

    bool take(Pixel& pixel) {
        if (waiting_.empty()) return false;
        pixel = waiting_.back();
        waiting_.pop_back();
        return true;
    }

    void offer(int x, int y) {
        if (x < 0 || y < 0 || x >= bitmap_.width || y >= bitmap_.height) return;
        const size_t place = static_cast<size_t>(y) * static_cast<size_t>(bitmap_.width) + static_cast<size_t>(x);
        if (taken_[place] || !isNear(x, y)) return;
        taken_[place] = true;
        waiting_.push_back({x, y});
    }

private:
    bool isNear(int x, int y) const {
        Vector colour;
        bitmap_.getPixel(x, y, colour);
        for (int component = 0; component < colour.count; ++component) {
            if (!(std::fabs(colour.values[component] - wanted_.values[component]) <= tolerance_)) return false;
        }
        return true;
    }

    const Bitmap& bitmap_;
    double tolerance_;
    Vector wanted_;
    std::vector<bool> taken_;
    std::vector<Pixel> waiting_;
};

}  // namespace

void drawPoint(const Bitmap& bitmap, const Vector& position, const Vector& colour) {
    if (isInReach(position)) plot(bitmap, position.values[0], position.values[1], colour);
}

void drawLine(const Bitmap& bitmap, const Vector& from, const Vector& to, const Vector& colour) {
    if (!isInReach(from) || !isInReach(to)) return;
    const double length[2] = {to.values[0] - from.values[0], to.values[1] - from.values[1]};
    double first = 0;
    double last = 1;
    clip(from.values[0], length[0], bitmap.width, first, last);
    clip(from.values[1], length[1], bitmap.height, first, last);
    if (!(first <= last)) return;
    // What is left after clipping is not much longer than the bitmap.
    const double pixels = std::ceil(std::max(std::fabs(length[0]), std::fabs(length[1])) * (last - first));
    if (!(pixels <= bitmap.width + bitmap.height + 4.0)) return;
    for (int step = 0; step <= static_cast<int>(pixels); ++step) {
        const double part = pixels > 0 ? first + (last - first) * (step / pixels) : first;
        plot(bitmap, from.values[0] + part * length[0], from.values[1] + part * length[1], colour);
    }
}

void drawCircle(const Bitmap& bitmap, const Vector& centre, double radius, const Vector& colour) {
    if (!isInReach(centre) || !isInReach(radius) || radius < 0) return;
    const double x = std::floor(centre.values[0] + 0.5);
    const double y = std::floor(centre.values[1] + 0.5);
    // By columns and by rows: together they leave no gap, and a huge circle takes no longer than a small one.
    for (int column = 0; column < bitmap.width; ++column) {
        if (std::fabs(column - x) > radius) continue;
        const double height = std::sqrt(radius * radius - (column - x) * (column - x));
        plot(bitmap, column, y + height, colour);
        plot(bitmap, column, y - height, colour);
    }
    for (int row = 0; row < bitmap.height; ++row) {
        if (std::fabs(row - y) > radius) continue;
        const double width = std::sqrt(radius * radius - (row - y) * (row - y));
        plot(bitmap, x + width, row, colour);
        plot(bitmap, x - width, row, colour);
    }
}

void drawClear(const Bitmap& bitmap, const Vector& colour) {
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x)
            bitmap.setPixel(x, y, colour);
    }
}

void drawFill(const Bitmap& bitmap, const Vector& position, const Vector& colour, double tolerance) {
    if (!isInReach(position)) return;
    const double x = std::floor(position.values[0] + 0.5);
    const double y = std::floor(position.values[1] + 0.5);
    if (!(x >= 0 && y >= 0 && x < bitmap.width && y < bitmap.height)) return;
    Area area(bitmap, {static_cast<int>(x), static_cast<int>(y)}, tolerance);
    for (Pixel pixel{}; area.take(pixel);) {
        area.offer(pixel.x - 1, pixel.y);
        area.offer(pixel.x + 1, pixel.y);
        area.offer(pixel.x, pixel.y - 1);
        area.offer(pixel.x, pixel.y + 1);
        bitmap.setPixel(pixel.x, pixel.y, colour);
    }
}

}  // namespace Zant::Engine
