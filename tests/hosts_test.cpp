// Plug-ins inside a host, each host a process of its own: several copies of the client side by side, and ends of every
// kind. The engine watches; what it was sent and what it complains about is compared.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <locale>
#include <string>

#include "loopbackhost.h"

// The leak checker's, where the build has one.
extern "C" __attribute__((weak)) void __lsan_disable();

namespace {

namespace fs = std::filesystem;
using Zant::Testkit::TemporaryFolder;
using Zant::Tests::Environment;
using Zant::Tests::TemporaryFile;

const std::string pluginFolder = ZANT_TEST_PLUGINS;
const std::string engineFolder = ZANT_LOOPBACK_DIR;

// ---- inside of a host -----------------------------------------------------------------------------------------------

void demand(bool condition, const std::string& text) {
    if (condition) return;
    std::fprintf(stderr, "in the host: %s\n", text.c_str());
    std::_Exit(1);
}

/// For hosts whose end leaves memory behind that is not the client's: plug-ins that are never told to stop, and the
/// C library's own list of locale folders.
void acceptLeaks() {
    if (__lsan_disable) __lsan_disable();
}

/// A module that the host has opened.
class Module {
public:
    Module(const std::string& moduleFile, int scope)
        : file(moduleFile), handle(dlopen(file.c_str(), RTLD_NOW | scope)) {
        demand(handle, handle ? "" : dlerror());
    }

    template <class Function>
    Function* find(const char* name) const {
        auto* const function = reinterpret_cast<Function*>(dlsym(handle, name));
        demand(function, name);
        return function;
    }

    /// Closes it, for good.
    void close() const {
        dlclose(handle);
        demand(!dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD), file + " is still there after it was closed");
    }

private:
    std::string file;
    void* handle;
};

/// A plug-in with the hooks that `zant rehearse` calls.
class Plugin : public Module {
public:
    explicit Plugin(const char* name, int scope = RTLD_LOCAL) : Module(pluginFolder + name + ".so", scope) {}
    void start(const std::string& engine = engineFolder) const {
        demand(find<int(const char*)>("zantPluginStart")(engine.c_str()), "the plug-in does not start in " + engine);
    }
    void work() const { find<void()>("zantPluginWork")(); }
    void stop() const { find<void()>("zantPluginStop")(); }
};

/// The shared library, as a host in any language uses it.
class Shared : public Module {
public:
    explicit Shared(int scope) : Module(ZANT_SHARED_LIBRARY, scope) {}
    void start() {
        demand(find<int(const char*)>("ZantLibraryLoad")(engineFolder.c_str()), "the shared library does not load");
        instance = find<void*()>("ZantLibraryCreateInstance")();
    }
    void work() const {
        const int code =
            find<int(void*, const char*, const char*)>("ZantInstanceParse")(instance, "fg render;", "host");
        demand(code == 0, "parsing answers " + std::to_string(code));
    }
    void stop() const { find<void()>("ZantLibraryUnload")(); }

private:
    void* instance = nullptr;
};

// What the engine writes down of one call of work().
const std::string one = "fg gradients,0.5,1;\nfg gradients,0.25,1;\n";
const std::string two = "fg gradients,0.5,2;\nfg gradients,0.25,2;\n";
const std::string shared = "fg render;\n";

// ---- around it ------------------------------------------------------------------------------------------------------

struct Seen {
    std::string commands;
    std::string complaints;
};

/// Runs a host to its end, which must be a good one.
Seen runHost(const std::function<void()>& host) {
    const TemporaryFile transcript, watch;
    const Environment environment{{"ZANT_LOOPBACK_TRANSCRIPT", transcript.name()},
                                  {"ZANT_LOOPBACK_WATCH", watch.name()}};
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);
        host();
        std::exit(0);  // with everything that a host's end runs
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    return {transcript.content(), watch.content()};
}

void expectHost(const char* name, const std::string& commands, const std::function<void()>& host) {
    const Seen seen = runHost(host);
    EXPECT_EQ(seen.commands, commands) << name;
    EXPECT_EQ(seen.complaints, "") << name;
}

