// The loopback engine, loaded as a host loads it.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include "client/zant.h"
#include "engines/loopback/rayrecords.h"
#include "language/writer.h"
#include "loopbackhost.h"

namespace Zant::Tests {
using namespace Language;
namespace {

TEST(Loopback, SpeaksThroughTheListenerAndClosesItsStream) {
    TextCollector text;
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstanceWithListner(&text);
    ASSERT_NE(instance, nullptr) << library.getLoadError();
    EXPECT_EQ(text.opened, 0);
    EXPECT_EQ(instance->parse("echo \"one\";echo \"two\nthree\"; echo;", nullptr, ParseText), 0);
    EXPECT_EQ(text.take(), "one\ntwo\nthree\n\n");
    EXPECT_EQ(text.opened, 1);
    library.releaseInstance(instance);
    EXPECT_EQ(text.closed, 1);
    EXPECT_FALSE(library.isLoaded());
}

TEST(Loopback, NamesTheMistakeAndGoesOn) {
    struct Row {
        const char* commands;
        int code;
        const char* text;
    };
    const Row rows[] = {
        {"lihgt;", 1, "Error: scene.txt:1:1: "},
        {"echo 1;", 1, "Error: scene.txt:1:"},
        {"\n\n  var;echo \"on\";", 1, "Error: scene.txt:3:6: "},
        {"delete nobody;", 2, "Error: scene.txt:1:8: there is no object 'nobody'"},
        {"var v; \n bitmapOp v,show;", 3, "Error: scene.txt:2:11: 'v' is no bitmap"},
        {"bitmap b,charGray,(100000,4);", 4, "Error: scene.txt:1:19: a bitmap cannot have the size"},
        {"include \"no such file\";", 5, "Error: scene.txt:1:9: cannot read the file 'no such file'"},
        {"include \"/\";", 5, "Error: scene.txt:1:9: cannot read the file '/'"},
    };
    Host host;
    for (const Row& row : rows) {
        EXPECT_EQ(host.parse(row.commands, "scene.txt"), row.code) << row.commands;
        const std::string text = host.text.take();
        EXPECT_EQ(text.substr(0, std::strlen(row.text)), row.text) << row.commands;
        EXPECT_EQ(text.find("on\n") != std::string::npos, std::strstr(row.commands, "\"on\"") != nullptr);
    }
}

// ---- commands ----------------------------------------------------------------------------------------------------

// A command of a form, with values that the engine's own objects take.
void makeSample(const Form& form, Command& command) {
    command.clear();
    command.form = &form;
    for (size_t place = 0; place < form.tokenCount; ++place) {
        const ArgumentKind kind = form.tokens[place].kind;
        command.beginValue(kind, 0);
        switch (kind) {
            case ArgumentKind::Keyword:
                break;
            case ArgumentKind::NewSymbol:
                command.addText("new" + std::to_string(place));
                break;
            case ArgumentKind::BitmapSymbol:
                command.addText("bitmap");
                break;
            case ArgumentKind::MeshSymbol:
                command.addText("mesh");
                break;
            case ArgumentKind::VertexMapSymbol:
                command.addText("map");
                break;
            default:
                switch (valueKindOf(kind)) {
                    case ValueKind::Number:
                        command.addNumber(1);
                        break;
                    case ValueKind::Vector:
                        command.addVector(Vector(1, 1, 1));
                        break;
                    case ValueKind::Axes:
                        command.addAxes(Axes());
                        break;
                    case ValueKind::CoordSys:
                        command.addCoordSys(CoordSys());
                        break;
                    default:
                        command.addText("x");
                }
        }
    }
}

// Commands that read a file or delete what they name.
bool needsCare(const Form& form) {
    const std::string function = form.function;
    return function == "include1" || function == "parse1" || function == "parse2" || function == "symbolsDelete0";
}

// The lines that are about none of the objects which the test itself declares.
std::string withoutSetting(const std::string& transcript) {
    static const std::set<std::string> setting = {"symbolsDelete", "bitmap", "vertexMap", "mesh", "meshOp", "var"};
    std::istringstream lines(transcript);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        if (setting.count(line.substr(0, line.find_first_of(" ,;"))) == 0) rest += line + "\n";
    }
    return rest;
}

TEST(LoopbackCommands, OfEveryFormAreTakenInEveryEncodingAndDeclareTheirObjects) {
    const TemporaryFile transcript;
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    Host host;
    std::unique_ptr<CommandBuffer> buffers[3] = {std::make_unique<CommandTextBuffer>(host.instance),
                                                 std::make_unique<CommandQuickTextBuffer>(host.instance),
                                                 std::make_unique<CommandBinaryBuffer>(host.instance)};
    TextWriter writer;
    CommandReplay replay;
    Command command;
    std::string told;
    size_t taken = 0;
    size_t declared = 0;
    const char* const setting =
        "bitmap bitmap,charRgba,(4,4); vertexMap map,3,fixedSize,4,1; mesh mesh; meshOp mesh,points,map; var x;";
    for (const Form& form : allForms()) {
        if (needsCare(form)) continue;
        makeSample(form, command);
        for (const auto& buffer : buffers) {
            host.instance->parse("symbolsDelete;", nullptr, ParseText);
            ASSERT_EQ(host.parse(setting), 0);
            replay.send(command, *buffer);
            EXPECT_EQ(buffer->errorCode, 0) << form.function << host.text.take();
            buffer->error(0);
            told += writer.write(command) + std::string("\n");
            ++taken;
        }
        for (size_t place = 0; place < form.tokenCount; ++place) {
            if (form.tokens[place].kind != ArgumentKind::NewSymbol) continue;
            const std::string name = "new" + std::to_string(place);
            uint64_t registered = 0;
            EXPECT_NE(host.instance->findObject(name.c_str(), &registered, HandleObject, nullptr), nullptr);
            EXPECT_NE(registered, 0U) << form.function;
            ++declared;
        }
    }
    EXPECT_EQ(taken, 3 * (allForms().size() - 4));
    EXPECT_GT(declared, 300U);

    // The transcript holds each command as its canonical text, whatever encoding it came in.
    EXPECT_TRUE(withoutSetting(transcript.content()) == withoutSetting(told));
}

TEST(LoopbackCommands, InATranscriptRunAgainAndGiveItAgain) {
    const TemporaryFile first;
    const TemporaryFile second;
    const TemporaryFile file("var a,1; echo \"from a file\"; lihgt;");
    {
        const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", first.name()}};
        Host host;
        host.parse(("include \"" + file.name() + "\"; parse \"var b;\";[46],[6],0.5,2;delete a;delete a;").c_str());
        CommandBinaryBuffer buffer(host.instance);
        DoubleSymbol number(buffer, "has space");
        number.registerSymbol();
    }
    EXPECT_EQ(first.content(),
              "var a,1;\necho \"from a file\";\nvar b;\nfg gradients,0.5,2;\ndelete a;\n"
              "var \"has space\";\ndelete \"has space\";\n");
    {
        const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", second.name()}};
        Host host;
        EXPECT_EQ(host.parse(("include \"" + first.name() + "\";").c_str()), 0) << host.text.take();
    }
    EXPECT_EQ(second.content(), first.content());
}

// Sends a vector in two encodings. What the engine says is left in `said`.
std::string transcriptOf(const Vector& vector, const char* numbers, std::string& said) {
    const TemporaryFile transcript;
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}, {"ZANT_LOOPBACK_NUMBERS", numbers}};
    Host host;
    CommandTextBuffer text(host.instance);
    CommandBinaryBuffer binary(host.instance);
    Symbol name(binary, "v");
    for (CommandBuffer* buffer : std::initializer_list<CommandBuffer*>{&text, &binary}) {
        buffer->addEnum(14, "vector");
        buffer->addSymbol(name);
        buffer->addVector(vector);
        buffer->parse();
    }
    said = host.text.take();
    return transcript.content();
}

