// zant rehearse: does to a plug-in what hosts do, each thing in a process of its own, and tells what went wrong.

#include <fmt/core.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <system_error>

#include "app/childprocess.h"
#include "app/libraryfile.h"
#include "app/program.h"
#include "app/session.h"
#include "own/dlplatform.h"
#include "own/environment.h"
#include "own/stopsignals.h"
#include "testkit/environment.h"

namespace Zant::App {
namespace {

namespace fs = std::filesystem;

using Platform::Binding;
using Platform::StopSignals;

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
    Plugin(const Rehearsed& rehearsed, const fs::path& file, Binding binding = Binding::Now) : options_(rehearsed) {
        tellParent("the plug-in was opened");
        handle_ = Platform::openFile(file.u8string().c_str(), binding);
        if (handle_) return;
        fmt::print(stderr, "{}\n", Platform::lastReason());
        throw EndsEarly{CannotOpen};
    }

    bool has(const Hook& hook) const { return Platform::findProcedure(handle_, hook.name.c_str()) != nullptr; }
    void start() const {
        auto* function = find<int (*)(const char*)>(options_.start);
        if (function && !function(options_.engine.c_str())) throw EndsEarly{CannotStart};
    }
    void work() const { call(options_.work); }
    void stop() const { call(options_.stop); }
    void close() const {
        tellParent("the plug-in was closed");
        Platform::closeFile(handle_);
        tellParent("the host went on after it had closed the plug-in");
    }

private:
    template <class Function>
    Function find(const Hook& hook) const {
        tellParent(hook.name + " ran");
        return reinterpret_cast<Function>(Platform::findProcedure(handle_, hook.name.c_str()));
    }
    void call(const Hook& hook) const {
        if (auto* function = find<void (*)()>(hook)) function();
    }

