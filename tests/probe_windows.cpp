// zant probe on engine files of Windows that are damaged in every way.

#include <windows.h>

#include <cstring>

#include "probetest.h"

namespace {

using namespace ZantProgram;

class DllFile : public ProbeFile {
protected:
    template <class Change>
    Outcome probeWith(const Change& change) const {
        IMAGE_DOS_HEADER first;
        std::memcpy(&first, good.data(), sizeof first);
        return probeChanged<IMAGE_FILE_HEADER>(static_cast<size_t>(first.e_lfanew) + sizeof(DWORD), change);
    }
};

TEST_F(DllFile, OfAnotherKindIsSaidInWords) {
    expectFault(probe(""), "an empty file");
    expectFault(probe("oops"), "text, not a library: \"oops\"");
    expectFault(probe("\x7F"
                      "ELF\x02"),
                "a library for Linux");
    expectFault(probe("\x01\x02\x03\x04\x05"), "not a library: no header that begins with 4d 5a, but with 01 02 03 04");
    expectFault(probe("MZ" + std::string(510, '\0')), "a program for DOS");
    expectFault(probeWith([](IMAGE_FILE_HEADER& h) { h.Machine = IMAGE_FILE_MACHINE_ARM64; }),
                "for another processor (aarch64), this program is for x86-64");
    expectFault(probeWith([](IMAGE_FILE_HEADER& h) { h.Characteristics &= static_cast<WORD>(~IMAGE_FILE_DLL); }),
                "a program, not a library");
}

TEST_F(DllFile, CutOffAnywhereIsSaidOrDoesNotMatter) {
    size_t cut = 0, loaded = 0;
    for (size_t size = 2; size < good.size(); size += 1 + good.size() / 15) {
        const Outcome result = probe(good.substr(0, size));
        if (result.code == 0 && ++loaded) continue;  // names for debuggers stand behind all that is loaded
        expectShown(result, 3, {"cut off: " + std::to_string(size) + " bytes where its header asks for "});
        EXPECT_EQ(loaded, 0u) << "a shorter file loads";
        ++cut;
    }
    EXPECT_GE(cut, 5u);
    EXPECT_EQ(probe(good).code, 0);
}

}  // namespace