TEST(LoopbackCommands, KeepTheirNumbersInATranscript) {
    std::string said;
    const Vector numbers(0.1 + 0.2, 12345678901.0, 1e23);
    EXPECT_EQ(transcriptOf(numbers, "exact", said),
              "vector v,(0.3,12345678900,1e23);\nvector v,(0.30000000000000004,12345678901,1e23);\n");
    EXPECT_EQ(transcriptOf(numbers, "client", said),
              "vector v,(0.3,1.23456788e10,10e22);\nvector v,(0.3,1.23456788e10,10e22);\n");
    EXPECT_EQ(said, "");
    EXPECT_EQ(transcriptOf(Vector(NAN, 1, 2), "", said), "vector v,(0,1,2);\nvector v,(0,1,2);\n");
    EXPECT_EQ(said, "Warning: the transcript cannot hold 1 of the numbers of vector v,(0,1,2);\n");
    testing::internal::CaptureStderr();
    transcriptOf(numbers, "round", said);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("known are exact, client"), std::string::npos);
}

TEST(LoopbackCommands, ThatCannotBeWrittenToTheTranscriptAreSaidOnce) {
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", "/dev/full"}};
    Host host;
    testing::internal::CaptureStderr();
    EXPECT_EQ(host.parse("var x,1; var y,2;", "scene.txt"), 10);
    EXPECT_EQ(host.text.take(), "Error: scene.txt:1:1: the transcript '/dev/full' cannot be written and ends here\n");
    EXPECT_EQ(host.parse("delete x; delete y;"), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot write /dev/full: No space left"), std::string::npos);
}

std::string doubled(const std::string& text) {
    std::string result;
    for (const char letter : text)
        result += letter == '"' ? "\"\"" : std::string(1, letter);
    return result;
}

TEST(LoopbackCommands, ThatIncludeOthersAreFoundBesideThemAndEnd) {
    Host host;
    const TemporaryFile inner("echo \"inner\";");
    const TemporaryFile self("x");
    const std::string name = inner.name().substr(inner.name().rfind('/') + 1);
    const TemporaryFile outer("include \"" + name + "\"; include \"" + name + "\";");
    EXPECT_EQ(host.parse(("include \"" + outer.name() + "\";").c_str()), 0);
    EXPECT_EQ(host.text.take(), "inner\ninner\n");
    std::ofstream(self.name()) << "include \"" << self.name() << "\"; echo \"once\";";
    EXPECT_EQ(host.parse(("include \"" + self.name() + "\";").c_str()), 6);
    EXPECT_NE(host.text.take().find("includes itself\nonce\n"), std::string::npos);
    const TemporaryFile pipe;
    ASSERT_EQ(mkfifo(pipe.name().c_str(), 0600), 0);
    for (const std::string& odd : {std::string(), std::string("/"), std::string("/dev/zero"), pipe.name(),
                                   std::string("/proc/self/mem")}) {  // where reading fails
        EXPECT_EQ(host.parse(("include \"" + odd + "\";").c_str()), 5) << odd;
        EXPECT_NE(host.text.take().find("cannot read the file"), std::string::npos) << odd;
    }
    std::string nested = "echo";
    for (int depth = 0; depth < 6; ++depth)
        nested = "parse \"" + doubled(nested + ";") + "\"";
    EXPECT_EQ(host.parse(nested.c_str()), 0) << host.text.take();
}

TEST(LoopbackCommands, ThatIncludeTooManyFilesEnd) {
    std::vector<std::unique_ptr<TemporaryFile>> files;
    std::string command = "echo \"leaf\";";
    for (int level = 0; level < 12; ++level) {
        files.push_back(std::make_unique<TemporaryFile>(command));
        command.clear();
        for (int times = 0; times < 6; ++times)
            command += "include \"" + files.back()->name() + "\";";
    }
    Host host;
    EXPECT_EQ(host.parse(command.c_str()), 6);
    EXPECT_NE(host.text.take().find("more than 10000 files are included"), std::string::npos);
    EXPECT_EQ(host.parse(("include \"" + files.front()->name() + "\";").c_str()), 0) << "the next call counts anew";
}

TEST(LoopbackCommands, ThatIncludeTheTranscriptEnd) {
    const TemporaryFile transcript("var x,1;\n");
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()}};
    Host host;
    EXPECT_EQ(host.parse(("var y,2; include \"" + transcript.name() + "\";").c_str()), 0);
    EXPECT_EQ(transcript.content(), "var x,1;\nvar y,2;\nvar x,1;\nvar y,2;\n");
}

