// The names of functions, which hosts rely on, and of parameters, which only help to read the header.

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <set>

#include "client/protos/generator/vocabulary.h"

namespace Generator {
namespace {

using Zant::ArgumentKind;

std::string functionName(const std::string& command, const std::vector<Token>& tokens, const char* suffix) {
    const auto parameters = std::count_if(tokens.begin(), tokens.end(), [](const Token& t) { return !t.isKeyword(); });
    std::string name = command + std::to_string(parameters) + suffix;
    for (const Token& token : tokens) {
        if (token.isKeyword()) name += "_" + token.word;
    }
    return name;
}

bool isString(const Token& token) {
    return token.kind == ArgumentKind::String;
}

bool takesValue(const Token& token) {
    switch (token.kind) {
        case ArgumentKind::Double:
        case ArgumentKind::Int:
        case ArgumentKind::Bool:
        case ArgumentKind::Unsigned:
        case ArgumentKind::Vector:
            return true;
        default:
            return false;
    }
}

const char* nameOfKind(ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::Double:
            return "number";
        case ArgumentKind::Int:
            return "integer";
        case ArgumentKind::Bool:
            return "flag";
        case ArgumentKind::Unsigned:
            return "index";
        case ArgumentKind::String:
            return "text";
        case ArgumentKind::Vector:
            return "vector";
        case ArgumentKind::Axes:
            return "axes";
        case ArgumentKind::CoordSys:
            return "coordSys";
        case ArgumentKind::BitmapSymbol:
            return "bitmap";
        case ArgumentKind::MeshSymbol:
            return "mesh";
        case ArgumentKind::VertexMapSymbol:
            return "vertexMap";
        case ArgumentKind::DoubleList:
            return "numbers";
        case ArgumentKind::VectorList:
            return "vectors";
        case ArgumentKind::CoordSysList:
            return "coordSystems";
        case ArgumentKind::SymbolList:
            return "symbols";
        default:
            return "symbol";
    }
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

/// A declared symbol is named for the word before it, and so is a value that stands alone behind its keyword;
/// everything else is named for its kind.
std::string plainName(const std::string& command, const std::vector<Token>& tokens, size_t index) {
    const Token& token = tokens[index];
    const bool first = index == 0;
    if (token.kind == ArgumentKind::NewSymbol) return "new" + capitalised(first ? command : tokens[index - 1].word);
    if (token.kind == ArgumentKind::Symbol && first && !subjectOf(command).empty()) return subjectOf(command);
    const bool alone =
        !first && tokens[index - 1].isKeyword() && (index + 1 == tokens.size() || tokens[index + 1].isKeyword());
    if (alone && takesValue(token) && !isReserved(tokens[index - 1].word)) return tokens[index - 1].word;
    return nameOfKind(token.kind);
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

void nameFunctions(const std::string& command, CheckedForm& form) {
    form.function = functionName(command, form.tokens, "");
    if (std::any_of(form.tokens.begin(), form.tokens.end(), isString))
        form.wideFunction = functionName(command, form.tokens, "u");
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
