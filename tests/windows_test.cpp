// Pictures in the making and their windows, as a host's listener sees them: with the loopback engine, and with one that
// takes its time.

#include <gtest/gtest.h>

#include <cmath>

#include "client/zant.h"
#include "windowhost.h"

namespace Zant::Tests {
namespace {

using Strings = std::vector<std::string>;

// An engine whose pictures take that many milliseconds to begin.
class Slow : Environment, public WindowHost {
public:
    explicit Slow(const char* milliseconds)
        : Environment{{"ZANT_TEST_BUILD", milliseconds}}, WindowHost(ZANT_SLOW_ENGINE_DIR) {}
};
constexpr char forever[] = "100000";

const Strings wholePicture = {"createWindow",       "setWindowSize", "setWindowFlags 4", "setWindowTitle 0",
                              "setWindowTitle 100", "copyPixels",    "setWindowFlags 0", "destroyWindow"};
const Strings endedPicture = {"createWindow",     "setWindowSize",    "setWindowFlags 4",
                              "setWindowTitle 0", "setWindowFlags 0", "destroyWindow"};

// ---- what a picture raises -----------------------------------------------------------------------------------------

TEST(Windows, SeeEveryOperationOfAListener) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(host.screen.steps(), wholePicture);
    EXPECT_EQ(host.screen.threads, std::set<std::thread::id>{std::this_thread::get_id()});
    EXPECT_EQ(host.parse("echo \"done\"; pause;"), 0);
    host.library.releaseInstance(host.instance);
    EXPECT_EQ(host.screen.operations(), (std::set<std::string>{"createTextStream",
                                                               "destroyTextStream",
                                                               "textLine",
                                                               "textNewLine",
                                                               "getTextLine",
                                                               "getTextFlags",
                                                               "allocTextBuffer",
                                                               "freeTextBuffer",
                                                               "createWindow",
                                                               "destroyWindow",
                                                               "setWindowSize",
                                                               "setPixels",
                                                               "copyPixels",
                                                               "getWindowFlags",
                                                               "setWindowFlags",
                                                               "setWindowTitle",
                                                               "getWindowMouseRawPosition",
                                                               "getWindowMousePosition",
                                                               "getWindowKeyEvent",
                                                               "getMouseRawDPI"}));
}

// As a file that names it has it.
int byteOf(float linear) {
    const double value = linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(value * 255));
}

TEST(Windows, AreGivenEachPixelOfTheGivenPictureOnce) {
    std::string pixels;
    for (int value = 0; value < 5 * 3 * 3; ++value)
        pixels += static_cast<char>(value * 5 + 20);
    const TemporaryFile file("P6\n# five by three\n5 3\n255\n" + pixels);
    const Environment environment{{"ZANT_LOOPBACK_PICTURE", file.name()}};
    for (const char* threads : {"threads 1;", "threads 4;"}) {
        WindowHost host(ZANT_LOOPBACK_DIR);
        ASSERT_EQ(host.parse(threads + std::string("render;")), 0);
        const Screen& screen = host.screen;
        ASSERT_EQ(screen.size.width, 640);
        ASSERT_EQ(screen.size.height, 480);
        size_t wrong = 0;
        for (int y = 0; y < 480; ++y) {
            for (int x = 0; x < 640; ++x) {
                const auto place = static_cast<size_t>(y * 640 + x);
                const auto given = static_cast<size_t>((y / 160 * 5 + x / 128) * 3);
                wrong += screen.timesGiven[place] != 1 || screen.rgba[place * 4 + 3] != 1;
                for (size_t part = 0; part < 3; ++part)
                    wrong += byteOf(screen.rgba[place * 4 + part]) != static_cast<unsigned char>(pixels[given + part]);
            }
        }
        EXPECT_EQ(wrong, 0U) << threads;
        EXPECT_EQ(screen.rectangle.target.right, 640);
        EXPECT_EQ(screen.rectangle.source.bottom, 480);
    }
}

TEST(Windows, SayWhichPictureCannotBeGiven) {
    for (const char* content : {"", "P5 1 1 255 x", "P6 1 1 65535 xxxxxx", "P6 9 9 255 few", "P6 0 1 255 ", "P6 a"}) {
        const TemporaryFile file(content);
        const Environment environment{{"ZANT_LOOPBACK_PICTURE", file.name()}};
        testing::internal::CaptureStderr();
        WindowHost host(ZANT_LOOPBACK_DIR);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("loopback engine: the picture '"), std::string::npos);
        EXPECT_EQ(host.parse("render;"), 0);
        EXPECT_EQ(host.screen.rgba[3], 1) << "blank";
    }
}

