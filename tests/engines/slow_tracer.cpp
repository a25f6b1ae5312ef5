// An engine whose pictures take as long to begin as ZANT_TEST_BUILD says, in milliseconds: everything else is what
// engines of ours share.

#include <chrono>
#include <cstdlib>
#include <thread>

#include "engines/scene/tables.h"

namespace Zant::Engine {
namespace {

class SlowTracer : public Tracer {
public:
    bool build(std::shared_ptr<const Model>, int, const std::function<bool()>& goOn) override {
        const char* const time = std::getenv("ZANT_TEST_BUILD");
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(time ? std::atol(time) : 0);
        while (std::chrono::steady_clock::now() < end) {
            if (!goOn()) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    Hit trace(const Ray&) const override { return {}; }
    bool isBlocked(const Ray&) const override { return false; }
};

const Profile profile = {
    "Zant preview engine",
    "3.0.0",
    "Takes its time.",
    "slow engine: ",
    "ZANT_SLOW_",
    "nobody",
    []() -> std::unique_ptr<Tracer> { return std::make_unique<SlowTracer>(); },
};

}  // namespace
}  // namespace Zant::Engine

extern "C" ZANT_EXPORTED void zant3_init(Zant::Library* library) {
    Zant::Engine::enter(library, Zant::Engine::profile);
}
