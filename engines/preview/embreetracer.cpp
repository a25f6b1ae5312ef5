#include "engines/preview/embreetracer.h"

#include <utility>

#include "engines/preview/raysearch.h"
#include "engines/scene/plainfloats.h"

namespace Zant::Preview {
namespace {

class EmbreeTracer : public Engine::Tracer {
public:
    bool build(std::shared_ptr<const Engine::Model> model, int threads, const std::function<bool()>& goOn) override {
        const Engine::PlainFloats plain;
        tree_.reset();
        model_ = std::move(model);
        auto tree = std::make_unique<EmbreeTree>();
        if (!tree->build(*model_, threads, goOn)) return false;
        tree_ = std::move(tree);
        return true;
    }

    Engine::Hit trace(const Engine::Ray& ray) const override {
        return tree_ ? RaySearch::nearest(*tree_, ray) : Engine::Hit();
    }

    bool isBlocked(const Engine::Ray& ray) const override { return tree_ && RaySearch::isBlocked(*tree_, ray); }

private:
    std::shared_ptr<const Engine::Model> model_;
    std::unique_ptr<EmbreeTree> tree_;
};

}  // namespace

std::unique_ptr<Engine::Tracer> createEmbreeTracer() {
    return std::make_unique<EmbreeTracer>();
}

}  // namespace Zant::Preview
