// Loading, refusing and unloading real engine modules.
#include "client/engine/library.h"

#include "client/engine/instance.h"
#include "enginetest.h"
#include "own/dl.h"

using namespace Zant;

namespace {

class LibraryTest : public EngineTest {};

const std::string release = std::string("zant3") + ZANT_ENGINE_SUFFIX;
const std::string debug = std::string("zant3d") + ZANT_ENGINE_SUFFIX;

// The lines of a load error.
std::vector<std::string> reasons(const Library& library) {
    std::vector<std::string> lines(1);
    for (const char* c = library.getLoadError(); *c; ++c)
        if (*c == '\n')
            lines.emplace_back();
        else
            lines.back() += *c;
    return lines;
}

TEST_F(LibraryTest, StartsUnloadedWithItsDefaults) {
    Library* const library = getLibrary(nullptr);
    EXPECT_EQ(getLibrary("/elsewhere/"), library);
    EXPECT_STREQ(library->getLibraryDir(), "./");
    EXPECT_EQ(library->hostVersion, 3000);
    EXPECT_EQ(library->flags, AUTO_UNLOAD);
    EXPECT_FALSE(library->isLoaded());
    EXPECT_EQ(library->getLibApiVersion(), 0);
    EXPECT_EQ(library->getInfoInt(5), 0);
    EXPECT_EQ(library->getInfoString(100), nullptr);
    EXPECT_EQ(library->setPlatformOption("name", "value", nullptr), 0);
    EXPECT_EQ(library->moduleHandle, nullptr);
    library->unload();
    EXPECT_TRUE(probe().calls.empty());
}

TEST_F(LibraryTest, TriesTheReleaseNameThenTheDebugNameAndKeepsBothReasons) {
    const struct {
        const char *directory, *prefix;
    } rows[] = {{"/nowhere/engine/", "/nowhere/engine/"}, {"/nowhere/engine", "/nowhere/engine"}, {"", ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.directory);
        Library library(nullptr);
        EXPECT_FALSE(library.load(row.directory));
        const auto lines = reasons(library);
        ASSERT_EQ(lines.size(), 2u);
        EXPECT_EQ(lines[0].find(row.prefix + release + ": "), 0u) << lines[0];
        EXPECT_EQ(lines[1].find(row.prefix + debug + ": "), 0u) << lines[1];
        EXPECT_STREQ(library.getLibraryDir(), *row.directory ? row.directory : nullptr);
    }
}

TEST_F(LibraryTest, KeepsTheReasonOfAFileThatIsNoModule) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(engine("not_a_module").c_str()));
    const auto lines = reasons(library);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NE(lines[0].find("not_a_module/" + release), std::string::npos);
    const auto reasonIn = [](const std::string& line) { return line.substr(line.rfind(": ")); };
    EXPECT_NE(reasonIn(lines[0]), reasonIn(lines[1])) << "one is not a module, the other one is not there";
    EXPECT_FALSE(library.load("/nowhere/"));
    EXPECT_EQ(reasonIn(lines[1]), reasonIn(reasons(library)[1]));
}

TEST_F(LibraryTest, KeepsBothReasonsOfVeryLongNames) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(('/' + std::string(10000, 'x') + '/').c_str()));
    const auto lines = reasons(library);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 3), "/xx");
    EXPECT_EQ(lines[1].substr(0, 3), "/xx");
}

TEST_F(LibraryTest, LoadsOnceAndUnloadsOnce) {
    Library library(nullptr);
    ASSERT_TRUE(library.load(engine("probe").c_str()));
    EXPECT_STREQ(library.getLoadError(), "");
    EXPECT_TRUE(library.load("/elsewhere/"));
    EXPECT_EQ(library.getLibraryDir(), engine("probe"));
    EXPECT_EQ(library.getLibApiVersion(), 17);
    EXPECT_EQ(library.getInfoInt(5), 5);
    EXPECT_STREQ(library.getInfoString(1), "information");
    EXPECT_EQ(library.setPlatformOption("name", "value", &library), 5);
    EXPECT_TRUE(isOpen(engine("probe")));
    EXPECT_EQ(procedureOfAnyone("zant3_init"), nullptr) << "an engine's names stay its own";
    library.unload();
    library.unload();
    EXPECT_FALSE(isOpen(engine("probe")));
    EXPECT_FALSE(library.isLoaded());
    EXPECT_EQ(library.getInfoString(100), nullptr);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "setPlatformOption \"name\" \"value\" data", "exit"}));
}

