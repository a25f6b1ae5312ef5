// zant probe: explains, step by step, why an engine loads or does not.

#include "app/probe.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>

#include "app/libraryfile.h"
#include "app/missingslots.h"
#include "app/program.h"
#include "client/engine/library.h"
#include "own/dlplatform.h"

namespace Zant::App {
namespace {

constexpr size_t keptOutput = 1 << 20;  // of what an engine prints; more is shown and not kept

std::string line(const char* step, const std::string& finding) {
    return fmt::format("{:<12} {}\n", step, finding);
}

// ---- inside of the child --------------------------------------------------------------------------------------------

// What the child found out, as its exit code.
enum Answer { Loads = 0, DoesNotLoad = 1, LoadsWithGaps = 2 };

bool gapsFound = false;
bool hostEnds = false;  // loading goes no further: there is no second name to be tried
void (*entryPoint)(Library*) = nullptr;

/// Flushed at once: the next step may end the process.
void say(const char* step, const std::string& finding) {
    fmt::print("{}", line(step, finding));
    std::fflush(stdout);
}

void sayGap(const char* step, const std::string& what, const std::string& who) {
    say(step, what + ": " + who);
    gapsFound = true;
}

bool isSeparator(char c) {
    return c == '/' || c == std::filesystem::path::preferred_separator;
}

void probeDirectory(const std::string& directory) {
    say("directory", directory.empty() ? "(none: the platform's own search)" : directory);
    if (directory.empty() || isSeparator(directory.back())) return;
    say("", fmt::format("has no final separator, and none is inserted: did you mean {}/ ?", directory));
}

/// Whether the file can be opened at all, by its header and its size. Names without a directory are searched for.
bool probeHeader(const std::string& name) {
    const LibraryFile file =
        std::none_of(name.begin(), name.end(), isSeparator) ? LibraryFile{} : lookAtLibraryFile(name);
    if (!file.remark.empty()) sayGap("file", name, file.remark);
    if (!file.fault.empty()) say("file", name + ": " + file.fault);
    if (file.endsHost) say("", "the platform's loader maps it all the same: a host that loads it ends with SIGBUS");
    hostEnds |= file.endsHost;
    return file.fault.empty();
}

/// Opens one name with immediate binding, so that a missing symbol is found here and not at its first call.
void* tryName(const std::string& name) {
    if (!probeHeader(name)) return nullptr;
    tellParent("its file was opened");
    void* handle = Platform::openFile(name.c_str(), Platform::Binding::Now);
    if (handle) {
        say("file", name + ": opened, every symbol is there");
        return handle;
    }
    const std::string reason = Platform::lastReason();
    void* lazy = Platform::openFile(name.c_str());
    say("file", reason.rfind(name, 0) == 0 ? reason : name + ": " + reason);
    if (!lazy) return nullptr;
    say("", "opens with lazy binding all the same: a call of what is missing would end the host");
    Platform::closeFile(lazy);
    return nullptr;
}

bool probeEntryPoint(void* handle) {
    entryPoint = reinterpret_cast<void (*)(Library*)>(Platform::findProcedure(handle, "zant3_init"));
    say("entry point", entryPoint ? "zant3_init found" : "zant3_init is missing: this is not an engine");
    return entryPoint != nullptr;
}

/// Runs the engine's entry point, and tells what is missing before the client calls it.
void initAndLook(Library* library) {
    tellParent("its entry point ran");
    entryPoint(library);
    tellParent("its API version was asked for");
    if (!library->vtables.library) return;  // the refusal says it
    const std::vector<MissingSlot> missing = findMissingSlots(library->vtables);
    for (const MissingSlot& slot : missing)
        sayGap("tables", slot.what, slot.who);
    if (missing.empty()) say("tables", "all five are there, and every slot that is called");
}

bool probeVersion(Library& library) {
    if (!library.initLib(initAndLook)) {
        say("version", library.getLoadError());
        return false;
    }
    const int version = library.getLibApiVersion();
    say("version", fmt::format("library API version {}", version));
    if (version < 0) sayGap("", "a negative version", "hosts that ask for a least version will refuse it");
    return true;
}

bool probeInstance(Library& library) {
    const LibraryFunctionsVtable& table = *library.vtables.library;
    if (!table.createInstance || !table.destroyInstance) return true;  // said already
    tellParent("an instance was created");
    Instance* instance = library.createInstance();
    tellParent("its instance was released");
    library.releaseInstance(instance);
    say("instance", instance ? "created and released" : "the engine refuses to create one");
    return instance != nullptr;
}

void probeUnloading(Library& library) {
    if (!library.vtables.library->exit) return;  // said already
    tellParent("it was unloaded");
    library.unloadExplicitly();
}

/// What loadExplicitly() does, each step by itself. The library object dies here, inside the child.
bool probeLoading(void* handle) {
    Library library(nullptr);
    library.flags &= ~AUTO_UNLOAD;
    library.moduleHandle = handle;
    if (!probeVersion(library)) return false;
    const bool usable = probeInstance(library);
    probeUnloading(library);
    return usable;
}

int probeInChild(const Arguments& arguments) {
    const std::string& directory = arguments.at(0);
    probeDirectory(directory);
    void* handle = tryName(directory + "zant3" ZANT_ENGINE_SUFFIX);
    if (!handle && !hostEnds) handle = tryName(directory + "zant3d" ZANT_ENGINE_SUFFIX);
    if (!handle || !probeEntryPoint(handle) || !probeLoading(handle)) return DoesNotLoad;
    return gapsFound ? LoadsWithGaps : Loads;
}

// ---- the parent's side ----------------------------------------------------------------------------------------------

const char* resultOf(const ProbeFinding& finding) {
    if (!finding.loads) return "the engine does not load";
    return finding.complete ? "the engine loads" : "the engine loads, with the gaps that are named above";
}

/// Empty when the child came to its end.
std::string whatWentWrong(const ChildEnd& end) {
    if (end.answer() >= 0) return "";
    const std::string where = end.lastWord.empty() ? "" : ", while " + end.lastWord;
    return "the engine " + end.trouble() + where +
           (end.status.missedFile ? "; a library that it needs may be cut off" : "");
}

}  // namespace

const ChildTask probing{"probe", probeInChild, false};

ProbeFinding probeEngine(const std::string& directory, std::chrono::seconds limit, const TakeOutput& output) {
    ProbeFinding finding{};
    const auto take = [&](std::string_view piece) {
        if (finding.text.size() < keptOutput) finding.text += piece;
        if (output) output(piece);
    };
    const ChildEnd end = runInChild(probing, {directory}, {limit}, take);
    const std::string wrong = whatWentWrong(end);
    if (!finding.text.empty() && finding.text.back() != '\n') take("\n");
    if (!wrong.empty()) take(line(end.inTime ? "crash" : "time", wrong));
    const int answer = wrong.empty() ? end.answer() : DoesNotLoad;
    finding.loads = answer != DoesNotLoad;
    finding.complete = answer == Loads;
    take(line("result", resultOf(finding)));
    return finding;
}

int probe(const ProbeOptions& options) {
    const auto show = [](std::string_view piece) {
        fmt::print("{}", piece);
        std::fflush(stdout);
    };
    const ProbeFinding finding = probeEngine(options.directory, std::chrono::seconds(options.timeLimit), show);
    return finding.complete ? Fine : finding.loads ? InputHasErrors : EngineNotLoaded;
}

}  // namespace Zant::App