// A machine that does other things as well may hold anything up for a while.
TEST(Windows, AreAskedEveryThirtyMillisecondsOnTheCallersThread) {
    auto shortest = Screen::Clock::duration::max();
    for (int attempt = 0; attempt < 10 && shortest >= std::chrono::milliseconds(30); ++attempt) {
        Slow host("150");
        ASSERT_EQ(host.parse("render;"), 0);
        EXPECT_GE(host.screen.count("getWindowFlags"), 8U);
        EXPECT_EQ(host.screen.threads, std::set<std::thread::id>{std::this_thread::get_id()});
        shortest = std::min(shortest, host.screen.longestGap);
    }
    EXPECT_LT(shortest, std::chrono::milliseconds(30));
}

TEST(Windows, OfAForeignThreadHaveOneForAPicture) {
    const Environment environment{{"ZANT_LOOPBACK_FAULT", "foreign-event"}};
    WindowHost host(ZANT_LOOPBACK_DIR);
    host.screen.within("setPixels", [&] { EXPECT_EQ(host.parse("render;"), 11); });
    EXPECT_EQ(host.parse("echo; render;"), 0);
    EXPECT_EQ(host.screen.steps(), wholePicture);
    EXPECT_EQ(host.screen.threads.count(std::this_thread::get_id()), 0U);
}

// ---- pictures that end early ---------------------------------------------------------------------------------------

TEST(Windows, EndThePictureEarlyAndLeaveEverythingUsable) {
    const struct {
        const char* name;
        const char* where;  // the operation within which it happens
        std::function<void(Slow&)> happens;
        Strings steps;
    } rows[] = {
        {"closed", "getWindowFlags", [](Slow& host) { host.screen.flags = Engine::WindowIsClosed; }, endedPicture},
        {"escape", "getWindowFlags", [](Slow& host) { host.screen.key = Engine::KeyEscape; }, endedPicture},
        {"stop", "getWindowKeyEvent", [](Slow& host) { EXPECT_EQ(host.parse("pv stop;"), 0); }, endedPicture},
        {"close", "getWindowKeyEvent", [](Slow& host) { EXPECT_EQ(host.parse("view close;"), 0); }, endedPicture},
        {"size", "createWindow", [](Slow& host) { host.screen.takesSizes = false; }, {"createWindow", "setWindowSize"}},
    };
    for (const auto& row : rows) {
        Slow host(forever);
        host.screen.within(row.where, [&] { row.happens(host); });
        EXPECT_EQ(host.parse("render;"), 0) << row.name;
        EXPECT_EQ(host.screen.steps(), row.steps) << row.name;
        EXPECT_EQ(host.screen.text, "Warning: the picture ended early, with 0 % of it made\n") << row.name;
        const Environment quick{{"ZANT_TEST_BUILD", "0"}};
        host.screen.renew();
        EXPECT_EQ(host.parse("render;"), 0) << row.name;
        EXPECT_EQ(host.screen.steps(), wholePicture) << row.name;
    }
}

TEST(Windows, ThatAreNotThereDoNotKeepAPictureFromBeingMade) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    host.screen.hasWindows = false;
    EXPECT_EQ(host.parse("render; view window; view close; bitmap b,charRgba,(2,2); bitmapOp b,show;"), 0);
    EXPECT_EQ(host.screen.calls(), (Strings{"createWindow", "createWindow", "createWindow"}));
    host.instance->setEventListener(nullptr);
    EXPECT_EQ(host.parse("render;"), 0);
    host.instance->setDefaultEventListener();  // the engine serves itself, and shows nothing
    testing::internal::CaptureStdout();
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "no warning";
    EXPECT_EQ(host.library.getInfoInt(4), 0) << "no window is left";
}

TEST(Windows, ThatHaveLostTheirPixelsAreGivenAllOfThemAgain) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    host.screen.within("getWindowKeyEvent", [&] {
        host.screen.flags = 0;
        host.screen.forgetPixels();
    });
    host.screen.flags = Engine::WindowIsLost;
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(host.screen.timesGiven, std::vector<int>(640 * 480, 1));
}

