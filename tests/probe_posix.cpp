// zant probe as a shell sees it, and on engine files of Linux that are damaged in every way.

#include <elf.h>
#include <link.h>

#include <chrono>
#include <cstring>

#include "probetest.h"
#include "shell.h"

namespace {

using namespace ZantProgram;
using ProbeOutput = ZantProgram::Test;

TEST_F(ProbeOutput, ShowsEachStepAsItComes) {
    const auto start = std::chrono::steady_clock::now();
    Running program(lineOf("probe --time-limit 600 " + engines + "hangs/"));
    EXPECT_TRUE(program.waitFor("the engine says hello"));
    // The end of the output comes when nobody holds it any more: the hanging child has gone with the program.
    EXPECT_EQ(program.end(SIGTERM).code, -SIGTERM);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// ---- files ----------------------------------------------------------------------------------------------------------

using Header = ElfW(Ehdr);

class ElfFile : public ProbeFile {
protected:
    template <class Change>
    Outcome probeWith(const Change& change) const {
        return probeChanged<Header>(0, change);
    }
};

TEST_F(ElfFile, OfAnotherKindIsSaidInWords) {
    expectFault(probe(""), "an empty file");
    expectFault(probe("oops"), "text, not a library: \"oops\"");
    expectFault(probe("MZ\x90"), "a Windows DLL");
    expectFault(probe("\xCF\xFA\xED\xFE\x0C"), "a Mach-O file");
    expectFault(probe("!<arch>\nlib.o/"), "a static library");
    expectFault(probe(std::string(5000, '\0')), "zero bytes");
    expectFault(probe("\x01\x02\x03\x04\x05"), "not a library: no header that begins with 7f 45 4c 46, but with 01 02");
    Header own;
    std::memcpy(&own, good.data(), sizeof own);
    const bool isArm = own.e_machine == EM_AARCH64;
    expectFault(probeWith([=](Header& h) { h.e_machine = isArm ? EM_X86_64 : EM_AARCH64; }),
                std::string("for another processor (") + (isArm ? "x86-64" : "aarch64"));
    expectFault(probeWith([](Header& h) { h.e_ident[EI_CLASS] ^= ELFCLASS32 ^ ELFCLASS64; }),
                "for another processor (");
    expectFault(probeWith([](Header& h) { h.e_type = ET_REL; }), "an object file");
    expectFault(probeWith([](Header& h) { h.e_type = ET_EXEC; }), "a program");
    std::filesystem::remove(folder + "/" + engineName);
    std::filesystem::create_directory(folder + "/" + engineName);
    expectFault(zant("probe ./"), "a directory");
}

TEST_F(ElfFile, CutOffAnywhereIsNeverMapped) {
    Header header;
    std::memcpy(&header, good.data(), sizeof header);
    EXPECT_EQ(good.size(), header.e_shoff + header.e_shnum * sizeof(ElfW(Shdr))) << "the last thing in the file";
    const std::string whole = std::to_string(good.size());
    size_t checked = 0, loaded = 0;
    for (size_t size = 1; size < good.size(); size += 1 + good.size() / 60, ++checked) {
        const Outcome result = probe(good.substr(0, size));
        // What the loader does not need may be missing: then it loads, and the gap is named.
        loaded += result.code == 1;
        expectShown(result, result.code == 1 ? 1 : 3,
                    {"cut off: " + std::to_string(size) + " bytes where its header asks for " +
                     (size < sizeof(Header) ? "64" : whole)});
        EXPECT_EQ(result.output.find("died"), std::string::npos) << result;
    }
    write("zant3d" ZANT_ENGINE_SUFFIX, good);
    const Outcome cut = probe(good.substr(0, 4096));
    EXPECT_EQ(countOf("ends with SIGBUS", cut.output), 1u) << cut.output;
    EXPECT_EQ(countOf("zant3d", cut.output), 0u) << "a host does not live to try the second name";
    EXPECT_GE(checked, 50u);
    EXPECT_GT(loaded, 0u);
    EXPECT_LT(loaded, checked);
    expectFault(probeWith([](Header& h) { h.e_phoff = UINT64_MAX - 7; }), "cut off: " + whole + " bytes");
}

}  // namespace
