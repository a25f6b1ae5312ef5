#ifndef ZANT_CLIENT_PROTOS_GENERATOR_VOCABULARY_H
#define ZANT_CLIENT_PROTOS_GENERATOR_VOCABULARY_H

#include <string>
#include <vector>

#include "client/protos/argumentkinds.h"
#include "client/protos/generator/catalogue.h"

namespace Generator {

/// One place of a form: a keyword, found in its table, or an argument.
struct Token {
    std::string word;                     // the keyword, or the letter of the kind
    const Zant::KindRow* kind = nullptr;  // of an argument; null for a keyword
    size_t table = 0;                     // index into keywordTables(), for a keyword
    int number = 0;                       // keyword number, for a keyword
    std::string parameter = {};           // name of the parameter, for an argument

    bool isKeyword() const { return kind == nullptr; }
    bool is(const char* letter) const { return word == letter && kind != nullptr; }
};

/// One form of a command with its function, or its two functions when it has strings.
struct CheckedForm {
    Place place;
    std::string notation;  // command word included
    std::vector<Token> tokens;
    std::string function;
    std::string wideFunction;  // empty without strings

    size_t parameterCount() const;
};

struct CheckedCommand {
    std::string word;
    int number;  // in the table of command words
    std::vector<CheckedForm> forms;
};

struct CheckedGroup {
    std::string name;
    size_t functions;
    std::vector<CheckedCommand> commands;
};

struct Vocabulary {
    std::vector<CheckedGroup> groups;
    size_t functions;
};

/// Every form of a pattern, its tail expanded.
/// @throws Fault for an unknown tail, or one that contains itself
std::vector<Words> expand(const Catalogue& catalogue, const Pattern& pattern);

/// Spells every form out, finds its keywords, names its functions, and checks all counts.
/// @throws Fault for the first thing that does not fit
Vocabulary checkCatalogue(const Catalogue& catalogue);

/// Names the functions of a form, by its command word, argument count and keywords.
void nameFunctions(const std::string& command, CheckedForm& form);

/// Names the parameters of a command's forms. A form that goes on where another one ends keeps its names.
void nameParameters(CheckedCommand& command);

}  // namespace Generator

#endif