TEST(LoopbackCommands, SayWhatTheyKnow) {
    Host host;
    host.parse("var x,1; bitmap b,charGray,(4,2); vertexMap v,2,fixedSize,3; mesh m; surface s,black;");
    host.parse("showInfo all;");
    EXPECT_EQ(host.text.take(),
              "b: bitmap charGray 4 x 2\nm: mesh 0 polygons\ns: surface\nv: vertexMap 3 rows, dimension 2, 1 samples\n"
              "x: var x,1;\nall: 5\n");
    host.parse("showInfo bitmaps; objectInfo m;");
    EXPECT_EQ(host.text.take(), "b: bitmap charGray 4 x 2\nbitmaps: 1\nm: mesh 0 polygons\n");
    host.parse("help plain; help fg; help;");
    const std::string text = host.text.take();
    EXPECT_NE(text.find("fg gradients d d\n"), std::string::npos);
    EXPECT_NE(text.find("lightAdd\n"), std::string::npos);
    EXPECT_NE(text.find("Error: "), std::string::npos);
}

// ---- hostile input -----------------------------------------------------------------------------------------------

std::string randomText(std::mt19937& random) {
    static const char* const pieces[] = {
        "var",       " ",          ",",           ";",    "x",    "\"",     "(",       ")",
        "{",         "}",          "1e999",       "-1",   "[58]", "[",      "]",       "bitmap",
        "b",         "delete",     "bitmapOp",    "copy", "\n",   "resize", "parse",   "<>",
        "@",         "mesh",       "vector",      "NaN",  "\xff", "0",      "include", "vertexMap",
        "fixedSize", "vertexData", "meshAddPoly", "m",    "v"};
    std::string text;
    for (size_t count = random() % 20; count > 0; --count)
        text += pieces[random() % (sizeof pieces / sizeof *pieces)];
    return text + ";";
}

