#ifndef ZANT_TESTS_VOCABULARY_EXPECTED_H
#define ZANT_TESTS_VOCABULARY_EXPECTED_H

#include <string>
#include <vector>

#include "tests/vocabulary/row.h"

namespace Vocabulary {

constexpr size_t functionCount = 2165;

/// One place of a row's sequence: a keyword, or the letter of an argument and its parameter.
struct Place {
    int number = 0;  // of a keyword; 0 for an argument
    std::string word = {};
    size_t parameter = 0;
};
std::vector<Place> placesOf(const Row& row);

/// What must come of a row's function when it is called with the arguments.
class Expected {
public:
    Expected(const Row& row, const Arguments& arguments) : arguments_(arguments), places_(placesOf(row)) {}

    std::vector<Event> events() const;
    std::string text(bool quick) const;
    HandmadeBlock block() const;

private:
    const Arguments& arguments_;
    std::vector<Place> places_;
};

void call(const Row& row, Zant::CommandBuffer& buffer, const Arguments& arguments);

/// Calls a row through a new buffer of the instance.
template <typename Buffer>
void send(const Row& row, Zant::Instance* instance, const Arguments& arguments) {
    Buffer buffer(instance);
    call(row, buffer, arguments);
}

}  // namespace Vocabulary

#endif
