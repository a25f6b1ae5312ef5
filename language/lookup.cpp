// Finding forms and words for people.

#include "language/lookup.h"

#include <algorithm>
#include <cstring>

namespace Zant {

namespace {

// Letters to insert, drop, replace or swap with their neighbour to get from one word to the other.
size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<size_t> before(to.size() + 1), last(to.size() + 1), row(to.size() + 1);
    for (size_t k = 0; k <= to.size(); ++k)
        last[k] = k;
    for (size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (size_t k = 1; k <= to.size(); ++k) {
            const size_t replaced = last[k - 1] + (from[i - 1] != to[k - 1]);
            row[k] = std::min({replaced, last[k] + 1, row[k - 1] + 1});
            const bool swapped = i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1];
            if (swapped) row[k] = std::min(row[k], before[k - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last[to.size()];
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

std::vector<const Form*> findForms(std::string_view wordOrPartOfName) {
    std::vector<const Form*> result;
    for (const Form& form : formsOf(commandNumber(wordOrPartOfName)))
        result.push_back(&form);
    if (!result.empty() || wordOrPartOfName.empty()) return result;
    for (const Form& form : allForms()) {
        if (std::string_view(form.function).find(wordOrPartOfName) != std::string_view::npos) result.push_back(&form);
    }
    return result;
}

void NearestWord::offer(const char* word) {
    constexpr size_t longest = 64;  // of the words of any table, and what is worth comparing
    if (!word || wanted.size() > longest) return;
    const size_t letters = editDistance(wanted, word);
    // Near enough: at most a third of the letters are wrong, of short words at most one.
    const size_t allowed = std::max<size_t>(1, std::max(wanted.size(), std::strlen(word)) / 3);
    if (letters > allowed || (nearest && letters >= distance)) return;
    nearest = word;
    distance = letters;
}

const char* nearestCommandWord(std::string_view misspelt) {
    NearestWord search(misspelt);
    for (int number = 1; number <= keywordTables()[0].slots; ++number)
        search.offer(commandWord(number));
    return search.best();
}

}  // namespace Zant
