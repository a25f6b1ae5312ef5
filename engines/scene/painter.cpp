#include "engines/scene/painter.h"

#include <utility>

#include "engines/scene/shading.h"

namespace Zant::Engine {
namespace {

// The pixel of one row or column that lies nearest to the middle of one of another.
int nearest(int place, int length, int givenLength) {
    return static_cast<int>((2 * static_cast<int64_t>(place) + 1) * givenLength / (2 * static_cast<int64_t>(length)));
}

}  // namespace

Painter::Painter(const Profile& profile, std::shared_ptr<const Model> model, std::shared_ptr<const Picture> given)
    : model_(std::move(model)), given_(std::move(given)) {
    if (profile.createTracer) tracer_ = profile.createTracer();
}

bool Painter::prepare(int threads, const std::function<bool()>& goOn) {
    return !tracer_ || tracer_->build(model_, threads, goOn);
}

void Painter::paint(const Tile& tile, Picture& picture) const {
    if (tracer_) return shade(*model_, *tracer_, tile, picture);
    for (int y = tile.top; y < tile.bottom; ++y) {
        for (int x = tile.left; x < tile.right; ++x)
            picture.pixels[picture.place(x, y)] = pixel(x, y);
    }
}

Picture::Pixel Painter::pixel(int x, int y) const {
    if (!given_) return {model_->background[0], model_->background[1], model_->background[2], 1};
    const int column = nearest(x, model_->width, given_->width);
    const int row = nearest(y, model_->height, given_->height);
    return given_->pixels[given_->place(column, row)];
}

}  // namespace Zant::Engine
