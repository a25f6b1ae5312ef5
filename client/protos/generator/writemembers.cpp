#include <cctype>

#include "client/protos/generator/writer.h"

namespace Generator {
namespace {

/// The type of a kind without what is said of its reference.
std::string typeName(const Zant::KindRow& kind) {
    std::string type = kind.argument;
    if (type.rfind("const ", 0) == 0) type.erase(0, 6);
    if (!type.empty() && type.back() == '&') type.pop_back();
    return type;
}

/// A parameter does not have the name of a type, which compilers warn of: `symbol` is `symbol1`.
std::string nameOf(const Token& token) {
    for (size_t kind = 0; kind < Zant::kindCount; ++kind) {
        if (typeName(Zant::kindRow(static_cast<Zant::ArgumentKind>(kind))) == token.parameter)
            return token.parameter + "1";
    }
    return token.parameter;
}

std::string parameterOf(const Token& token, bool wide) {
    return std::string(wide && token.is("s") ? "const wide_text&" : token.kind->argument) + " " + nameOf(token);
}

void writeMember(const CheckedForm& form, bool wide, std::string& text) {
    const std::string& function = wide ? form.wideFunction : form.function;
    std::vector<std::string> parameters, arguments = {"\"" + function + "\"", "::" + function};
    for (const Token& token : form.tokens) {
        if (token.isKeyword()) continue;
        parameters.push_back(parameterOf(token, wide));
        arguments.push_back(nameOf(token));
    }
    text += listed("    bool " + form.function + "(", parameters, 8) + " {\n";
    text += listed("        return this->send(", arguments, 12) + ";\n    }\n";
}

/// Those of the typed functions that the group needs, which cost less to include than all of them.
std::string declarations(const CheckedGroup& group) {
    std::string text;
    for (const CheckedCommand& command : group.commands) {
        for (const CheckedForm& form : command.forms) {
            text += signature(form, false) + ";\n";
            if (!form.wideFunction.empty()) text += signature(form, true) + ";\n";
        }
    }
    return text;
}

}  // namespace

std::string membersText(const CheckedGroup& group) {
    std::string guard = "ZANT_MODERN_COMMANDS_" + group.name + "_H";
    for (char& letter : guard)
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    std::string text =
        "#ifndef " + guard + "\n#define " + guard +
        "\n\n// Made from client/protos/catalogue by the build; change it there.\n\n"
        "#include \"modern/commandgroup.h\"\n\n" +
        declarations(group) +
        "\nnamespace zant {\n\n"
        "/// The commands of the group " +
        group.name +
        ": one for each form. Each answers whether the engine has taken it.\ntemplate <class Scene>\nclass " +
        group.name + "_commands : public command_group<Scene, " + group.name + "_commands<Scene>> {\npublic:\n";
    for (const CheckedCommand& command : group.commands) {
        for (const CheckedForm& form : command.forms) {
            text += "    /// `" + form.notation + "`\n";
            writeMember(form, false, text);
            if (!form.wideFunction.empty()) writeMember(form, true, text);
        }
    }
    return text + "};\n\n}  // namespace zant\n\n#endif\n";
}

}  // namespace Generator
