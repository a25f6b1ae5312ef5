#ifndef ZANT_LANGUAGE_LOOKUP_H
#define ZANT_LANGUAGE_LOOKUP_H

#include <string_view>
#include <vector>

#include "client/protos/forms.h"

namespace Zant::Language {

/// @return the number of a command word, or 0 when there is no such word
int commandNumber(std::string_view word);
/// @return the spelling of a command word, or null when the number has none
const char* commandWord(int number);

/// Finds forms for a reader who remembers something: all forms of the command of that number or name; when there is no
/// such command, all forms that hold the words ("objectAdd sphere", "image sampler"), and all whose function name
/// contains the text. Capitals, blanks and underscores make no difference.
std::vector<const Form*> findForms(std::string_view asked);

/// The word that is nearest to a misspelt one, by the number of letters to insert, drop, replace or swap.
class NearestWord {
public:
    explicit NearestWord(std::string_view misspelt) : wanted_(misspelt) {}
    /// Offers a word. Ignores null.
    void offer(const char* word);
    /// @return the nearest word so far, or null when none is near enough to be meant
    const char* best() const { return nearest_; }

private:
    std::string_view wanted_;
    const char* nearest_ = nullptr;
    size_t distance_ = 0;
};

/// @return the command word that is nearest, or null
const char* nearestCommandWord(std::string_view misspelt);

}  // namespace Zant::Language

#endif
