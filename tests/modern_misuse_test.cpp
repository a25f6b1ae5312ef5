// Everything that zant.hpp makes, ended in every order and in every way, before engines of every kind. The orders are
// generated. What is left over is used after each end: it answers, and does not crash.

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
#include <random>

#include "modernstudio.h"
#include "testkit/commandlog.h"

namespace zant::tests {
namespace {

using Zant::Testkit::ContractWatch;

/// The ways in which a thing that can be moved ends.
enum Way { Destroyed, Reset, MovedFrom, AssignedTo, Ways };

void resetThing(session& thing) {
    thing.end();
}
void resetThing(scene& thing) {
    thing.end();
}
void resetThing(symbol& thing) {
    thing.reset();
}

template <class Thing>
void end(std::optional<Thing>& thing, Way way) {
    if (!thing) return;
    if (way == Destroyed) thing.reset();
    if (way == Reset) resetThing(*thing), resetThing(*thing);
    if (way == MovedFrom) Thing(std::move(*thing));
    if (way == AssignedTo) {
        Thing taken(std::move(*thing)), other(std::move(taken));
        *thing = std::move(taken);  // from what has been moved from
        taken = std::move(other);   // and the last one goes here
        auto& same = taken;
        taken = std::move(same);
    }
}

/// Ends the one of the things that is asked for.
template <class... Things>
void endOf(std::size_t which, Way way, std::optional<Things>&... things) {
    std::size_t place = 0;
    ((place++ == which ? end(things, way) : void()), ...);
}

/// One of each, some of them twice.
class Cast {
public:
    static constexpr std::size_t size = 12;

    Cast(const std::string& folder, encoding commands)
        : engine(folder),
          secondEngine(folder),
          stage(std::in_place, *engine, commands),
          secondStage(std::in_place, *secondEngine, commands) {
        stage->on_text([owned = symbol(*stage, "captured"), this](std::string_view) {
            if (stage) stage->fg2_gradients(0.5, 2);
            static_cast<void>(owned.is_declared());
        });
        stage->on_failure([owned = symbol(*stage, "held")](const failure&) { static_cast<void>(owned.name()); });
        group.emplace(*stage, on_failure::go_on);
        red.emplace(*stage, "red"), second.emplace(*secondStage, "second");
        number.emplace(*stage, "number"), shape.emplace(*stage, "shape"), map.emplace(*stage, "map");
        stage->surface1_color(*red), secondStage->surface1_color(*second);
        stage->view1_size({8, 8});
        number->declare(), map->declare(3, 2);
        shape->points(rows(points, 3));
        picture.emplace(*stage, "picture", 2, 2, PixelFloatRgb);
        late.emplace(*stage, "late");
        stage->surface1_color(*late);
    }

    void endOne(std::size_t which, Way way) {
        endOf(which, way, engine, secondEngine, stage, secondStage, red, second, number, shape, picture, map, late);
        if (which == size - 1) group.reset();
    }

    /// Uses what there is.
    void useAll() {
        if (stage) {
            const bool isTaken = stage->view0_render();
            EXPECT_TRUE(*stage || !isTaken);
            stage->run("echo \"x\";");
            stage->clear();
            if (red && number) stage->lightAdd1_group({*red, *number});
            if (second) stage->view1_camFilter(*second);
            if (shape && map) stage->meshOp2_points(*shape, *map);
        }
        if (secondStage && second) secondStage->surface1_color(*second);
        float back[12] = {};
        if (number) expectAlive(*number, number->set(1) || number->get());
        if (shape) expectAlive(*shape, shape->polygons_of(3, corners));
        if (map) expectAlive(*map, map->write(rows(points, 3)));
        if (picture) expectAlive(*picture, picture->read(pixels(back, 2, 2, PixelFloatRgb)));
        if (red) expectAlive(*red, red->link());
        if (engine && *engine) static_cast<void>(scene(*engine).view0_freeRenderedImage());
    }

private:
    /// Only what lives can have been used.
    static void expectAlive(const symbol& thing, bool wasUsed) { EXPECT_TRUE(thing || !wasUsed); }

    static constexpr float points[6] = {0, 1, 2, 3, 4, 5};
    static constexpr int corners[3] = {0, 1, 0};

