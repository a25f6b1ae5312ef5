// The face that is hard to misuse, in front of the loopback engine: names, failures and callbacks.

#include <memory>
#include <optional>
#include <random>

#include "eventrecords.h"
#include "modernstudio.h"

namespace zant::tests {
namespace {

TEST(ModernNames, ComeBackFromAnyBytes) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 30, '\0');
        const bool isHostile = round % 2;
        for (char& byte : text)
            byte = isHostile ? "_xh09afA"[random() % 8] : static_cast<char>(random());
        const name made(text);
        ASSERT_EQ(name::decode(made.encoded()), text) << made.c_str();
        ASSERT_EQ(made.encoded().find_first_not_of("0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"),
                  std::string::npos);
        ASSERT_FALSE(made.c_str()[0] >= '0' && made.c_str()[0] <= '9');
    }
    EXPECT_EQ(name("wall_2").encoded(), "wall_2");
    EXPECT_EQ(name("Cube 1").encoded(), "Cube_x201");
    EXPECT_EQ(name(static_cast<const char*>(nullptr)).encoded(), "_x");
}

TEST(ModernNames, ThatAreCutStayApart) {
    for (const char* filler : {"x", " ", "_x"}) {
        std::string base;
        while (base.size() < 300)
            base += filler;
        const name one(base + "1"), two(base + "2"), same(base + "1");
        EXPECT_TRUE(one.is_cut());
        EXPECT_LE(one.encoded().size(), 127U);
        EXPECT_GT(one.encoded().size(), 120U);
        EXPECT_NE(one.encoded(), two.encoded());
        EXPECT_EQ(one.encoded(), same.encoded());
        EXPECT_EQ(one.text(), base + "1");
        const std::string beginning = name::decode(one.encoded());
        EXPECT_EQ(beginning, base.substr(0, beginning.size() - 3) + "\xE2\x80\xA6");
    }
    EXPECT_FALSE(name(std::string(127, 'x')).is_cut());
    EXPECT_TRUE(name(std::string(128, 'x')).is_cut());
}

TEST(ModernNames, DeclareOneObjectInEveryEncoding) {
    const std::string injection = "x;echo \"injected\";color y", longName(200, 'n');
    for (const encoding commands : encodings) {
        Studio studio(commands);
        const std::string names[] = {injection, "Cube 1", longName + "1", longName + "2", "", "9", "\xC3\xA4,{}()\n"};
        std::vector<value<double>> all;
        for (const std::string& called : names) {
            all.emplace_back(studio.stage, called);
            EXPECT_TRUE(all.back().declare() && all.back().set(static_cast<double>(all.size()))) << said(studio.stage);
            EXPECT_EQ(all.back().name(), called);
            EXPECT_EQ(all.back().engine_name(), name(called).encoded());
        }
        for (std::size_t k = 0; k < all.size(); ++k)
            EXPECT_EQ(all[k].get(), static_cast<double>(k + 1)) << names[k];
        EXPECT_EQ(studio.lines, "");
        EXPECT_EQ(studio.stage.instance()->findObject("y", HandleObject), nullptr);
        EXPECT_NE(studio.stage.instance()->findObject("Cube_x201", HandleObject), nullptr);
        all.clear();
        EXPECT_EQ(studio.stage.instance()->findObject("Cube_x201", HandleObject), nullptr);
    }
}

// ---- Failures -----------------------------------------------------------------------------------------------------

TEST(ModernFailures, AreCollectedWithTheEnginesWords) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        scene& stage = studio.stage;
        Tap tap(stage);
        EXPECT_FALSE(stage.failed());
        EXPECT_TRUE(stage.fg2_gradients(0.5, 2));
        const Texts good = tap.take();
        EXPECT_FALSE(refused(stage));
        tap.take();
        ASSERT_NE(stage.first_failure(), nullptr);
        EXPECT_EQ(stage.first_failure()->command, "vertexMapOp1_flush");
        EXPECT_NE(stage.first_failure()->code, 0);
        EXPECT_NE(stage.first_failure()->text, "");
        EXPECT_EQ(studio.lines, stage.first_failure()->text + "\n") << "the same lines, and the host has them as well";
        const std::string first = said(stage);
        EXPECT_EQ(first.find("vertexMapOp1_flush failed with code "), 0U);

        EXPECT_TRUE(stage.failed());
        EXPECT_FALSE(stage.fg2_gradients(1, 2) || refused(stage) || stage.run("echo \"no\";"));
        EXPECT_EQ(said(stage), first);
        EXPECT_EQ(stage.failures(), 1U);
        EXPECT_EQ(stage.skipped(), 3U);
        EXPECT_EQ(tap.take(), Texts()) << "nothing is sent";

        stage.clear();
        EXPECT_FALSE(stage.failed());
        EXPECT_EQ(stage.first_failure(), nullptr);
        EXPECT_EQ(stage.skipped() + stage.failures(), 0U);
        EXPECT_TRUE(stage.fg2_gradients(0.5, 2));
        EXPECT_EQ(tap.take(), good) << "the next command arrives alone";
    }
}

