#ifndef ZANT_LANGUAGE_MISMATCH_H
#define ZANT_LANGUAGE_MISMATCH_H

#include <cstddef>
#include <string>

#include "language/grammar.h"
#include "language/reader.h"

namespace Zant::Language {

/// How an input failed to be a command. Readers keep the one that stands furthest into the forms.
enum class Problem : unsigned char {
    UnknownCommand,
    UnknownKeyword,
    WrongArgument,  // something else stands where the argument should
    BadArgument,    // the argument is damaged: see detail
    NoSeparator,    // see detail
    TooFew,
    TooMany
};

struct Mismatch {
    Problem problem = Problem::UnknownCommand;
    int depth = -1;                      // items of the command in front of it
    Grammar::Node node = Grammar::root;  // what was read until then
    ArgumentKind expected = ArgumentKind::Keyword;
    size_t offset = 0;  // from the start of the command
    const char* detail = nullptr;

    /// Takes the other one over if it stands further in.
    void keepDeeper(const Mismatch& other) {
        if (other.depth > depth) *this = other;
    }
};

/// Fills in message and suggestion.
/// @param found what stands there instead, in words: "a vector", "'lihgt'"
/// @param word the word that was not found in a table; empty if it was none
void explain(const Grammar& grammar, const Mismatch& mismatch, const std::string& found, const std::string& word,
             Diagnostic& diagnostic);

/// Takes the sign from a zero where the place wants an integer.
/// @return false when the place, which wants an integer, does not take this number: not integral, or out of range
bool fitInteger(ArgumentKind place, double& number);

/// The same for a place that wants any number, or an integer.
inline bool fitNumber(ArgumentKind place, double& number) {
    return place == ArgumentKind::Double || place == ArgumentKind::DoubleList || fitInteger(place, number);
}

/// The longest name of a symbol, in bytes.
constexpr size_t longestName = 127;

}  // namespace Zant::Language

#endif
