// Writes the description of the interface as JSON. usage: zant_describe FILE
#include <fstream>
#include <iostream>

#include "description/description.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: zant_describe FILE\n";
        return 2;
    }
    std::ofstream file(argv[1]);
    Zant::Description::writeJson(file);
    file.close();
    if (!file) std::cerr << "zant_describe: cannot write " << argv[1] << '\n';
    return file ? 0 : 1;
}
