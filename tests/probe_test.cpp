// zant probe, on engines with a fault each. Each platform has its own test of damaged files beside it.

#include "probetest.h"

namespace {

#ifdef __aarch64__
constexpr const char* deathByTrap = "breakpoint trap";
#else
constexpr const char* deathByTrap = "llegal instruction";
#endif

using namespace ZantProgram;

using Probe = ZantProgram::Test;

TEST_F(Probe, NamesTheFaultOfEveryEngine) {
    const struct {
        const char* engine;
        int code;
        std::vector<std::string> shown;
    } rows[] = {
        {"probe", 0, {"all five are there", "result       the engine loads\n"}},
        {"debug_only", 0, {"zant3d", "result       the engine loads\n"}},
        {"no_entry", 3, {"zant3_init is missing"}},
        {"null_table", 3, {"gave no library table"}},
        {"version_0", 3, {"API version 0"}},
        {"refuses", 3, {"refuses to create"}},
        {"not_a_module", 3, {"text, not a library: \"not a module\""}},
        {"negative_version", 1, {"version -1", "a negative version: hosts that ask for a least version"}},
        {"half_tables",
         1,
         {"no bitmap table: Bitmap symbols will crash", "no raytrace table: ", "no parser table: the first command",
          "created and released", "with the gaps"}},
        {"null_slots",
         1,
         {"library table: slot 0, exit, is null: unloading",
          "parser table: slot 4, getValue, is null: ", "created and released"}},
        {"crashes", 3, {"the engine died: ", deathByTrap, ", while its entry point ran", "does not load"}},
        {"ends_process", 3, {"ended the process, with exit code 0, while its file was opened", "does not load"}},
        {"hangs --time-limit 1", 3, {"did not come back within 1 s, while its file was opened", "does not load"}},
    };
    for (const auto& row : rows) {
        const std::string engine = row.engine, directory = engine.substr(0, engine.find(' '));
        expectShown(zant("probe " + engines + directory + "/" + engine.substr(directory.size())), row.code, row.shown);
    }
}

}  // namespace