TEST(LoopbackCommands, OfAnyTextDoNoHarm) {
    Host host;
    std::mt19937 random(20240501);
    for (int round = 0; round < 20000; ++round)
        host.parse(randomText(random).c_str());
    host.text.take();
    EXPECT_EQ(host.parse("echo \"alive\";"), 0);
    EXPECT_EQ(host.text.take(), "alive\n");
}

// Blocks with some words replaced; the length word and the end of the memory stay true.
TEST(LoopbackCommands, OfAnyBlockDoNoHarm) {
    Host host;
    std::mt19937_64 random(7);
    BinaryWriter writer;
    Command command;
    const uint64_t words[] = {0, 1, 3, 8, 46, uint64_t(-1), uint64_t(-2), uint64_t(-3), uint64_t(1) << 62, 5};
    for (int round = 0; round < 3; ++round) {
        for (const Form& form : allForms()) {
            makeSample(form, command);
            const auto* block = static_cast<const uint64_t*>(writer.write(command));
            std::vector<uint64_t> copy(block, block + writer.size() / 8);
            for (size_t word = 1; word < copy.size(); ++word) {
                if (random() % 4 == 0) copy[word] = words[random() % 10];
            }
            host.instance->parse(copy.data(), nullptr, ParseBinary);
        }
    }
    host.text.take();
    EXPECT_EQ(host.parse("echo \"alive\";"), 0);
    EXPECT_EQ(host.text.take(), "alive\n");
}

// ---- events ------------------------------------------------------------------------------------------------------

