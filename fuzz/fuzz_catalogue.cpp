// Any bytes as a file of the catalogue: the generator says what is wrong, and where, or makes its functions.

#include <cstdint>
#include <sstream>

#include "client/protos/generator/vocabulary.h"
#include "client/protos/generator/writer.h"

namespace {

using namespace Generator;

void read(const std::string& name, const std::string& text, Catalogue& catalogue) {
    std::istringstream in(text);
    readCatalogue(name, in, catalogue);
}

/// Every table but those that the seeds use is put aside, so that a small catalogue can be whole.
const Catalogue& shared() {
    static const Catalogue catalogue = [] {
        std::string lines = "total 3\ntail T = d [i]; d i d\n";
        for (const Zant::KeywordTable& table : Zant::keywordTables()) {
            const std::string name = table.name;
            if (name != "cmd_strings" && name != "lightOptions_strings") lines += "reserved " + name + "\n";
        }
        Catalogue made;
        read("shared", lines, made);
        return made;
    }();
    return catalogue;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        Catalogue catalogue = shared();
        read("group", std::string(reinterpret_cast<const char*>(data), size), catalogue);
        const Vocabulary vocabulary = checkCatalogue(catalogue);
        headerText(vocabulary);
        formsText(vocabulary);
    } catch (const Fault&) {
        // Named with file and line, as it should be.
    }
    return 0;
}