// ---- commands from within events -----------------------------------------------------------------------------------

TEST(Windows, MaySendCommandsFromWithinAnyEvent) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    size_t sent = 0;
    for (const char* operation : {"createWindow", "setWindowSize", "setWindowTitle", "setWindowFlags", "getMouseRawDPI",
                                  "setPixels", "getWindowFlags", "getWindowMousePosition", "getWindowKeyEvent",
                                  "getWindowMouseRawPosition", "copyPixels", "destroyWindow", "createTextStream",
                                  "getTextFlags", "textLine", "getTextLine", "allocTextBuffer", "freeTextBuffer"}) {
        host.screen.within(operation, [&, operation] {
            EXPECT_EQ(host.parse("var x,1; echo \"within\";"), 0) << operation;
            EXPECT_NE(host.instance->findObject("x", HandleValue), nullptr);
            ++sent;
        });
    }
    EXPECT_EQ(host.parse("render; pause;"), 0);
    EXPECT_EQ(sent, 18U);
    size_t said = 0;
    for (size_t at = host.screen.text.find("within"); at != std::string::npos;
         at = host.screen.text.find("within", at + 1))
        ++said;
    EXPECT_EQ(said, 18U) << "also while the stream is being opened";
}

TEST(Windows, RefuseAPictureWithinAPicture) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    size_t refused = 0;
    host.screen.within("setPixels", [&] {
        for (const char* command : {"render;", "view render;", "pv render;", "pv start;", "view window;",
                                    "bitmap b,charRgba,(2,2); bitmapOp b,show;"})
            refused += host.parse(command) == 11;
        EXPECT_EQ(host.parse("pv restart;"), 11);
    });
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(refused, 6U);
    EXPECT_EQ(host.screen.text.find("Error: test:1:1: a picture is in the making"), 0U) << host.screen.text;
    EXPECT_EQ(host.screen.steps(), wholePicture);
}

// ---- previews ------------------------------------------------------------------------------------------------------

TEST(Previews, ReturnAtOnceAndEndWithTheirLastEvent) {
    Slow host(forever);
    Screen& screen = host.screen;
    EXPECT_EQ(host.parse("pv start; pv start;"), 0);
    ASSERT_TRUE(screen.waitFor("getWindowKeyEvent"));
    EXPECT_EQ(host.parse("var x,1;"), 0) << "the scene is not held up";
    EXPECT_EQ(host.parse("pv restart;"), 0);
    ASSERT_TRUE(screen.waitFor("createWindow", 2));
    EXPECT_EQ(host.parse("pv stop;"), 0);
    EXPECT_EQ(screen.steps().back(), "destroyWindow");
    EXPECT_EQ(screen.count("createWindow"), 2U);
    EXPECT_EQ(screen.count("destroyWindow"), 2U);
    EXPECT_EQ(screen.threads.size(), 1U);
    EXPECT_EQ(screen.threads.count(std::this_thread::get_id()), 0U);
    const Environment quick{{"ZANT_TEST_BUILD", "0"}};
    screen.renew();
    EXPECT_EQ(host.parse("pv start;"), 0);
    ASSERT_TRUE(screen.waitFor("destroyWindow"));
    EXPECT_EQ(screen.steps(), wholePicture);
}

TEST(Previews, EndBeforeAPictureIsMade) {
    Slow host(forever);
    EXPECT_EQ(host.parse("pv start;"), 0);
    ASSERT_TRUE(host.screen.waitFor("getWindowKeyEvent"));
    const Environment quick{{"ZANT_TEST_BUILD", "0"}};
    EXPECT_EQ(host.parse("render;"), 0);
    Strings both = endedPicture;
    both.insert(both.end(), wholePicture.begin(), wholePicture.end());
    EXPECT_EQ(host.screen.steps(), both);
}

TEST(Previews, AreStoppedAndBegunAgainFromWithinTheirEvents) {
    Slow host(forever);
    host.screen.within("getWindowKeyEvent", [&] {
        EXPECT_EQ(host.parse("render;"), 11);
        host.screen.within("getWindowKeyEvent", [&] { EXPECT_EQ(host.parse("pv stop;"), 0); });
        EXPECT_EQ(host.parse("pv stop; pv restart;"), 0);
    });
    EXPECT_EQ(host.parse("pv start;"), 0);
    ASSERT_TRUE(host.screen.waitFor("destroyWindow", 2));
    EXPECT_EQ(host.parse("pv stop;"), 0);
    EXPECT_EQ(host.screen.count("createWindow"), 2U);
}

