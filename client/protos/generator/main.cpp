// Writes the header, the sources and the form tables of the typed command functions from the catalogue.
// Usage: generator OUTPUT-DIRECTORY CATALOGUE-FILE...

#include <fstream>
#include <iostream>
#include <sstream>

#include "client/protos/generator/writer.h"

namespace {

using namespace Generator;

std::string fileName(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

void readFile(const std::string& path, Catalogue& catalogue) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path + ": cannot be read");
    readCatalogue(path, file, catalogue);
}

/// Leaves a file alone that has this content already, so that nothing is compiled again for it.
void writeFile(const std::string& path, const std::string& text) {
    std::ifstream present(path, std::ios::binary);
    std::ostringstream content;
    content << present.rdbuf();
    if (present && content.str() == text) return;
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

void generate(const std::string& directory, const Vocabulary& vocabulary) {
    const std::string protos = directory + "/client/protos/";
    writeFile(directory + "/client/keywords/numbers.h", numbersText());
    writeFile(protos + "protos.h", headerText(vocabulary));
    for (const CheckedGroup& group : vocabulary.groups) {
        writeFile(protos + "protos_" + group.name + ".cpp", sourceText(group));
        writeFile(directory + "/modern/commands/" + group.name + ".h", membersText(group));
    }
    writeFile(protos + "forms.cpp", formsText(vocabulary));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: " << fileName(argv[0]) << " OUTPUT-DIRECTORY CATALOGUE-FILE...\n";
        return 2;
    }
    try {
        Catalogue catalogue;
        for (int index = 2; index < argc; ++index)
            readFile(argv[index], catalogue);
        generate(argv[1], checkCatalogue(catalogue));
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << "\n";
        return 1;
    }
    return 0;
}
