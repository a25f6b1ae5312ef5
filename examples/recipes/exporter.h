// The exporter that exporter.cpp runs and exporter_test.cpp tests.

#ifndef ZANT_RECIPES_EXPORTER_H
#define ZANT_RECIPES_EXPORTER_H

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>
#include <zant/zant.hpp>

/// An object of the host.
struct host_ball {
    std::string name;
    zant::position centre;
    double radius;
};

/// Declares the host's objects in the engine. They are there until clear(), or as long as the exporter.
class exporter {
public:
    enum class result { done, cancelled, failed };
    /// Is told after each object; answers whether to go on.
    using progress = std::function<bool(std::size_t done, std::size_t all)>;

    explicit exporter(zant::scene& scene) : scene_(scene) {}
    ~exporter() { clear(); }
    exporter(const exporter&) = delete;
    exporter& operator=(const exporter&) = delete;

    /// Exports everything or nothing: what has failed or was cancelled is deleted again (after a failure as soon as it
    /// is cleared, because a scene that has failed sends nothing).
    result run(const std::vector<host_ball>& balls, const progress& tell) {
        const result answer = add_all(balls, tell);
        if (answer != result::done) clear();
        return answer;
    }

    /// Deletes what was exported, the newest first.
    void clear() {
        while (!symbols_.empty())
            symbols_.pop_back();
    }

private:
    zant::symbol& named(const std::string& name) { return symbols_.emplace_back(scene_, name); }

    result add_all(const std::vector<host_ball>& balls, const progress& tell) {
        if (!add_paint()) return result::failed;
        for (std::size_t k = 0; k < balls.size(); ++k) {
            if (!add(balls[k])) return result::failed;
            if (!tell(k + 1, balls.size())) return result::cancelled;
        }
        return result::done;
    }

    bool add_paint() { return scene_.color2(named("paint"), {0.8, 0.75, 0.7}); }

    bool add(const host_ball& ball) {
        const auto [x, y, z] = ball.centre;
        return scene_.shape3_sphere(named(ball.name), {x, y, z}, ball.radius);
    }

    zant::scene& scene_;
    std::vector<zant::symbol> symbols_;
};

#endif
