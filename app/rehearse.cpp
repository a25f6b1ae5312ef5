// zant rehearse: does to a plug-in what hosts do, each thing in a process of its own, and tells what went wrong.

#include <dlfcn.h>
#include <fmt/core.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "app/program.h"
#include "app/session.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

constexpr unsigned patienceSeconds = 30;
constexpr int cannotOpen = 100;
constexpr int cannotStart = 101;
constexpr int notPossibleHere = 102;

struct Options {
    std::string plugin;
    std::string engine;
    std::string start = "zantPluginStart";
    std::string work = "zantPluginWork";
    std::string stop = "zantPluginStop";
};

/// An open plug-in. Ends the process with a code of its own when it cannot be opened or started.
class Plugin {
public:
    Plugin(const Options& rehearsed, const fs::path& file, int scope = RTLD_LOCAL)
        : options(rehearsed), handle(dlopen(file.c_str(), RTLD_NOW | scope)) {
        if (handle) return;
        fmt::print(stderr, "{}\n", dlerror());
        std::_Exit(cannotOpen);
    }

    void start() const {
        auto* hook = reinterpret_cast<int (*)(const char*)>(dlsym(handle, options.start.c_str()));
        if (hook && !hook(options.engine.c_str())) std::_Exit(cannotStart);
    }
    void work() const { call(options.work); }
    void stop() const { call(options.stop); }
    void close() const { dlclose(handle); }

private:
    void call(const std::string& name) const {
        auto* hook = reinterpret_cast<void (*)()>(dlsym(handle, name.c_str()));
        if (hook) hook();
    }

    const Options& options;
    void* handle;
};

void live(const Plugin& plugin) {
    plugin.start();
    plugin.work();
    plugin.stop();
}

void openAndClose(const Options& options) {
    Plugin(options, options.plugin).close();
}

void wholeLife(const Options& options) {
    const Plugin plugin(options, options.plugin);
    live(plugin);
    plugin.close();
}

void threeLives(const Options& options) {
    const Plugin plugin(options, options.plugin);
    for (int i = 0; i < 3; ++i)
        live(plugin);
    plugin.close();
}

void reopened(const Options& options) {
    wholeLife(options);
    wholeLife(options);
}

void globalScope(const Options& options) {
    const Plugin plugin(options, options.plugin, RTLD_GLOBAL);
    live(plugin);
    plugin.close();
}

/// Another plug-in with the same code: the platform would open the same file only once.
void twoCopies(const Options& options) {
    const fs::path other = fs::temp_directory_path() / fmt::format("zant_rehearsal_{}.so", getpid());
    fs::copy_file(options.plugin, other, fs::copy_options::overwrite_existing);
    const Plugin first(options, options.plugin);
    const Plugin second(options, other);
    fs::remove(other);
    first.start();
    second.start();
    first.work();
    first.stop();
    first.close();
    second.work();
    second.stop();
    second.close();
}

void foreignDirectory(const Options& options) {
    const fs::path directory = fs::temp_directory_path() / fs::u8path(fmt::format("zänt rehearsal {}", getpid()));
    fs::create_directory(directory);
    fs::current_path(directory);
    wholeLife(options);
    fs::current_path("/");
    fs::remove_all(directory);
}

void commaLocale(const Options& options) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
        if (std::setlocale(LC_ALL, name)) return wholeLife(options);
    std::_Exit(notPossibleHere);
}

void otherThread(const Options& options) {
    const Plugin plugin(options, options.plugin);
    std::thread([&] { plugin.start(); }).join();
    std::thread([&] { plugin.work(); }).join();
    plugin.stop();
    plugin.close();
}

void exitWithoutStop(const Options& options) {
    const Plugin plugin(options, options.plugin);
    plugin.start();
    plugin.work();
}

void closedWithoutStop(const Options& options) {
    exitWithoutStop(options);
    Plugin(options, options.plugin).close();
}

struct Rehearsal {
    const char* name;
    void (*act)(const Options&);
};

constexpr Rehearsal rehearsals[] = {
    {"open and close", openAndClose},
    {"start, work, stop, close", wholeLife},
    {"start and stop three times", threeLives},
    {"close and open again", reopened},
    {"global symbol scope", globalScope},
    {"two copies, one unloaded while the other goes on", twoCopies},
    {"foreign working directory with non-ASCII letters", foreignDirectory},
    {"comma locale", commaLocale},
    {"started and working on other threads", otherThread},
    {"process exit without stop", exitWithoutStop},
    {"closed without stop, then process exit", closedWithoutStop},
};

[[noreturn]] void runChild(const Rehearsal& rehearsal, const Options& options, const fs::path& watch) {
    setenv("ZANT_LOOPBACK_WATCH", watch.c_str(), 1);
    alarm(patienceSeconds);
    rehearsal.act(options);
    std::exit(Fine);  // with everything that a host's end runs
}

std::string outcome(int status) {
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return fmt::format("did not come back within {} s", patienceSeconds);
    if (WIFSIGNALED(status)) return fmt::format("the process died: {}", strsignal(WTERMSIG(status)));
    switch (WEXITSTATUS(status)) {
        case Fine:
            return "";
        case cannotOpen:
            return "the plug-in cannot be opened";
        case cannotStart:
            return "the plug-in's start hook answered 0";
        default:
            return fmt::format("exit code {}", WEXITSTATUS(status));
    }
}

/// @return whether all went well.
bool rehearse(const Rehearsal& rehearsal, const Options& options) {
    const fs::path watch = fs::temp_directory_path() / fmt::format("zant_watch_{}.txt", getpid());
    fs::remove(watch);
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("cannot start a process");
    if (child == 0) runChild(rehearsal, options, watch);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == notPossibleHere) {
        fmt::print("{:<52} left out: not possible on this machine\n", rehearsal.name);
        return true;
    }
    const std::string wrong = outcome(status);
    std::ifstream seen(watch);
    bool fine = wrong.empty();
    fmt::print("{:<52} {}\n", rehearsal.name, fine ? "ended" : wrong);
    for (std::string line; std::getline(seen, line); fine = false)
        fmt::print("    the engine saw: {}\n", line);
    seen.close();
    fs::remove(watch);
    return fine;
}

int rehearseAll(Options options) {
    options.plugin = fs::absolute(options.plugin).string();
    if (options.engine.empty()) options.engine = loopbackDirectory();
    bool fine = true;
    for (const Rehearsal& rehearsal : rehearsals)
        fine &= rehearse(rehearsal, options);
    fmt::print("{}\n", fine ? "nothing found" : "see above");
    return fine ? Fine : InputHasErrors;
}

}  // namespace

void addRehearse(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("rehearse", "Do to a plug-in what hosts do, and tell what went wrong");
    auto options = std::make_shared<Options>();
    command->add_option("PLUGIN", options->plugin, "The plug-in's file")->required()->check(CLI::ExistingFile);
    command->add_option("--engine", options->engine, "Directory given to the start hook (default: loopback engine)");
    command->add_option("--start", options->start, "int hook(const char* engineDirectory), 0 for failure")
        ->capture_default_str();
    command->add_option("--work", options->work, "void hook(void), called between start and stop")
        ->capture_default_str();
    command->add_option("--stop", options->stop, "void hook(void)")->capture_default_str();
    command->callback([options, &exitCode] { exitCode = rehearseAll(*options); });
}

}  // namespace Zant::App