TEST(Previews, EndWithTheirInstance) {
    Slow host(forever);
    EXPECT_EQ(host.parse("pv start;"), 0);
    ASSERT_TRUE(host.screen.waitFor("getWindowKeyEvent"));
    host.library.releaseInstance(host.instance);
    EXPECT_FALSE(host.library.isLoaded());
    EXPECT_EQ(host.screen.steps(), endedPicture);
    const size_t calls = host.screen.calls().size();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(host.screen.calls().size(), calls);
}

// It returns into code that has to be there: another instance keeps the engine.
TEST(Previews, MayEndTheirInstanceFromWithinAnEvent) {
    Slow host(forever);
    Screen screen;
    Instance* const second = host.library.createInstanceWithListner(&screen);
    Instance* const third = host.library.createInstanceWithListner(&screen);
    for (Instance* instance : {second, third}) {
        std::atomic<bool> isReleased{false};
        screen.within("getWindowKeyEvent", [&] {
            host.library.releaseInstance(instance);
            isReleased = true;
        });
        EXPECT_EQ(instance->parse(instance == second ? "pv start;" : "render; echo \"not heard\";", "test", ParseText),
                  0);
        while (!isReleased)
            std::this_thread::yield();
        EXPECT_EQ(screen.calls().back(), "getWindowKeyEvent");
    }
    EXPECT_EQ(host.library.getInfoInt(2), 1);
    host.library.releaseInstance(host.instance);  // waits for the thread
    EXPECT_EQ(screen.calls().back(), "getWindowKeyEvent");
}

TEST(Previews, EndWithTheEngineAlsoWhenTheirInstanceIsForgotten) {
    Slow host(forever);
    EXPECT_EQ(host.parse("pv start;"), 0);
    ASSERT_TRUE(host.screen.waitFor("getWindowKeyEvent"));
    host.library.vtables.exit();  // and the file stays: the instance is still to be released
    EXPECT_EQ(host.screen.steps(), endedPicture);
}

TEST(Previews, AreStoppedByWhoeverAsksWhileOthersRender) {
    Slow host(forever);
    std::thread other([&] {
        ASSERT_TRUE(host.screen.waitFor("getWindowKeyEvent"));
        EXPECT_EQ(host.parse("render;"), 11);
        EXPECT_EQ(host.parse("pv stop;"), 0);
        EXPECT_EQ(host.screen.steps().back(), "destroyWindow");
    });
    EXPECT_EQ(host.parse("render;"), 0);
    other.join();
}

// ---- the window that stays -----------------------------------------------------------------------------------------

TEST(Windows, ThatWereAskedForStayUntilTheyAreClosed) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    Screen& screen = host.screen;
    EXPECT_EQ(host.parse("view window,(0,0),(32,16);"), 0);
    EXPECT_EQ(screen.size.width, 32);
    EXPECT_EQ(host.parse("bitmap b,floatRgba,(3,2); bitmapData b,(1,1),{(0.25,0.5,2,0.75)}; bitmapOp b,show;"), 0);
    EXPECT_EQ(screen.size.width, 3);
    EXPECT_EQ(std::vector<float>(&screen.rgba[16], &screen.rgba[20]), (std::vector<float>{0.25F, 0.5F, 2, 0.75F}));
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(screen.count("createWindow"), 1U);
    EXPECT_EQ(screen.count("destroyWindow"), 0U);
    EXPECT_EQ(host.parse("view close; view close;"), 0);
    EXPECT_EQ(screen.count("destroyWindow"), 1U);

    EXPECT_EQ(host.parse("view window;"), 0);
    screen.flags = Engine::WindowIsClosed;
    EXPECT_EQ(host.parse("render;"), 0);
    EXPECT_EQ(screen.count("destroyWindow"), 2U) << "its user has closed it";
    screen.flags = 0;
    EXPECT_EQ(host.parse("bitmapOp b,show;"), 0);
    host.library.releaseInstance(host.instance);
    EXPECT_EQ(screen.count("destroyWindow"), 3U) << "with the instance";
}

