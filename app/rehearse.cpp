// zant rehearse: does to a plug-in what hosts do, each thing in a process of its own, and tells what went wrong.

#include <dlfcn.h>
#include <fmt/core.h>
#include <sys/wait.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <system_error>

#include "app/childprocess.h"
#include "app/libraryfile.h"
#include "app/program.h"
#include "app/session.h"
#include "app/stopsignals.h"
#include "testkit/environment.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

struct Rehearsed : RehearseOptions {
    fs::path folder;  ///< of this run alone
};

// ---- inside of the child --------------------------------------------------------------------------------------------

// The exit codes of a child.
enum Answer { Ended = 0, CannotOpen = 100, CannotStart = 101, NotPossibleHere = 102, HookMissing = 103 };

/// Thrown to end a rehearsal early.
struct EndsEarly {
    Answer answer;
};

/// An open plug-in.
class Plugin {
public:
    Plugin(const Rehearsed& rehearsed, const fs::path& file, int scope = RTLD_LOCAL) : options_(rehearsed) {
        tellParent("the plug-in was opened");
        handle_ = dlopen(file.c_str(), RTLD_NOW | scope);
        if (handle_) return;
        fmt::print(stderr, "{}\n", dlerror());
        throw EndsEarly{CannotOpen};
    }

    bool has(const Hook& hook) const { return dlsym(handle_, hook.name.c_str()) != nullptr; }
    void start() const {
        auto* function = find<int (*)(const char*)>(options_.start);
        if (function && !function(options_.engine.c_str())) throw EndsEarly{CannotStart};
    }
    void work() const { call(options_.work); }
    void stop() const { call(options_.stop); }
    void close() const {
        tellParent("the plug-in was closed");
        dlclose(handle_);
        tellParent("the host went on after it had closed the plug-in");
    }

private:
    template <class Function>
    Function find(const Hook& hook) const {
        tellParent(hook.name + " ran");
        return reinterpret_cast<Function>(dlsym(handle_, hook.name.c_str()));
    }
    void call(const Hook& hook) const {
        if (auto* function = find<void (*)()>(hook)) function();
    }

    const Rehearsed& options_;
    void* handle_;
};

/// Says which of the hooks are there.
void lookForHooks(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin);
    bool any = false, missing = false;
    for (const Hook* hook : {&options.start, &options.work, &options.stop}) {
        const bool found = plugin.has(*hook);
        fmt::print("hook {:<47} {}\n", hook->name, found ? "found" : hook->named ? "MISSING" : "not there");
        any |= found;
        missing |= !found && hook->named;
    }
    if (!any || missing) throw EndsEarly{HookMissing};
}

void live(const Plugin& plugin) {
    plugin.start();
    plugin.work();
    plugin.stop();
}

void openAndClose(const Rehearsed& options) {
    Plugin(options, options.plugin).close();
}

void wholeLife(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin);
    live(plugin);
    plugin.close();
}

void threeLives(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin);
    for (int i = 0; i < 3; ++i)
        live(plugin);
    plugin.close();
}

void reopened(const Rehearsed& options) {
    wholeLife(options);
    wholeLife(options);
}

void globalScope(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin, RTLD_GLOBAL);
    live(plugin);
    plugin.close();
}

/// Another plug-in with the same code: the platform would open the same file only once.
void twoCopies(const Rehearsed& options, int scope) {
    const fs::path other = options.folder / "copy.so";
    fs::copy_file(options.plugin, other, fs::copy_options::overwrite_existing);
    const Plugin first(options, options.plugin, scope);
    const Plugin second(options, other, scope);
    first.start();
    second.start();
    first.work();
    first.stop();
    first.close();
    second.work();
    second.stop();
    second.close();
}

void twoLocalCopies(const Rehearsed& options) {
    twoCopies(options, RTLD_LOCAL);
}

void twoGlobalCopies(const Rehearsed& options) {
    twoCopies(options, RTLD_GLOBAL);
}

void foreignDirectory(const Rehearsed& options) {
    const fs::path directory = options.folder / fs::u8path("zänt rehearsal");
    fs::create_directory(directory);
    fs::current_path(directory);
    wholeLife(options);
}

void commaLocale(const Rehearsed& options) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
        if (std::setlocale(LC_ALL, name)) return wholeLife(options);
    throw EndsEarly{NotPossibleHere};
}

void otherThread(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin);
    std::async(std::launch::async, [&] { plugin.start(); }).get();
    std::async(std::launch::async, [&] { plugin.work(); }).get();
    plugin.stop();
    plugin.close();
}

void exitWithoutStop(const Rehearsed& options) {
    const Plugin plugin(options, options.plugin);
    plugin.start();
    plugin.work();
}

void closedWithoutStop(const Rehearsed& options) {
    exitWithoutStop(options);
    Plugin(options, options.plugin).close();
}