    std::optional<session> engine, secondEngine;
    std::optional<scene> stage, secondStage;
    std::optional<scope> group;
    std::optional<symbol> red, second, late;
    std::optional<value<double>> number;
    std::optional<mesh> shape;
    std::optional<bitmap> picture;
    std::optional<vertex_map> map;
};

std::mt19937 random(1);

/// Ends one thing first, another one next, and the rest in any order.
void play(const std::string& folder, encoding commands, std::size_t first, std::size_t next, Way firstWay,
          Way nextWay) {
    Cast cast(folder, commands);
    std::vector<std::size_t> rest(Cast::size);
    std::iota(rest.begin(), rest.end(), 0);
    std::shuffle(rest.begin(), rest.end(), random);
    cast.useAll();
    cast.endOne(first, firstWay), cast.useAll();
    cast.endOne(next, nextWay), cast.useAll();
    for (const std::size_t one : rest)
        cast.endOne(one, static_cast<Way>(random() % Ways)), cast.useAll();
}

void playAll(const std::string& folder, encoding commands, int ways) {
    for (std::size_t first = 0; first < Cast::size; ++first) {
        for (std::size_t next = 0; next < Cast::size; ++next) {
            for (int pair = 0; pair < ways * ways; ++pair)
                play(folder, commands, first, next, static_cast<Way>(pair % ways), static_cast<Way>(pair / ways));
        }
    }
}

TEST(ModernOrders, OfEveryPairAndWayAreFine) {
    const ContractWatch watch;
    testing::internal::CaptureStdout();
    playAll(ZANT_LOOPBACK_DIR, encoding::binary(), Ways);
    testing::internal::GetCapturedStdout();
    const auto result = watch.check();
    EXPECT_TRUE(result) << result.message().substr(0, 2000);
}

TEST(ModernOrders, AreFineBeforeEnginesOfEveryKind) {
    const char* const faults[] = {"",
                                  "init-refused",
                                  "version-0",
                                  "null-instance",
                                  "foreign-event",
                                  "events-at-creation,events-at-destruction",
                                  "lookup-nothing",
                                  "wrong-type",
                                  "bitmap-without-memory",
                                  "fail-command=1",
                                  "fail-command=3",
                                  "fail-command=5"};
    for (const char* fault : faults) {
        const Zant::Testkit::LoopbackFault chosen(fault);
        testing::internal::CaptureStdout();
        playAll(ZANT_LOOPBACK_DIR, encoding::quick_text(), 1);
        testing::internal::GetCapturedStdout();
    }
    playAll("no such folder", encoding::text(), 1);
}

TEST(ModernOrders, OfWhatHasFailedAreFine) {
    for (int ends = 0; ends < 24; ++ends) {
        // The four in the order of their number.
        int order[] = {0, 1, 2, 3};
        for (int k = 0; k < ends; ++k)
            std::next_permutation(order, order + 4);
        std::optional<session> engine(ZANT_LOOPBACK_DIR);
        std::optional<scene> stage(*engine);
        std::optional<symbol> waiting(std::in_place, *stage, "waiting"), kept(std::in_place, *stage, "kept");
        stage->surface1_color(*waiting), stage->surface1_color(*kept);
        refused(*stage);
        ASSERT_TRUE(stage->failed());
        for (const int one : order) {
            if (one == 0) engine.reset();
            if (one == 1) stage.reset();
            if (one == 2) waiting.reset();
            if (one == 3) kept->reset();
        }
    }
}

TEST(ModernOrders, ThatAHandlerMakesAreFine) {
    for (int what = 0; what < 4; ++what) {
        std::optional<session> engine(ZANT_LOOPBACK_DIR);
        std::optional<scene> stage(*engine);
        std::optional<symbol> red(std::in_place, *stage, "red");
        vertex_map none(*stage, "none");
        stage->on_failure([&](const failure&) {
            if (what == 0) engine.reset();
            if (what == 1) stage.reset();
            if (what == 2) stage.reset(), engine.reset();
            if (what == 3) red.reset(), engine.reset(), stage.reset();
        });
        EXPECT_FALSE(stage->vertexMapOp1_flush(none));
        EXPECT_FALSE(none);
    }
}

TEST(ModernMisuse, OfAnEngineThatIsNotThereIsSaid) {
    session engine("no such folder");
    EXPECT_FALSE(engine);
    EXPECT_NE(engine.reason(), "");
    scene stage(engine);
    EXPECT_FALSE(stage);
    EXPECT_TRUE(stage.failed());
    ASSERT_NE(stage.first_failure(), nullptr);
    EXPECT_EQ(stage.first_failure()->text, engine.reason());
    stage.clear();
    EXPECT_FALSE(stage.view0_render());
    EXPECT_EQ(said(stage), "view0_render failed: the scene has ended");
    engine.end();
    EXPECT_EQ(engine.reason(), "the session has ended");
    EXPECT_FALSE(scene(engine));
}

TEST(ModernMisuse, OfWhatIsLeftOverIsSaid) {
    Studio studio;
    symbol red(studio.stage, "red");
    value<double> number(studio.stage, "number");
    ASSERT_TRUE(studio.stage.surface1_color(red) && number.declare());
    studio.engine.end();
    EXPECT_FALSE(studio.stage || red || number || studio.engine);
    EXPECT_FALSE(studio.stage.view1_camFilter(red));
    EXPECT_EQ(said(studio.stage), "view1_camFilter failed: the scene has ended");
    EXPECT_FALSE(number.set(1) || number.get());
    EXPECT_EQ(red.name(), "red");
}

}  // namespace
}  // namespace zant::tests