TEST_F(LibraryTest, ShowsTheEngineThatExitsNothingButItsOwnTable) {
    Library library(nullptr);
    ASSERT_TRUE(library.load(engine("probe").c_str()));
    library.setupInstanceMutex();
    ASSERT_NE(library.instanceMutex.handle, nullptr);
    library.reserved0 = library.reserved1 = &library;
    library.unload();
    ASSERT_EQ(probe().exits.size(), 1u);
    const Probe::AtExit& seen = probe().exits[0];
    EXPECT_TRUE(seen.libraryTable);
    EXPECT_FALSE(seen.otherTables);
    EXPECT_TRUE(seen.file);
    EXPECT_FALSE(seen.mutex);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createMutex", "destroyMutex", "exit"}));
    EXPECT_EQ(library.reserved0, nullptr);
    EXPECT_EQ(library.reserved1, &library);
}

TEST_F(LibraryTest, LoadsTheDebugBuildWhenThereIsNoOther) {
    Library library(engine("debug_only").c_str());
    ASSERT_TRUE(library.load(nullptr));
    EXPECT_TRUE(isOpen(engine("debug_only"), "zant3d"));
    EXPECT_STREQ(library.getLoadError(), "");
    EXPECT_EQ(library.getLibraryDir(), engine("debug_only")) << "kept for the next load";
}

TEST_F(LibraryTest, LeavesAFileWithoutEntryPointOpenUntilTheNextLoad) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(engine("no_entry").c_str()));
    EXPECT_NE(library.moduleHandle, nullptr);
    EXPECT_NE(std::string(library.getLoadError()).find("zant3_init"), std::string::npos) << library.getLoadError();
    EXPECT_TRUE(isOpen(engine("no_entry")));
    EXPECT_TRUE(library.load(engine("probe").c_str()));
    EXPECT_FALSE(isOpen(engine("no_entry")));
    EXPECT_TRUE(isOpen(engine("probe")));
}

TEST_F(LibraryTest, ReleasesAnEngineThatReportsNoVersion) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(engine("version_0").c_str()));
    EXPECT_NE(std::string(library.getLoadError()).find("version 0"), std::string::npos);
    EXPECT_FALSE(isOpen(engine("version_0")));
    EXPECT_EQ(library.vtables.library, nullptr);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "exit"}));
    EXPECT_EQ(library.createInstance(), nullptr);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "exit"}));
}

TEST_F(LibraryTest, ReleasesAnEngineThatGivesNoTable) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(engine("null_table").c_str()));
    EXPECT_NE(std::string(library.getLoadError()).find("no library table"), std::string::npos);
    EXPECT_FALSE(isOpen(engine("null_table")));
    EXPECT_EQ(probe().take(), Calls({"init 3000"}));
}

TEST_F(LibraryTest, NamesTheLastFailureNotAnEarlierOne) {
    Library library(nullptr);
    EXPECT_FALSE(library.load(engine("null_table").c_str()));
    EXPECT_FALSE(library.load("/nowhere/"));
    EXPECT_EQ(reasons(library).size(), 2u);

    EXPECT_FALSE(library.load(engine("null_table").c_str()));
    void* const file = DllLoad((engine("no_entry") + release).c_str());
    EXPECT_FALSE(library.initLib(file));
    EXPECT_NE(std::string(library.getLoadError()).find("zant3_init"), std::string::npos) << library.getLoadError();
    DllUnload(file);
}

TEST_F(LibraryTest, ClosesAnEngineThatWasRefusedInAnExplicitLoadBeforeTheNextOne) {
    Library library(nullptr);
    EXPECT_FALSE(library.loadExplicitly(engine("version_0").c_str()));
    EXPECT_EQ(library.flags, 0u);
    EXPECT_TRUE(isOpen(engine("version_0")));
    EXPECT_TRUE(library.load(engine("probe").c_str()));
    EXPECT_FALSE(isOpen(engine("version_0")));
    EXPECT_EQ(probe().take(), Calls({"init 3000", "exit", "init 3000"}));
    library.unload();
}

