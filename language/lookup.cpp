// Finding forms and words for people.

#include "language/lookup.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

namespace Zant::Language {

namespace {

constexpr size_t longestWord = 40;  // of the words of any table, and of what is worth comparing

// Letters to insert, drop, replace or swap with their neighbour to get from one word to the other; any number above
// the limit when it is above that.
size_t editDistance(std::string_view from, std::string_view to, size_t limit) {
    size_t rows[3][longestWord + 1];
    size_t *before = rows[0], *last = rows[1], *row = rows[2];
    for (size_t k = 0; k <= to.size(); ++k)
        last[k] = k;
    for (size_t i = 1; i <= from.size(); ++i) {
        size_t least = row[0] = i;
        for (size_t k = 1; k <= to.size(); ++k) {
            const size_t replaced = last[k - 1] + (from[i - 1] != to[k - 1]);
            row[k] = std::min(replaced, std::min(last[k], row[k - 1]) + 1);
            const bool swapped = i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1];
            if (swapped) row[k] = std::min(row[k], before[k - 2] + 1);
            least = std::min(least, row[k]);
        }
        if (least > limit + 1) return least - 1;  // a swap reaches back over one row
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[to.size()];
}

// One bit for each letter that occurs, as far as 32 bits tell letters apart.
uint32_t lettersOf(std::string_view word) {
    uint32_t letters = 0;
    for (const char letter : word)
        letters |= uint32_t{1} << (static_cast<unsigned char>(letter) & 31);
    return letters;
}

size_t countOf(uint32_t bits) {
    size_t count = 0;
    for (; bits != 0; bits &= bits - 1)
        ++count;
    return count;
}

// What people remember of a name: "image sampler" and "imageSampler" are the same.
std::string squeezed(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        if (letter == ' ' || letter == '_') continue;
        result += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return result;
}

// Whether a squeezed text is nothing but words of a form in their order, from a place on; some may be left out.
bool goesOnWithWords(std::string_view wanted, const Form& form, uint16_t place) {
    if (wanted.empty()) return true;
    for (; place < form.tokenCount; ++place) {
        const FormToken& token = form.tokens[place];
        if (token.kind != ArgumentKind::Keyword) continue;
        const std::string word = squeezed(keywordTables()[token.table].words[token.number - 1]);
        if (wanted.substr(0, word.size()) != word) continue;
        if (goesOnWithWords(wanted.substr(word.size()), form, static_cast<uint16_t>(place + 1))) return true;
    }
    return false;
}

bool consistsOfWords(std::string_view wanted, const Form& form) {
    const std::string word = squeezed(commandWord(form.command));
    const bool begins = wanted.substr(0, word.size()) == word;
    return (begins && goesOnWithWords(wanted.substr(word.size()), form, 0)) || goesOnWithWords(wanted, form, 0);
}

template <class Fits>
std::vector<const Form*> formsThat(const Fits& fit) {
    std::vector<const Form*> result;
    for (const Form& form : allForms())
        if (fit(form)) result.push_back(&form);
    return result;
}

}  // namespace

int commandNumber(std::string_view word) {
    const KeywordTable& commands = keywordTables()[0];
    for (int k = 0; k < commands.slots; ++k) {
        if (commands.words[k] && word == commands.words[k]) return k + 1;
    }
    return 0;
}

const char* commandWord(int number) {
    const KeywordTable& commands = keywordTables()[0];
    return number >= 1 && number <= commands.slots ? commands.words[number - 1] : nullptr;
}

std::vector<const Form*> findForms(std::string_view asked) {
    const std::string wanted = squeezed(asked);
    if (wanted.empty()) return {};
    if (wanted.find_first_not_of("0123456789") == std::string::npos)
        return formsThat([&](const Form& form) { return wanted == std::to_string(form.command); });
    auto found = formsThat([&](const Form& form) { return wanted == squeezed(commandWord(form.command)); });
    if (!found.empty()) return found;
    return formsThat([&](const Form& form) {
        return consistsOfWords(wanted, form) || squeezed(form.function).find(wanted) != std::string::npos;
    });
}

void NearestWord::offer(const char* word) {
    if (!word) return;
    const std::string_view candidate(word);
    const size_t shorter = std::min(wanted_.size(), candidate.size());
    const size_t longer = std::max(wanted_.size(), candidate.size());
    // Near enough: at most a third of the letters are wrong, of short words at most one.
    const size_t allowed = std::max<size_t>(1, longer / 3);
    if (longer > longestWord || longer - shorter > allowed) return;
    // Each letter that the candidate lacks costs a step of its own.
    const uint32_t missing = lettersOf(wanted_) & ~lettersOf(candidate);
    if (countOf(missing) > allowed) return;
    const size_t letters = editDistance(wanted_, candidate, allowed);
    if (letters > allowed || (nearest_ && letters >= distance_)) return;
    nearest_ = word;
    distance_ = letters;
}

const char* nearestCommandWord(std::string_view misspelt) {
    NearestWord search(misspelt);
    for (int number = 1; number <= keywordTables()[0].slots; ++number)
        search.offer(commandWord(number));
    return search.best();
}

}  // namespace Zant::Language