TEST(Windows, HaveSizesThatArePossible) {
    WindowHost host(ZANT_LOOPBACK_DIR);
    for (const char* size : {"(0,5)", "(5,0)", "(100000,2)", "(60000,60000)", "(-1,4)"})
        EXPECT_EQ(host.parse("view window,(0,0)," + std::string(size) + ";"), 4) << size;
    EXPECT_EQ(host.parse("bitmap b,charRgba; bitmapOp b,show;"), 4);
    EXPECT_EQ(host.screen.count("createWindow"), 0U);
}

// ---- records -------------------------------------------------------------------------------------------------------

TEST(WindowRecords, OfAnotherEngineAreNotReadAsOurs) {
    static const char* name;
    const LibraryFunctionsVtable table = [] {
        LibraryFunctionsVtable functions{};
        functions.getInfoString = [](int id) { return id == 0 ? name : nullptr; };
        functions.destroyInstance = [](ZantLibraryInstance*) {};
        return functions;
    }();
    Library library(ZANT_LOOPBACK_DIR);
    library.vtables.library = &table;
    const Instance instance(&library);
    library.vtables.library = nullptr;
    const char memory[64] = {};
    const auto& window = reinterpret_cast<const _ZantEventWindow&>(memory);
    const auto& pixels = reinterpret_cast<const _ZantEventPixelTable&>(memory);
    const auto& rectangle = reinterpret_cast<const _ZantEventPixelRectangle&>(memory);
    for (const char* engine : {"Zant loopback engine", "Zant preview engine", "Zant loopback engine 4", "Zant", "",
                               static_cast<const char*>(nullptr)}) {
        name = engine;
        const std::string word = engine ? engine : "";
        const bool isOurs = word == "Zant loopback engine" || word == "Zant preview engine";
        EXPECT_EQ(Engine::windowSize(&instance, window) != nullptr, isOurs) << word;
        EXPECT_EQ(Engine::pixelTable(&instance, pixels) != nullptr, isOurs) << word;
        EXPECT_EQ(Engine::pixelRectangle(&instance, rectangle) != nullptr, isOurs) << word;
    }
    EXPECT_EQ(Engine::windowSize(nullptr, window), nullptr);
}

// ---- scripts that wait and end -------------------------------------------------------------------------------------

TEST(Scripts, EndWhereTheySay) {
    const TemporaryFile inner("echo \"b\"; end; echo \"c\";");
    const TemporaryFile last("echo \"b\"; exit; echo \"c\";");
    const std::string a = "echo \"a\"; ";
    const std::string d = "; echo \"d\";";
    const struct {
        std::string commands;
        const char* text;
    } rows[] = {
        {a + "stop; lihgt" + d, "a\n"},
        {a + "end" + d, "a\n"},
        {a + "include \"" + inner.name() + "\"" + d, "a\nb\nd\n"},
        {a + "include \"" + last.name() + "\"" + d, "a\nb\n"},
        {a + "parse \"var b; stop; lihgt\"" + d, "a\nd\n"},
        {a + "interactive" + d, "a\none\nd\n"},
        {a + "pause 0.001; pause -1" + d, "a\nd\n"},
    };
    for (const auto& row : rows) {
        WindowHost host(ZANT_LOOPBACK_DIR);
        host.screen.input = {"echo \"one\";", "end; lihgt;", "echo \"two\";"};
        EXPECT_EQ(host.parse(row.commands), 0) << row.commands;
        EXPECT_EQ(host.screen.text, row.text) << row.commands;
        EXPECT_EQ(host.parse("echo;"), 0) << "the next text is read";
    }
}

TEST(Scripts, TakeLinesUntilThereIsNoMore) {
    for (const std::deque<std::string>& more : {std::deque<std::string>{}, {"", "echo \"not read\";"}}) {
        WindowHost host(ZANT_LOOPBACK_DIR);
        host.screen.input = {"echo \"one\"; lihgt;", "echo \"two\";"};
        host.screen.input.insert(host.screen.input.end(), more.begin(), more.end());
        EXPECT_EQ(host.parse("interactive; echo \"three\";"), 1);
        EXPECT_EQ(host.screen.text.find("one\nError: input:1:"), 0U) << host.screen.text;
        EXPECT_NE(host.screen.text.find("\ntwo\nthree\n"), std::string::npos) << host.screen.text;
        EXPECT_EQ(host.screen.count("freeTextBuffer"), host.screen.count("allocTextBuffer"));
    }
}

}  // namespace
}  // namespace Zant::Tests