struct Rehearsal {
    const char* name;
    void (*act)(const Rehearsed&);
    const char* advice = nullptr;  ///< where trouble has a usual reason
};

constexpr Rehearsal hooks{"its hooks", lookForHooks};
constexpr Rehearsal rehearsals[] = {
    {"open and close", openAndClose},
    {"start, work, stop, close", wholeLife},
    {"start and stop three times", threeLives},
    {"close and open again", reopened},
    {"global symbol scope", globalScope},
    {"two copies, one unloaded while the other goes on", twoLocalCopies},
    {"the same in global symbol scope", twoGlobalCopies,
     "two builds of a plug-in use each other's code where they export it: build it with -fvisibility=hidden"},
    {"foreign working directory with non-ASCII letters", foreignDirectory},
    {"comma locale", commaLocale},
    {"started and working on other threads", otherThread},
    {"process exit without stop", exitWithoutStop},
    {"closed without stop, then process exit", closedWithoutStop},
};

int actOf(const Rehearsal& rehearsal, const Rehearsed& options, const fs::path& watch) {
    setenv("ZANT_LOOPBACK_WATCH", watch.c_str(), 1);
    try {
        rehearsal.act(options);
    } catch (const EndsEarly& end) {
        return end.answer;
    }
    return Ended;
}

// ---- the parent's side ----------------------------------------------------------------------------------------------

/// Empty when all went well.
std::string outcome(const ChildEnd& end) {
    if (end.finished && end.inTime && WIFEXITED(end.status)) switch (WEXITSTATUS(end.status)) {
            case CannotOpen:
                return "the plug-in cannot be opened";
            case CannotStart:
                return "the plug-in's start hook answered 0";
            case HookMissing:
                return "not as named; --start, --work and --stop name other hooks";
            default:
                break;
        }
    const std::string trouble = end.trouble();
    return trouble.empty() || end.lastWord.empty() ? trouble : trouble + ", while " + end.lastWord;
}

bool wasLeftOut(const ChildEnd& end) {
    return end.finished && WIFEXITED(end.status) && WEXITSTATUS(end.status) == NotPossibleHere;
}

/// @return whether the engine saw nothing that the contract forbids.
bool showWatch(const fs::path& watch) {
    std::ifstream seen(watch);
    bool fine = true;
    for (std::string line; std::getline(seen, line); fine = false)
        fmt::print("    the engine saw: {}\n", line);
    return fine;
}

void relay(std::string_view text) {
    fmt::print("{}", text);
    std::fflush(stdout);
}

/// @return whether all went well.
bool rehearse(const Rehearsal& rehearsal, const Rehearsed& options, const StopSignals& signals) {
    const fs::path watch = options.folder / "watch.txt";
    fs::remove(watch);
    const ChildRules rules{std::chrono::seconds(options.timeLimit), true, signals.flag()};
    const ChildEnd end = runInChild([&] { return actOf(rehearsal, options, watch); }, rules, relay);
    if (signals.received()) return false;
    if (wasLeftOut(end)) {
        fmt::print("{:<52} left out: not possible on this machine\n", rehearsal.name);
        return true;
    }
    const std::string wrong = outcome(end);
    fmt::print("{:<52} {}\n", rehearsal.name, wrong.empty() ? "ended" : wrong);
    if (!wrong.empty() && rehearsal.advice) fmt::print("    {}\n", rehearsal.advice);
    return showWatch(watch) && wrong.empty();
}

/// Whether the plug-in's file can be one, and has the hooks. Otherwise nothing would be rehearsed.
bool isRehearsable(const Rehearsed& options, const StopSignals& signals) {
    const std::string fault = lookAtLibraryFile(options.plugin).fault;
    if (!fault.empty()) fmt::print("{}: {}\n", options.plugin, fault);
    return fault.empty() && rehearse(hooks, options, signals);
}

bool rehearseIn(Rehearsed options, const StopSignals& signals) {
    const Testkit::TemporaryFolder folder;
    options.folder = folder.name();
    bool fine = isRehearsable(options, signals);
    if (!fine) return false;
    for (const Rehearsal& rehearsal : rehearsals)
        if (!signals.received()) fine &= rehearse(rehearsal, options, signals);
    return fine;
}

}  // namespace

int rehearse(const RehearseOptions& options) {
    Rehearsed rehearsed{options, {}};
    rehearsed.plugin = fs::absolute(options.plugin).string();
    if (options.engine.empty()) rehearsed.engine = loopbackDirectory();
    StopSignals signals;
    const bool fine = rehearseIn(rehearsed, signals);
    signals.passOn();
    fmt::print("{}\n", fine ? "nothing found" : "see above");
    return fine ? Fine : InputHasErrors;
}

}  // namespace Zant::App
