#include "client/protos/generator/writer.h"

namespace Generator {
namespace {

const char* const opening = R"(// Made from client/protos/catalogue by the build; change it there.

#include "client/protos/protos.h"

#include "client/commands/commandbuffer.h"
#include "client/keywords/enums.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/symbol.h"
#include "client/symbols/vertexmap.h"

using namespace Zant::Enums;

namespace {

Zant::CommandBuffer& bufferOf(void* protos) { return **static_cast<Zant::CommandBuffer**>(protos); }

}  // namespace
)";

std::string valueOf(const Token& token) {
    if (token.is("b")) return token.parameter + " ? 1.0 : 0.0";
    if (token.is("u")) return "static_cast<double>(" + token.parameter + ")";
    return token.parameter;
}

std::string keyword(size_t table, int number) {
    return std::string("addKeyword(") + Zant::keywordTables()[table].name + ", " + std::to_string(number) + ")";
}

std::string sending(const Token& token) {
    if (token.isKeyword()) return keyword(token.table, token.number);
    return token.kind->operation + std::string("(") + valueOf(token) + ")";
}

void writeFunction(int command, const CheckedForm& form, bool wide, std::string& text) {
    text += "\n" + signature(form, wide) + " {\n    Zant::CommandBuffer& buffer = bufferOf(protos);\n";
    text += "    buffer." + keyword(0, command) + ";\n";
    for (const Token& token : form.tokens)
        text += "    buffer." + sending(token) + ";\n";
    text += "    buffer.parse();\n";
    for (const Token& token : form.tokens) {
        if (token.is("N")) text += "    " + token.parameter + ".registerSymbol();\n";
    }
    text += "}\n";
}

}  // namespace

std::string sourceText(const CheckedGroup& group) {
    std::string text = opening;
    for (const CheckedCommand& command : group.commands) {
        for (const CheckedForm& form : command.forms) {
            writeFunction(command.number, form, false, text);
            if (!form.wideFunction.empty()) writeFunction(command.number, form, true, text);
        }
    }
    return text;
}

}  // namespace Generator
