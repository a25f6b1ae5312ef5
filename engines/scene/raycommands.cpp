// Commands that cast rays: those of hosts, and those of the camera into bitmaps.

#include <cmath>

#include "engines/scene/execution.h"
#include "engines/scene/plainfloats.h"
#include "engines/scene/shading.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

// The scene as it is now, ready to be asked.
struct Cast {
    int threads;
    Omissions ignored;
    std::shared_ptr<const Model> model;
    std::unique_ptr<Tracer> tracer;
    Job job;

    explicit Cast(const Execution& execution)
        : threads(execution.pictures.threads()),
          model(modelOf(execution.world, execution.objects, false, ignored)),
          tracer(execution.profile.createTracer()),
          job(execution.profile.errorPrefix) {
        tracer->build(model, threads, [] { return true; });
    }
};

Outcome answerRays(Execution& execution) {
    Cast cast(execution);
    for (const std::shared_ptr<RayContext>& rays : execution.world.rays.all())
        rays->cast(*cast.tracer, cast.job, cast.threads);
    return {};
}

using Show = Vector (*)(const Ray&, const Hit&);

Vector showDepth(const Ray&, const Hit& hit) {
    return Vector(hit.distance, hit.distance, hit.distance);
}
Vector showPlace(const Ray& ray, const Hit& hit) {
    Vector place(0, 0, 0);
    for (size_t axis = 0; axis < 3; ++axis)
        place.values[axis] = ray.origin[axis] + ray.direction[axis] * hit.distance;
    return place;
}
Vector showNormal(const Ray&, const Hit& hit) {
    return Vector(hit.normal[0], hit.normal[1], hit.normal[2]);
}

/// Fills bitmaps with what the middles of the camera's pixels meet; where they meet nothing, with 0.
class BitmapCast {
public:
    BitmapCast(Execution& execution, size_t sizePlace) : execution_(execution) {
        if (execution.has(sizePlace)) setSize(execution.vector(sizePlace), sizePlace);
    }

    Outcome fill(size_t firstBitmap, size_t count, const Show* shows) {
        if (outcome_.code != Fine) return outcome_;
        Cast cast(execution_);
        Model model = *cast.model;
        if (width_ != 0) model.width = width_, model.height = height_;
        for (size_t number = 0; number < count && execution_.has(firstBitmap + number); ++number) {
            Pixels& pixels = execution_.pixels(firstBitmap + number);
            if (!pixels.resize(model.width, model.height)) return {OutOfMemory, "there is no memory for the pixels"};
            if (pixels.hasAccess()) fill(pixels.bitmap(), model, *cast.tracer, shows[number]);
        }
        return {};
    }

private:
    void setSize(const Vector& size, size_t place) {
        const bool isFine = size.count >= 2 && Picture::isSize(size.values[0], size.values[1]);
        if (!isFine) {
            outcome_ = {BadValue, "a picture cannot have this size", place};
            return;
        }
        width_ = static_cast<int>(size.values[0]);
        height_ = static_cast<int>(size.values[1]);
    }

    static void fill(const Bitmap& bitmap, const Model& model, const Tracer& tracer, Show show) {
        const PlainFloats plain;
        for (int y = 0; y < bitmap.height; ++y) {
            for (int x = 0; x < bitmap.width; ++x) {
                const Ray ray = cameraRay(model, x + 0.5, y + 0.5);
                const Hit hit = tracer.trace(ray);
                bitmap.setPixel(x, y, hit ? show(ray, hit) : Vector(0, 0, 0));
            }
        }
    }

    Execution& execution_;
    Outcome outcome_{};
    int width_ = 0;
    int height_ = 0;
};

Outcome castRays(Execution& execution) {
    static constexpr Show all[] = {showDepth, showPlace, showNormal};
    if (execution.isKeyword(0, "init")) return answerRays(execution);
    if (execution.isKeyword(0, "camera")) return BitmapCast(execution, 1).fill(2, 3, all);
    if (execution.isKeyword(0, "cameraZ")) return BitmapCast(execution, 2).fill(1, 1, all);
    if (execution.isKeyword(0, "cameraHit")) return BitmapCast(execution, 2).fill(1, 1, all + 1);
    execution.hasEffect = execution.isPictured = false;
    return {};
}

}  // namespace

const HandlerRow rayHandlers[] = {{"rayCast", castRays}, {nullptr, nullptr}};

}  // namespace Zant::Engine
