// The names of functions, which hosts rely on, and of parameters, which only help to read the header.

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "client/protos/generator/vocabulary.h"

namespace Generator {
namespace {

std::string functionName(const std::string& command, const CheckedForm& form, const char* suffix) {
    std::string name = command + std::to_string(form.parameterCount()) + suffix;
    for (const Token& token : form.tokens) {
        if (token.isKeyword()) name += "_" + token.word;
    }
    return name;
}

/// Keywords of the command language that C++ keeps for itself.
bool isReserved(const std::string& word) {
    static const std::set<std::string> reserved = {"auto",   "break", "case",   "class",  "default", "delete", "do",
                                                   "double", "else",  "export", "float",  "for",     "if",     "int",
                                                   "new",    "not",   "return", "switch", "this",    "union",  "while"};
    return reserved.count(word) != 0;
}

/// "materialSet" and "shObOp" act on what their name begins with: "material", "shOb".
std::string subjectOf(const std::string& command) {
    for (const std::string ending : {"Op", "Set"}) {
        if (command.size() > ending.size() &&
            command.compare(command.size() - ending.size(), ending.size(), ending) == 0)
            return command.substr(0, command.size() - ending.size());
    }
    return {};
}

std::string capitalised(std::string word) {
    word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    return word;
}

/// A declared symbol is named for the word before it, and so is a value that stands alone after its keyword;
/// everything else is named for its kind.
std::string plainName(const std::string& command, const std::vector<Token>& tokens, size_t index) {
    const Token& token = tokens[index];
    const bool first = index == 0;
    if (token.is("N")) return "new" + capitalised(first ? command : tokens[index - 1].word);
    if (token.is("S") && first && !subjectOf(command).empty()) return subjectOf(command);
    const bool alone =
        !first && tokens[index - 1].isKeyword() && (index + 1 == tokens.size() || tokens[index + 1].isKeyword());
    if (alone && token.kind->isNamedByKeyword && !isReserved(tokens[index - 1].word)) return tokens[index - 1].word;
    return token.kind->parameter;
}

void nameTokens(const std::string& command, std::vector<Token>& tokens) {
    std::map<std::string, int> uses;
    for (size_t index = 0; index < tokens.size(); ++index) {
        if (tokens[index].isKeyword()) continue;
        tokens[index].parameter = plainName(command, tokens, index);
        ++uses[tokens[index].parameter];
    }
    std::map<std::string, int> numbers;
    for (Token& token : tokens) {
        if (!token.isKeyword() && uses[token.parameter] > 1)
            token.parameter += std::to_string(++numbers[token.parameter]);
    }
}

bool continues(const CheckedForm& longer, const CheckedForm& shorter) {
    return longer.tokens.size() > shorter.tokens.size() &&
           longer.notation.compare(0, shorter.notation.size() + 1, shorter.notation + " ") == 0;
}

}  // namespace

size_t CheckedForm::parameterCount() const {
    const auto keywords = std::count_if(tokens.begin(), tokens.end(), [](const Token& t) { return t.isKeyword(); });
    return tokens.size() - static_cast<size_t>(keywords);
}

void nameFunctions(const std::string& command, CheckedForm& form) {
    form.function = functionName(command, form, "");
    const bool hasStrings =
        std::any_of(form.tokens.begin(), form.tokens.end(), [](const Token& t) { return t.is("s"); });
    if (hasStrings) form.wideFunction = functionName(command, form, "u");
}

void nameParameters(CheckedCommand& command) {
    for (CheckedForm& form : command.forms) {
        const CheckedForm* longest = &form;
        for (const CheckedForm& other : command.forms) {
            if (continues(other, *longest)) longest = &other;
        }
        std::vector<Token> tokens = longest->tokens;
        nameTokens(command.word, tokens);
        for (size_t index = 0; index < form.tokens.size(); ++index)
            form.tokens[index].parameter = tokens[index].parameter;
    }
}

}  // namespace Generator