TEST(ModernFailures, OfTextThatIsRunHaveItsLines) {
    Studio studio;
    EXPECT_TRUE(studio.stage.run("echo \"hello\"; var x,1;", "notes"));
    EXPECT_EQ(studio.lines, "hello\n");
    EXPECT_FALSE(studio.stage.run("var y,1; nonsense 1;", "notes"));
    EXPECT_EQ(studio.stage.first_failure()->command, "run");
    EXPECT_NE(studio.stage.first_failure()->text.find("notes"), std::string::npos) << said(studio.stage);
    EXPECT_EQ(studio.stage.first_failure()->text.find("hello"), std::string::npos) << "lines of another command";
}

TEST(ModernFailures, AreToldToAHandler) {
    Texts told;
    failure_handler handler([&](const failure& cause) { told.push_back(cause.message()); });
    handler.tells_skipped = true;
    Studio studio(encoding::binary(), std::move(handler));
    refused(studio.stage);
    studio.stage.view0_render();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], said(studio.stage));
    EXPECT_EQ(told[1], "view0_render failed: not sent, after " + told[0]);
    studio.stage.on_failure({});
    studio.stage.view0_render();
    EXPECT_EQ(told.size(), 2U);
}

TEST(ModernFailures, MayBeThrown) {
    for (const encoding commands : encodings) {
        Studio studio(commands, throwing());
        scene& stage = studio.stage;
        Tap tap(stage);
        stage.fg2_gradients(0.5, 2);
        const Texts good = tap.take();
        EXPECT_THROW(refused(stage), error);
        try {
            stage.view0_render();
            ADD_FAILURE() << "a command after a failure throws as well";
        } catch (const error& thrown) {
            EXPECT_EQ(thrown.cause().command, "view0_render");
            EXPECT_NE(std::string(thrown.what()).find("vertexMapOp1_flush"), std::string::npos);
        }
        tap.take();
        stage.clear();
        EXPECT_NO_THROW(stage.fg2_gradients(0.5, 2));
        EXPECT_EQ(tap.take(), good);
    }
}

TEST(ModernFailures, MayBeAnsweredByTheHandler) {
    Studio studio;
    studio.stage.on_failure([&](const failure&) {
        studio.stage.on_failure({});  // the handler goes while it is called
        studio.stage.clear();
    });
    EXPECT_FALSE(refused(studio.stage));
    EXPECT_TRUE(studio.stage.view0_render());
    EXPECT_EQ(studio.stage.failures(), 0U);
}

TEST(ModernFailures, DelayTheDeletionOfObjects) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        scene& stage = studio.stage;
        const auto exists = [&](const char* object) {
            return stage.instance()->findObject(object, HandleObject) != nullptr;
        };
        std::optional<symbol> one(std::in_place, stage, "one"), two(std::in_place, stage, "two");
        stage.surface1_color(*one), stage.surface1_color(*two);
        refused(stage);
        one.reset(), two->reset();
        EXPECT_TRUE(exists("one") && exists("two"));
        EXPECT_FALSE(*two);
        stage.clear();
        EXPECT_FALSE(exists("one") || exists("two"));
        EXPECT_FALSE(stage.failed());
    }
}

TEST(ModernFailures, FollowTheScopeTheyAreIn) {
    Studio studio;
    scene& stage = studio.stage;
    {
        const scope each(stage, on_failure::go_on);
        EXPECT_FALSE(refused(stage));
        EXPECT_TRUE(stage.view0_render());
        {
            const scope group(stage, on_failure::stop);
            EXPECT_TRUE(stage.view0_render());
            EXPECT_FALSE(refused(stage));
            EXPECT_FALSE(stage.view0_render());
            EXPECT_EQ(group.failures(), 1U);
        }
        EXPECT_TRUE(stage.view0_render()) << "the group has ended, and each goes on";
        EXPECT_EQ(each.failures(), 2U);
    }
    EXPECT_FALSE(stage.failed());
    EXPECT_EQ(stage.failures(), 2U);
    EXPECT_EQ(stage.skipped(), 1U);
    EXPECT_NE(stage.first_failure(), nullptr);
    {
        const scope group(stage, on_failure::stop);
        const scope each(stage, on_failure::go_on);
        refused(stage);
        stage.clear();
        EXPECT_EQ(each.failures(), 1U) << "what has been is not undone by clear()";
        refused(stage);
        EXPECT_EQ(group.failures(), 2U);
    }
    EXPECT_TRUE(stage.view0_render());
    {
        const scope group(stage, on_failure::stop);
        refused(stage);
        const scope each(stage, on_failure::go_on);
        EXPECT_FALSE(stage.view0_render()) << "the group has failed before";
    }
    EXPECT_FALSE(stage.view0_render()) << "and so has what is around it";
}