    const Rehearsed& options_;
    void* handle_;
};

fs::path fileOf(const Rehearsed& options) {
    return fs::u8path(options.plugin);
}

void demandCommonScope() {
    if (!Platform::hasCommonScope()) throw EndsEarly{NotPossibleHere};
}

/// Says which of the hooks are there.
void lookForHooks(const Rehearsed& options) {
    const Plugin plugin(options, fileOf(options));
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
    Plugin(options, fileOf(options)).close();
}

void wholeLife(const Rehearsed& options) {
    const Plugin plugin(options, fileOf(options));
    live(plugin);
    plugin.close();
}

void threeLives(const Rehearsed& options) {
    const Plugin plugin(options, fileOf(options));
    for (int i = 0; i < 3; ++i)
        live(plugin);
    plugin.close();
}

void reopened(const Rehearsed& options) {
    wholeLife(options);
    wholeLife(options);
}

void globalScope(const Rehearsed& options) {
    demandCommonScope();
    const Plugin plugin(options, fileOf(options), Binding::NowForAll);
    live(plugin);
    plugin.close();
}

/// Another plug-in with the same code: the platform would open the same file only once.
void twoCopies(const Rehearsed& options, Binding binding) {
    const fs::path other = options.folder / "copy.so";
    fs::copy_file(fileOf(options), other, fs::copy_options::overwrite_existing);
    const Plugin first(options, fileOf(options), binding);
    const Plugin second(options, other, binding);
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
    twoCopies(options, Binding::Now);
}

void twoGlobalCopies(const Rehearsed& options) {
    demandCommonScope();
    twoCopies(options, Binding::NowForAll);
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
    const Plugin plugin(options, fileOf(options));
    std::async(std::launch::async, [&] { plugin.start(); }).get();
    std::async(std::launch::async, [&] { plugin.work(); }).get();
    plugin.stop();
    plugin.close();
}

void exitWithoutStop(const Rehearsed& options) {
    const Plugin plugin(options, fileOf(options));
    plugin.start();
    plugin.work();
}

void closedWithoutStop(const Rehearsed& options) {
    exitWithoutStop(options);
    Plugin(options, fileOf(options)).close();
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

fs::path watchFile(const Rehearsed& options) {
    return options.folder / "watch.txt";
}

const Rehearsal& find(const std::string& name) {
    const auto named = [&](const Rehearsal& rehearsal) { return name == rehearsal.name; };
    return name == hooks.name ? hooks : *std::find_if(std::begin(rehearsals), std::end(rehearsals), named);
}

/// What the child is told: the rehearsal, its folder, and what it was asked for.
Arguments told(const Rehearsal& rehearsal, const Rehearsed& options) {
    Arguments words{rehearsal.name, options.folder.u8string(), options.plugin, options.engine};
    for (const Hook* hook : {&options.start, &options.work, &options.stop})
        words.insert(words.end(), {hook->name, hook->named ? "named" : ""});
    return words;
}

Rehearsed understood(const Arguments& words) {
    Rehearsed options;
    options.folder = fs::u8path(words.at(1));
    options.plugin = words.at(2);
    options.engine = words.at(3);
    size_t at = 4;
    for (Hook* hook : {&options.start, &options.work, &options.stop}) {
        hook->name = words.at(at++);
        hook->named = !words.at(at++).empty();
    }
    return options;
}

int rehearseInChild(const Arguments& words) {
    const Rehearsed options = understood(words);
    Platform::setVariable("ZANT_LOOPBACK_WATCH", watchFile(options).u8string());
    try {
        find(words.at(0)).act(options);
    } catch (const EndsEarly& end) {
        return end.answer;
    }
    return Ended;
}

// ---- the parent's side ----------------------------------------------------------------------------------------------

/// Empty when all went well.
std::string outcome(const ChildEnd& end) {
    switch (end.answer()) {
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
    fs::remove(watchFile(options));
    const ChildRules rules{std::chrono::seconds(options.timeLimit), signals.flag()};
    const ChildEnd end = runInChild(rehearsing, told(rehearsal, options), rules, relay);
    if (signals.received()) return false;
    if (end.answer() == NotPossibleHere) {
        fmt::print("{:<52} left out: not possible on this machine\n", rehearsal.name);
        return true;
    }
    const std::string wrong = outcome(end);
    fmt::print("{:<52} {}\n", rehearsal.name, wrong.empty() ? "ended" : wrong);
    if (!wrong.empty() && rehearsal.advice) fmt::print("    {}\n", rehearsal.advice);
    return showWatch(watchFile(options)) && wrong.empty();
}

/// Whether the plug-in's file can be one, and has the hooks. Otherwise nothing would be rehearsed.
bool isRehearsable(const Rehearsed& options, const StopSignals& signals) {
    const std::string fault = lookAtLibraryFile(options.plugin).fault;
    if (!fault.empty()) fmt::print("{}: {}\n", options.plugin, fault);
    return fault.empty() && rehearse(hooks, options, signals);
}

bool rehearseIn(Rehearsed options, const StopSignals& signals) {
    const Testkit::TemporaryFolder folder;
    options.folder = fs::u8path(folder.name());
    bool fine = isRehearsable(options, signals);
    if (!fine) return false;
    for (const Rehearsal& rehearsal : rehearsals)
        if (!signals.received()) fine &= rehearse(rehearsal, options, signals);
    return fine;
}

}  // namespace

const ChildTask rehearsing{"rehearse", rehearseInChild, true};

int rehearse(const RehearseOptions& options) {
    Rehearsed rehearsed{options, {}};
    rehearsed.plugin = fs::absolute(fs::u8path(options.plugin)).u8string();
    rehearsed.engine = engineDirectory(options.engine);
    StopSignals signals;
    const bool fine = rehearseIn(rehearsed, signals);
    signals.passOn();
    fmt::print("{}\n", fine ? "nothing found" : "see above");
    return fine ? Fine : InputHasErrors;
}

}  // namespace Zant::App