TEST(LoopbackEvents, SentBackAreServedByTheEngine) {
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstance();
    testing::internal::CaptureStdout();
    instance->parse("echo \"to the standard output\";", nullptr, ParseText);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "to the standard output\n");

    BounceBackListener bounce;
    bounce.activate(instance);
    void* const window = bounce.createWindow();
    EXPECT_NE(window, nullptr);
    EXPECT_EQ(library.getInfoInt(4), 1);
    const int size[2] = {640, 480};
    EXPECT_EQ(bounce.setWindowSize(window, reinterpret_cast<const _ZantEventWindow&>(size)), 1);
    bounce.setWindowFlags(window, 3);
    EXPECT_EQ(bounce.getWindowFlags(window), 3);
    EXPECT_EQ(bounce.getMouseRawDPI(window), 0);
    _ZantEventMousePosition position{{7, 7}, {}};
    bounce.getWindowMousePosition(window, position);
    EXPECT_EQ(position.position[0], 0);
    _ZantEventKey key{};
    key.present = 1;
    bounce.getWindowKeyEvent(window, key);
    EXPECT_EQ(key.present, 0);
    bounce.destroyWindow(window);
    EXPECT_EQ(library.getInfoInt(4), 0);
    EXPECT_EQ(bounce.recognizeEventString("Error: text:1:1"), 100);
}

// A listener may use the instance from within an event.
class EchoingListener : public TextCollector {
public:
    void textLine(void* stream, const char* text) override {
        TextCollector::textLine(stream, text);
        if (std::string(text) == "outer") instance->parse("echo \"inner\";", nullptr, ParseText);
    }
    Instance* instance = nullptr;
};

TEST(LoopbackEvents, MayCallTheEngine) {
    EchoingListener text;
    Library library(ZANT_LOOPBACK_DIR);
    text.instance = library.createInstanceWithListner(&text);
    EXPECT_EQ(text.instance->parse("echo \"outer\"; echo \"last\";", nullptr, ParseText), 0);
    EXPECT_EQ(text.take(), "outerinner\n\nlast\n");
}

struct HandlerData {
    std::string text;
};
void collect(ZantEventData* event) {
    if (event->kind == EventTextLine) static_cast<HandlerData*>(event->reserved)->text += event->text;
}

TEST(LoopbackEvents, CarryTheUserDataOfAHandler) {
    HandlerData data;
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstanceWithHandler(collect, &data);
    instance->parse("echo \"hello\";", nullptr, ParseText);
    EXPECT_EQ(data.text, "hello");
}

// ---- threads and rays --------------------------------------------------------------------------------------------

class Counting : public MTJobSplit {
public:
    Counting(const MTFunctionsVtable* table, size_t items) : MTJobSplit(table), calls(items) {}
    void run(const size_t* index, int thread) override {
        ++calls[index[0] + 10 * (index[1] + 20 * index[2])];
        threadMask |= uint64_t{1} << std::min(thread, 62);
    }
    std::vector<std::atomic<int>> calls;
    std::atomic<uint64_t> threadMask{0};
};

TEST(LoopbackThreads, RunEveryWorkItemOnce) {
    Host host;
    for (const int threads : {2, 3, 8, 1000}) {
        Counting job(host.library.vtables.mt, 10 * 20 * 30);
        const size_t dims[3] = {10, 20, 30};
        for (int round = 1; round <= 3; ++round) {
            job.start(dims, threads);
            for (const auto& calls : job.calls)
                ASSERT_EQ(calls, round) << threads;
        }
        EXPECT_LT(job.threadMask, uint64_t{1} << std::min(threads, 63));
        Counting single(host.library.vtables.mt, 1);
        const size_t nothing[3] = {0, 0, 0};
        single.start(nothing, threads);
        EXPECT_EQ(single.calls[0], 1);
    }
    EXPECT_EQ(host.library.getInfoInt(5), 0) << "job contexts left";
}

// A work item that starts the same job again gets it done on its own thread.
class Nested : public MTJobSplit {
public:
    using MTJobSplit::MTJobSplit;
    void run(const size_t* index, int) override {
        ++calls;
        const size_t dims[3] = {2, 2, 2};
        if (index[0] == 3) start(dims, 4);
    }
    std::atomic<int> calls{0};
};

TEST(LoopbackThreads, SurviveAJobThatStartsItself) {
    Host host;
    Nested job(host.library.vtables.mt);
    const size_t dims[3] = {4, 1, 1};
    job.start(dims, 4);
    EXPECT_EQ(job.calls, 12);
}