// ---- Callbacks ----------------------------------------------------------------------------------------------------

TEST(ModernCallbacks, AreToldWhatTheEngineRaises) {
    Studio studio;
    Texts calls;
    scene& stage = studio.stage;
    Zant::EventListener& events = *stage.instance()->getEventListener();
    stage.on_text([&](std::string_view line) { calls.emplace_back(line); });
    stage.on_question([&](std::string_view prompt, std::string& answer) {
        answer = "answer to " + std::string(prompt);
        return prompt != "none";
    });
    stage.on_window_size([&](const _ZantEventWindow& size) {
        return calls.push_back("size " + std::to_string(size.number)), size.number < 3;
    });
    stage.on_window_title([&](std::string_view title) { calls.push_back("title " + std::string(title)); });
    stage.on_pixels(
        [&](const _ZantEventPixelTable& table) { calls.push_back("pixels " + std::to_string(table.number)); });
    stage.on_copied_pixels(
        [&](const _ZantEventPixelRectangle& table) { calls.push_back("copied " + std::to_string(table.number)); });
    int mice = 0, keys = 0;
    stage.on_mouse([&](_ZantEventMousePosition&) { ++mice; });
    stage.on_key([&, owned = std::make_unique<int>(3)](_ZantEventKey&) { keys += *owned; });

    void* const stream = events.createTextStream();
    events.textLine(stream, "one "), events.textLine(stream, nullptr), events.textLine(stream, "line");
    events.textNewLine(stream), events.textNewLine(stream);
    _ZantEventTextBufferData buffer{};
    events.getTextLine(stream, "it", &buffer);
    EXPECT_STREQ(buffer.text, "answer to it");
    events.getTextLine(stream, "none", &buffer);
    EXPECT_EQ(buffer.text, nullptr);
    events.getTextLine(stream, nullptr, &buffer);
    EXPECT_STREQ(buffer.text, "answer to ");
    events.destroyTextStream(stream);

    void* const window = events.createWindow();
    EXPECT_EQ(events.setWindowSize(window, {2}), 1);
    EXPECT_EQ(events.setWindowSize(window, {3}), 0);
    events.setWindowTitle(window, "preview"), events.setWindowTitle(window, nullptr);
    events.setPixels(window, {4}), events.copyPixels(window, {5});
    _ZantEventMousePosition mouse{};
    _ZantEventKey key{};
    events.getWindowMousePosition(window, mouse), events.getWindowMouseRawPosition(window, mouse);
    events.getWindowKeyEvent(window, key);
    events.setWindowFlags(window, 1);
    EXPECT_EQ(events.getWindowFlags(window) + events.getMouseRawDPI(window), 0);
    events.destroyWindow(window);
    EXPECT_EQ(calls, (Texts{"one line", "", "size 2", "size 3", "title preview", "title ", "pixels 4", "copied 5"}));
    EXPECT_EQ(mice * 10 + keys, 23);
}

TEST(ModernCallbacks, MayUseTheScene) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        scene& stage = studio.stage;
        value<double> seen(stage, "seen");
        ASSERT_TRUE(seen.declare());
        int inside = 0;
        stage.on_text([&](std::string_view line) {
            if (line != "go") return;
            const std::string longer(5000, 'x');
            inside += stage.sett1_logFile(std::string_view(longer)) && seen.set(5);
        });
        EXPECT_TRUE(stage.run("echo \"go\";")) << said(stage);
        EXPECT_EQ(inside, 1) << said(stage);
        EXPECT_EQ(seen.get(), 5);
        EXPECT_TRUE(stage.fg2_gradients(0.5, 2));
    }
}

TEST(ModernCallbacks, LeaveTheLinesToTheEngineWithoutOne) {
    Studio studio;
    studio.stage.on_text({});
    testing::internal::CaptureStdout();
    EXPECT_TRUE(studio.stage.run("echo \"a line\";"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a line\n");
}

}  // namespace
}  // namespace zant::tests