TEST_F(LibraryTest, TakesAnEntryPointOrAFileOfTheHost) {
    void* const file = DllLoad((engine("probe") + release).c_str());
    ASSERT_NE(file, nullptr) << DllLastError();
    {
        Library library(nullptr);
        EXPECT_FALSE(library.initLib(nullptr));
        EXPECT_FALSE(library.initLib(static_cast<void*>(nullptr)));
        EXPECT_TRUE(library.initLib(file));
        EXPECT_EQ(library.moduleHandle, nullptr);
        library.unload();
        EXPECT_TRUE(isOpen(engine("probe"))) << "the host's file stays the host's";
    }
    {
        const Library library(reinterpret_cast<void (*)(Library*)>(DllFindProcedure(file, "zant3_init")), "dir/");
        EXPECT_TRUE(library.isLoaded());
        EXPECT_STREQ(library.getLibraryDir(), "dir/");
    }
    EXPECT_EQ(DllUnload(file), 0);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "exit", "init 3000", "exit"}));
}

TEST_F(LibraryTest, CopiesItsDirectory) {
    char text[] = "engines/";
    Library library(text);
    text[0] = 'E';
    EXPECT_STREQ(library.getLibraryDir(), "engines/");
    library.setLibraryDir(library.getLibraryDir());
    EXPECT_STREQ(library.getLibraryDir(), "engines/");
    library.setLibraryDir("");
    EXPECT_EQ(library.getLibraryDir(), nullptr);
    library.setLibraryDir("a");
    library.setLibraryDir(nullptr);
    EXPECT_EQ(library.getLibraryDir(), nullptr);
}

TEST_F(LibraryTest, ZeroForgetsWithoutFreeing) {
    Library library(nullptr);
    ASSERT_TRUE(library.loadExplicitly(engine("probe").c_str()));
    char* const directory = library.libraryDir;
    void* const file = library.moduleHandle;
    library.hostVersion = 1;
    library.zero();
    EXPECT_EQ(library.libraryDir, nullptr);
    EXPECT_EQ(library.moduleHandle, nullptr);
    EXPECT_EQ(library.hostVersion, 3000);
    EXPECT_EQ(library.flags, 0u);
    EXPECT_TRUE(library.isLoaded());
    library.libraryDir = directory;
    library.moduleHandle = file;
    library.unload();
}

TEST_F(LibraryTest, JoinsFileNamesInOrderAndSkipsNullPieces) {
    const auto triedName = [](const char* dir, const char* m1, const char* m2, const char* m3) {
        EXPECT_EQ(DllLoadCombinedFilename(dir, "name", "unread", ".ext", m1, m2, m3), nullptr);
        const std::string error = DllLastError();
        return error.substr(0, error.find(": "));
    };
    EXPECT_EQ(triedName("/no/", "1", "2", "3"), "/no/name123.ext");
    EXPECT_EQ(triedName("/no/", nullptr, "2", nullptr), "/no/name2.ext");
    EXPECT_EQ(triedName(nullptr, nullptr, nullptr, nullptr), "name.ext");
}

// What the library of the process does when the process ends without a word, seen by its calls to the engine.
using ProcessExitTest = LibraryTest;

[[noreturn]] void endProcess(bool explicitly) {
    zantTestProbe()->toStandardError = true;
    Library* const library = getLibrary(nullptr);
    library->setLibraryDir(engine("probe").c_str());
    if (explicitly) library->loadExplicitly(nullptr);
    library->createInstance();
    library->createInstance();
    std::exit(0);
}

const char* const created = "^init 3000\ncreateInstance 1\ncreateInstance 2\ndestroyInstance 2\ndestroyInstance 1\n";

TEST_F(ProcessExitTest, DestroysInstancesAndLetsTheEngineExit) {
    EXPECT_EXIT(endProcess(false), testing::ExitedWithCode(0), created + std::string("exit\n$"));
}

// Registered before the library of the process is made, so that it runs after its end.
bool asksLate = false;
const int asking = std::atexit([] {
    if (asksLate) std::fputs(getLibrary(nullptr)->isLoaded() ? "loaded\n" : "not loaded\n", stderr);
});

TEST_F(ProcessExitTest, AnswersWithALibraryThatIsNotLoadedAfterItsEnd) {
    const auto endAndAsk = [] {
        asksLate = true;
        endProcess(false);
    };
    EXPECT_EXIT(endAndAsk(), testing::ExitedWithCode(0), created + std::string("exit\nnot loaded\n$"));
}

TEST_F(ProcessExitTest, DoesNotTellAnExplicitlyLoadedEngineToExit) {
    EXPECT_EXIT(endProcess(true), testing::ExitedWithCode(0), created + std::string("$"));
}

}  // namespace
