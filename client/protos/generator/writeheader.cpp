#include "client/protos/generator/writer.h"

namespace Generator {
namespace {

const char* const opening = R"(#ifndef ZANT_CLIENT_PROTOS_PROTOS_H
#define ZANT_CLIENT_PROTOS_PROTOS_H

// Made from client/protos/catalogue by the build; change it there.

#include "client/values/varlen.h"
#include "own/unsigned64.h"

namespace Zant {
class Axes;
class BitmapSymbol;
class CoordSys;
class MeshSymbol;
class Symbol;
class Vector;
class VertexMapSymbol;
}  // namespace Zant

/// The typed command functions: one for each form of every command, twice when it has strings.
///
/// A function sends its command through the command buffer of a prototyper and has it parsed; what the engine makes of
/// it is reported by the buffer. It checks nothing, and sends its arguments in the order of the parameters.
///
/// - `protos` is the address of a prototyper's Protos part (Prototyper::protos() or a Zant::Proto), not the prototyper's
///   own. It points at the word that holds the buffer's address. Compilers warn where it is a literal null.
/// - A name is the command word, the number of parameters after `protos`, "u" where strings are wide, and the keywords.
/// - A symbol that is not const is declared by the command: it is registered as soon as the command is parsed.
/// - Every number reaches the engine as a double; above 2^53 an Unsigned64 is rounded to the nearest one.
///
/// Threads: one at a time for each prototyper; different ones at the same time.
///
/// Above each function stands its form as it is sent: keywords, and a letter for each argument.
)";

void writeCommand(const CheckedCommand& command, std::string& text) {
    text += "\n/// @name " + command.word + "\n/// @{\n\n";
    for (const CheckedForm& form : command.forms) {
        text += "/// `" + form.notation + "`\n" + signature(form, false) + " ZANT_NEEDS_FIRST;\n";
        if (!form.wideFunction.empty())
            text += "/// `" + form.notation + "`, wide\n" + signature(form, true) + " ZANT_NEEDS_FIRST;\n";
    }
    text += "/// @}\n";
}

}  // namespace

std::string listed(std::string text, const std::vector<std::string>& items, size_t indent) {
    size_t column = text.size() - (text.rfind('\n') + 1);
    for (const std::string& item : items) {
        const bool isFirst = &item == &items.front();
        // Room for the comma and blank before it, and for what follows the last one: ") {".
        const bool fits = isFirst || column + item.size() + 5 <= 120;
        text += (isFirst ? "" : fits ? ", " : ",\n" + std::string(indent, ' ')) + item;
        column = (isFirst ? column : fits ? column + 2 : indent) + item.size();
    }
    return text + ")";
}

std::string signature(const CheckedForm& form, bool wide) {
    std::vector<std::string> parameters = {"void* protos"};
    for (const Token& token : form.tokens) {
        if (token.isKeyword()) continue;
        const std::string type = wide && token.is("s") ? "const wchar_t*" : token.kind->type;
        parameters.push_back(type + " " + token.parameter);
    }
    return listed("void " + (wide ? form.wideFunction : form.function) + "(", parameters, 4);
}

std::string headerText(const Vocabulary& vocabulary) {
    std::string text = opening + std::string("/// ") + Zant::letterLegend("\n/// ") + ".\n";
    for (const CheckedGroup& group : vocabulary.groups) {
        text += "\n// The group " + group.name + ": " + std::to_string(group.functions) + " functions.\n";
        for (const CheckedCommand& command : group.commands)
            writeCommand(command, text);
    }
    return text + "\n#endif\n";
}

std::string numbersText() {
    std::string text =
        "#ifndef ZANT_CLIENT_KEYWORDS_NUMBERS_H\n#define ZANT_CLIENT_KEYWORDS_NUMBERS_H\n\n"
        "// Made from client/keywords/enums.cpp by the build. Internal: not installed.\nnamespace Zant::Enums {\n\n";
    for (const Zant::KeywordTable& table : Zant::keywordTables()) {
        const std::string name = table.name, prefix = name.substr(0, name.rfind('_') + 1);
        for (int slot = 0; slot < table.slots; ++slot) {
            if (!table.words[slot]) continue;
            text += "constexpr int " + prefix + table.words[slot] + " = " + std::to_string(slot + 1) + ";\n";
        }
    }
    return text + "\n}  // namespace Zant::Enums\n\n#endif\n";
}

}  // namespace Generator
