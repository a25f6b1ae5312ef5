#ifndef ZANT_ENGINES_SCENE_PAINTER_H
#define ZANT_ENGINES_SCENE_PAINTER_H

#include <functional>
#include <memory>

#include "engines/scene/profile.h"

namespace Zant::Engine {

/// Makes the pixels of one picture: by tracing rays, or, in an engine that traces none, from a picture that was given;
/// without one they show the background.
class Painter {
public:
    Painter(const Profile& profile, std::shared_ptr<const Model> model, std::shared_ptr<const Picture> given);

    int width() const { return model_->width; }
    int height() const { return model_->height; }

    /// As Tracer::build().
    bool prepare(int threads, const std::function<bool()>& goOn);
    /// Makes the pixels of a tile. Several threads may do so at the same time.
    void paint(const Tile& tile, Picture& picture) const;

private:
    Picture::Pixel pixel(int x, int y) const;

    std::shared_ptr<const Model> model_;
    std::shared_ptr<const Picture> given_;
    std::unique_ptr<Tracer> tracer_;
};

}  // namespace Zant::Engine

#endif
