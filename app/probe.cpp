// zant probe: explains, step by step, why an engine loads or does not.

#include <dlfcn.h>
#include <fmt/core.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

#include "app/probe.h"
#include "app/program.h"
#include "client/engine/library.h"

namespace Zant::App {
namespace {

std::string line(const char* step, const std::string& finding) {
    return fmt::format("{:<12} {}\n", step, finding);
}

/// Flushed at once: the next step may end the process.
void say(const char* step, const std::string& finding) {
    fmt::print("{}", line(step, finding));
    std::fflush(stdout);
}

void probeDirectory(const std::string& directory) {
    say("directory", directory.empty() ? "(none: the platform's own search)" : directory);
    if (directory.empty() || directory.back() == '/') return;
    say("", fmt::format("has no final separator, and none is inserted: did you mean {}/ ?", directory));
}

/// Opens one name with immediate binding, so that a missing symbol is found here and not at its first call.
void* tryName(const std::string& name) {
    void* handle = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle) {
        say("file", name + ": opened, every symbol is there");
        return handle;
    }
    const std::string reason = dlerror();
    void* lazy = dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL);
    say("file", reason.rfind(name, 0) == 0 ? reason : name + ": " + reason);
    if (!lazy) return nullptr;
    say("", "opens with lazy binding all the same: a call of what is missing would end the host");
    dlclose(lazy);
    return nullptr;
}

bool probeEntryPoint(void* handle) {
    const bool found = dlsym(handle, "zant3_init") != nullptr;
    say("entry point", found ? "zant3_init found" : "zant3_init is missing: this is not an engine");
    return found;
}

bool probeTables(const Library& library) {
    const Vtables& tables = library.vtables;
    const bool complete = tables.library && tables.mt && tables.bitmap && tables.raytrace && tables.parser;
    say("tables", complete ? "all five are there" : "not all five are there");
    return complete;
}

bool probeInstance(Library& library) {
    Instance* instance = library.createInstance();
    say("instance", instance ? "created and released" : "the engine refuses to create one");
    library.releaseInstance(instance);
    return instance != nullptr;
}

/// Loads as a host does. The library object dies here, inside the child.
bool probeLoading(const std::string& directory) {
    Library library(nullptr);
    if (!library.loadExplicitly(directory.c_str())) {
        say("version", library.getLoadError());
        return false;
    }
    say("version", fmt::format("library API version {}", library.getLibApiVersion()));
    const bool usable = probeTables(library) && probeInstance(library);
    library.unloadExplicitly();
    return usable;
}

int probeInChild(const std::string& directory) {
    probeDirectory(directory);
    void* handle = tryName(directory + "zant3" ZANT_ENGINE_SUFFIX);
    if (!handle) handle = tryName(directory + "zant3d" ZANT_ENGINE_SUFFIX);
    if (!handle || !probeEntryPoint(handle)) return EngineNotLoaded;
    dlclose(handle);
    return probeLoading(directory) ? Fine : EngineNotLoaded;
}

/// What the child writes, until it ends.
std::string readAll(int pipeEnd) {
    std::string text;
    char piece[512];
    for (ssize_t count; (count = read(pipeEnd, piece, sizeof piece)) > 0;)
        text.append(piece, static_cast<size_t>(count));
    close(pipeEnd);
    return text;
}

[[noreturn]] void runChild(const std::string& directory, const int (&ends)[2]) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    const int code = probeInChild(directory);
    std::fflush(nullptr);
    _exit(code);
}

}  // namespace

ProbeFinding probeEngine(const std::string& directory) {
    int ends[2];
    std::fflush(nullptr);
    if (pipe(ends) != 0) throw std::runtime_error("cannot start the probing process");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("cannot start the probing process");
    if (child == 0) runChild(directory, ends);
    close(ends[1]);
    ProbeFinding finding{readAll(ends[0]), false};
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status))
        finding.text += line("crash", fmt::format("the engine died: {}", strsignal(WTERMSIG(status))));
    finding.loads = WIFEXITED(status) && WEXITSTATUS(status) == Fine;
    finding.text += line("result", finding.loads ? "the engine loads" : "the engine does not load");
    return finding;
}

void addProbe(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("probe", "Say, step by step, why an engine loads or does not");
    auto directory = std::make_shared<std::string>();
    command->add_option("DIR", *directory, "Directory of the engine file, with its final separator")->required();
    command->callback([directory, &exitCode] {
        const ProbeFinding finding = probeEngine(*directory);
        fmt::print("{}", finding.text);
        exitCode = finding.loads ? Fine : EngineNotLoaded;
    });
}

}  // namespace Zant::App
