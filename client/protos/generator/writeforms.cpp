#include <map>

#include "client/protos/generator/writer.h"

namespace Generator {
namespace {

const char* const opening = R"(// Made from client/protos/catalogue by the build; change it there.

#include "client/protos/forms.h"

namespace Zant {
namespace {

using Kind = ArgumentKind;
)";

const char* const closing = R"(
}  // namespace

FormRange<Form> allForms() { return {forms, sizeof forms / sizeof forms[0]}; }

FormRange<Form> formsOf(int command) {
    constexpr int count = sizeof commands / sizeof commands[0];
    if (command < 1 || command > count) return {forms, 0};
    const FormsOfCommand& range = commands[command - 1];
    return {forms + range.first, range.count};
}

const char* groupOf(int command) {
    return formsOf(command).size() != 0 ? commands[command - 1].group : nullptr;
}

}  // namespace Zant
)";

std::string tokenRow(const Token& token) {
    return std::string("{Kind::") + (token.isKeyword() ? "Keyword" : token.kind->enumerator) + ", " +
           std::to_string(token.table) + ", " + std::to_string(token.number) + "}, ";
}

/// One row: function, notation, tokens, their count, command number, parameters, wide function.
std::string formRow(const CheckedForm& form, int command, size_t firstToken) {
    const bool wide = !form.wideFunction.empty();
    return "    {\"" + form.function + "\", \"" + form.notation + "\", tokens + " + std::to_string(firstToken) + ", " +
           std::to_string(form.tokens.size()) + ", " + std::to_string(command) + ", " +
           std::to_string(form.parameterCount()) + (wide ? ", \"" + form.wideFunction + "\"},\n" : ", nullptr},\n");
}

/// Where the forms of each command word stand, and its group, by its number.
std::string commandRows(const Vocabulary& vocabulary) {
    std::map<int, std::string> rows;
    size_t first = 0;
    for (const CheckedGroup& group : vocabulary.groups) {
        for (const CheckedCommand& command : group.commands) {
            rows[command.number] =
                "{" + std::to_string(first) + ", " + std::to_string(command.forms.size()) + ", \"" + group.name + "\"}";
            first += command.forms.size();
        }
    }
    std::string text;
    for (int number = 1; number <= Zant::keywordTables()[0].slots; ++number)
        text += "    " + (rows.count(number) != 0 ? rows[number] : std::string("{0, 0, nullptr}")) + ",\n";
    return text;
}

}  // namespace

std::string formsText(const Vocabulary& vocabulary) {
    std::string tokens, forms;
    size_t tokenCount = 0;
    for (const CheckedGroup& group : vocabulary.groups) {
        for (const CheckedCommand& command : group.commands) {
            for (const CheckedForm& form : command.forms) {
                forms += formRow(form, command.number, tokenCount);
                tokens += "    ";
                for (const Token& token : form.tokens)
                    tokens += tokenRow(token);
                tokens += "// " + form.notation + "\n";
                tokenCount += form.tokens.size();
            }
        }
    }
    return std::string(opening) + "\nconst FormToken tokens[] = {\n" + tokens + "};\n\nconst Form forms[] = {\n" +
           forms +
           "};\n\nstruct FormsOfCommand {\n    size_t first;\n    size_t count;\n    const char* group;\n};\n\nconst "
           "FormsOfCommand commands[] "
           "= {\n" +
           commandRows(vocabulary) + "};\n" + closing;
}

}  // namespace Generator