TEST(Hosts, CopiesOfTheClientGoOnWhenOthersLeave) {
    for (const int scope : {RTLD_LOCAL, RTLD_GLOBAL})
        expectHost("scope", one + two + shared + two + shared + two + one + two, [scope] {
            const Plugin first("plugin_one", scope), second("plugin_two", scope);
            Shared third(scope);
            first.start(), second.start(), third.start();
            first.work(), second.work(), third.work();
            first.stop(), first.close();
            second.work(), third.work();
            third.stop(), third.close();
            second.work();
            const Plugin again("plugin_one", scope);
            again.start(), again.work();
            second.work(), second.stop(), second.close();
            again.stop(), again.close();
        });
}

TEST(Hosts, LeaveInEveryOrderAtTheEndOfTheProcess) {
    // Bit by bit: whether each of the three is stopped, and whether it is closed, before the process ends.
    int ends = 0;
    for (int bits = 0; bits < 64; bits += 3, ++ends)
        expectHost("end", one + two + shared, [bits] {
            if ((bits & 3) != 3) acceptLeaks();
            const Plugin first("plugin_one"), second("plugin_two");
            Shared third(RTLD_LOCAL);
            first.start(), second.start(), third.start();
            first.work(), second.work(), third.work();
            if (bits & 1) first.stop();
            if (bits & 2) second.stop();
            if (bits & 4) third.stop();
            if (bits & 8) first.close();
            if (bits & 16) second.close();
            if (bits & 32) third.close();
        });
    EXPECT_EQ(ends, 22);
}

TEST(Hosts, WorkAnywhereWithAnyFolderName) {
    const TemporaryFolder temporary;
    const fs::path folder = temporary.name() + "/zänt host 画";
    fs::create_directory(folder);
    fs::create_directory_symlink(engineFolder, folder / "moteur é");
    const std::string engine = (folder / "moteur é" / "").string();
    expectHost("a folder with spaces and letters", one, [&] {
        fs::current_path("/");
        const Plugin plugin("plugin_one");
        plugin.start(engine), plugin.work(), plugin.stop();
    });
    expectHost("a relative folder, left afterwards", one + one, [&] {
        fs::current_path(folder);
        const Plugin plugin("plugin_one");
        plugin.start("./moteur é/"), plugin.work();
        fs::current_path("/");
        plugin.work(), plugin.stop(), plugin.close();
    });
}

TEST(Hosts, MayUseADecimalComma) {
    if (!fs::exists(pluginFolder + "locales/de_DE.UTF-8/LC_NUMERIC")) GTEST_SKIP() << "no localedef here";
    expectHost("comma", one + shared, [] {
        acceptLeaks();
        setenv("LOCPATH", (pluginFolder + "locales").c_str(), 1);
        std::locale::global(std::locale("de_DE.UTF-8"));
        demand(std::localeconv()->decimal_point[0] == ',', "no decimal comma");
        const Plugin plugin("plugin_one");
        Shared library(RTLD_LOCAL);
        plugin.start(), library.start();
        plugin.work(), library.work();
        plugin.stop(), library.stop();
    });
}

TEST(Hosts, AreLeftByAPluginWithEveryPartOfTheModernFace) {
    const Seen seen = runHost([] {
        for (int round = 0; round < 2; ++round) {
            const Plugin plugin("plugin_modern", RTLD_GLOBAL);
            plugin.start(), plugin.work(), plugin.work(), plugin.stop(), plugin.close();
        }
    });
    for (const char* sent : {"surface a_x20red_x20one,color;", "run", "mesh quad;", "surface black,black;"})
        EXPECT_NE(seen.commands.find(sent), std::string::npos) << seen.commands;
    EXPECT_EQ(seen.complaints, "");
}

TEST(Hosts, SeeAMistakeOfTheirPlugins) {
    const Environment environment{{"ZANT_TEST_MISTAKE", "after-release"}};
    const Seen seen = runHost([] {
        const Plugin plugin("plugin_mistaken");
        plugin.start(), plugin.work(), plugin.stop();
    });
    EXPECT_EQ(seen.complaints, "parse: the parser context is no longer alive\n");
}

}  // namespace
