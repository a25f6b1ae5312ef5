#include <stdlib.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

void useDecimalComma();

void useDecimalComma() {
    const std::string folder = (std::filesystem::temp_directory_path() / "zant_locales").string();
    const std::string make =
        "mkdir -p '" + folder + "' && localedef -f UTF-8 -i de_DE '" + folder + "/de_DE.UTF-8' >/dev/null 2>&1";
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") || std::system(make.c_str()) != 0) return;
    setenv("LOCPATH", folder.c_str(), 1);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    unsetenv("LOCPATH");
}
