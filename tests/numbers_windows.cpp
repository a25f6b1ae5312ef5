#include <clocale>

void useDecimalComma();

void useDecimalComma() {
    std::setlocale(LC_ALL, "German");
}