TEST(LoopbackThreads, ExcludeEachOtherByMutexes) {
    Host host;
    Mutex mutex;
    mutex.init(host.library.vtables.mt);
    int count = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < 2000; ++round) {
                const MutexLocker locker(mutex);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 8000);
    EXPECT_NE(mutex.trylock(), 0);
    std::thread([&] { EXPECT_EQ(mutex.trylock(), 0); }).join();
    mutex.unlock();
}

TEST(LoopbackThreads, UseInstancesOfTheirOwnAndOneTogether) {
    Host host;
    host.library.setupInstanceMutex();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, thread] {
            TextCollector text;
            Instance* own = host.library.createInstanceWithListner(&text);
            CommandBinaryBuffer buffer(own);
            DoubleSymbol number(buffer, "number");
            number.registerSymbol();
            CommandQuickTextBuffer shared(host.instance);
            DoubleSymbol common(shared, ("common" + std::to_string(thread)).c_str());
            common.registerSymbol();
            for (int round = 0; round < 200; ++round) {
                number.directSet(Double(round));
                common.directSet(Double(thread));
                host.parse("echo \"line\";");
            }
            Double value;
            EXPECT_TRUE(common.directGet(value));
            EXPECT_EQ(value.value, thread);
            EXPECT_TRUE(number.directGet(value));
            EXPECT_EQ(value.value, 199);
            number.freeSymbol();
            number.registered = 0;
            host.library.releaseInstance(own);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(host.library.getInfoInt(2), 1);
    EXPECT_EQ(host.text.take().size(), 8U * 200 * 5);
}

TEST(LoopbackRays, LieInBlocksOfTheEngine) {
    Host host;
    const std::unique_ptr<RaytraceAccess> rays(host.instance->createRaytraceAccess());
    const size_t dims[3] = {100, 3, 2};
    ASSERT_TRUE(rays->allocBuffer(dims));
    ASSERT_EQ(rays->input.blockCount(), 2U * 3 * 2);
    Loopback::RayBufferDescription description;
    std::memcpy(&description, &rays->input, sizeof description);
    EXPECT_EQ(description.raysPerBlock, 64U);
    for (size_t block = 0; block < rays->input.blockCount(); ++block) {
        for (size_t ray = 0; ray < description.raysPerBlock; ++ray) {
            rays->input.blocks[block][ray].direction[2] = 1;
            EXPECT_EQ(rays->output.blocks[block][ray].hit, 0);
        }
    }
    const size_t refused[][3] = {
        {SIZE_MAX, SIZE_MAX, 2}, {SIZE_MAX, 1, 1}, {1 << 20, 1 << 10, 1}, {1, SIZE_MAX, SIZE_MAX}};
    for (const auto& dimensions : refused)
        EXPECT_FALSE(rays->allocBuffer(dimensions));
    EXPECT_EQ(rays->input.blocks[11][63].direction[2], 1) << "the layout before a refusal stays";
    const size_t none[3] = {5, 0, 5};
    EXPECT_TRUE(rays->allocBuffer(none));
    EXPECT_EQ(rays->input.blockCount(), 0U);
}

// ---- hosts ---------------------------------------------------------------------------------------------------------

TEST(LoopbackHosts, ComeAndGoManyTimes) {
    for (int cycle = 0; cycle < 300; ++cycle) {
        Host host;
        ASSERT_NE(host.instance, nullptr) << cycle;
        ASSERT_EQ(host.parse("bitmap b,charGray,(4,4); var x,1; vertexMap v,3,fixedSize,5; echo \"x\";"), 0);
    }
    std::vector<std::unique_ptr<Host>> many;  // more than have a place of their own
    for (int host = 0; host < 40; ++host)
        many.push_back(std::make_unique<Host>());
    for (const auto& host : many)
        EXPECT_EQ(host->parse("var x,1;"), 0);
}

TEST(LoopbackHosts, MayExitWithoutUnloading) {
    const auto leave = [] {
        getLibrary(ZANT_LOOPBACK_DIR)->loadExplicitly(nullptr);
        getLibrary(nullptr)->createInstance()->parse("echo \"bye\";", nullptr, ParseText);
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace Zant::Tests
