// What is wrong with a command, in words.

#include "language/mismatch.h"

#include <cmath>

#include "language/lookup.h"

namespace Zant::Language {

namespace {

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

std::string didYouMean(const char* word) {
    return word ? ", did you mean " + quoted(word) + "?" : std::string();
}

void explainCommand(const std::string& found, const std::string& word, Diagnostic& diagnostic) {
    if (commandNumber(word) != 0) {
        diagnostic.message = "command " + quoted(word) + " has no form of its own";
        return;
    }
    const char* nearest = word.empty() ? nullptr : nearestCommandWord(word);
    diagnostic.suggestion = nearest ? nearest : "";
    diagnostic.message =
        (word.empty() ? "expected a command, found " + found : "unknown command " + quoted(word)) + didYouMean(nearest);
}

void explainKeyword(const Grammar& grammar, const Mismatch& mismatch, const std::string& found, const std::string& word,
                    Diagnostic& diagnostic) {
    const std::string path = quoted(grammar.keywordPath(mismatch.node));
    NearestWord search(word);
    if (!word.empty()) grammar.offerKeywords(mismatch.node, search);
    diagnostic.suggestion = search.best() ? search.best() : grammar.shortestForm(mismatch.node)->notation;
    if (word.empty()) {
        diagnostic.message = "expected a keyword after " + path + ", found " + found;
    } else {
        diagnostic.message = "unknown keyword " + quoted(word) + " after " + path + didYouMean(search.best());
    }
}

// The shortest form that goes on with the argument that was expected.
const Form* formThrough(const Grammar& grammar, const Mismatch& mismatch) {
    uint32_t step = grammar.firstArgument(mismatch.node);
    while (step != Grammar::none && grammar.placeOf(step).kind != mismatch.expected)
        step = grammar.nextArgument(step);
    return grammar.shortestForm(step == Grammar::none ? mismatch.node : grammar.target(step));
}

void addForm(const Form* form, Diagnostic& diagnostic) {
    diagnostic.suggestion = form->notation;
    diagnostic.message += "; the nearest form is " + quoted(form->notation);
}

std::string argumentOf(const Grammar& grammar, const Mismatch& mismatch) {
    return "argument " + std::to_string(grammar.argumentCount(mismatch.node) + 1) + " of " +
           quoted(grammar.keywordPath(mismatch.node)) + ": ";
}

}  // namespace

void explain(const Grammar& grammar, const Mismatch& mismatch, const std::string& found, const std::string& word,
             Diagnostic& diagnostic) {
    diagnostic.suggestion.clear();
    const std::string path = mismatch.node == Grammar::root ? "" : quoted(grammar.keywordPath(mismatch.node));
    switch (mismatch.problem) {
        case Problem::UnknownCommand:
            return explainCommand(found, word, diagnostic);
        case Problem::UnknownKeyword:
            return explainKeyword(grammar, mismatch, found, word, diagnostic);
        case Problem::NoSeparator:
            diagnostic.message = std::string("expected ") + mismatch.detail + " after " + path + ", found " + found;
            return;
        case Problem::WrongArgument:
            diagnostic.message =
                argumentOf(grammar, mismatch) + "expected " + kindRow(mismatch.expected).expected + ", found " + found;
            return addForm(formThrough(grammar, mismatch), diagnostic);
        case Problem::BadArgument:
            diagnostic.message = argumentOf(grammar, mismatch) + mismatch.detail;
            return addForm(formThrough(grammar, mismatch), diagnostic);
        case Problem::TooFew:
            diagnostic.message = "too few arguments for " + path;
            return addForm(grammar.shortestForm(mismatch.node), diagnostic);
        case Problem::TooMany:
            diagnostic.message = "too many arguments for " + path + ", found " + found;
            return addForm(grammar.shortestForm(mismatch.node), diagnostic);
    }
}

bool fitInteger(ArgumentKind place, double& number) {
    if (place == ArgumentKind::Unsigned) {
        if (!(number >= 0 && number <= 18446744073709551616.0) || number != std::trunc(number)) return false;
    } else if (!(number >= -2147483648.0 && number <= 2147483647.0) || number != static_cast<int32_t>(number)) {
        return false;
    }
    number += 0.0;  // the zero without a sign
    return place != ArgumentKind::Bool || number == 0 || number == 1;
}

std::string Diagnostic::describe(const char* inputName) const {
    std::string place = std::string(inputName) + ":";
    if (position.line != 0) {
        place += std::to_string(position.line) + ":" + std::to_string(position.column) + ": ";
    } else {
        place += " byte " + std::to_string(position.offset) + ": ";
    }
    return place + message;
}

}  // namespace Zant::Language
