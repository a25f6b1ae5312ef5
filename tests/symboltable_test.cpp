// The names of a scene, followed from command to command.

#include <gtest/gtest.h>

#include "language/symbols.h"
#include "language/writer.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

/// What is said about the names in some commands, a line each, with line and column.
std::string findings(const char* commands) {
    SymbolTable symbols;
    TextReader reader{std::string_view(commands)};
    Command command;
    std::string said;
    for (ReadResult result; (result = reader.next(command)) != ReadResult::End;) {
        if (result == ReadResult::Error) return reader.diagnostic().describe("f");
        for (const SymbolTable::Finding& finding : symbols.check(command))
            said += finding.in(command).describe("f") + "\n";
        symbols.follow(command, "line " + std::to_string(command.position.line));
    }
    return said;
}

}  // namespace

TEST(SymbolTable, FollowsTheNamesOfAScene) {
    const struct {
        const char* commands;
        const char* said;
    } rows[] = {
        {"var x,1; clear x; objectInfo x; delete x;", ""},
        {"clear x;", "f:1:7: 'x' is not declared\n"},
        {"surface paint,black;\nsurface s,diffuse,\n  piant;",
         "f:3:3: 'piant' is not declared, did you mean 'paint'?\n"},
        {"var x;\ndelete x;\nclear x;\nvar x; clear x;", "f:3:7: 'x' was deleted in line 2\n"},
        {"var x;\nsymbolsDelete;\ndelete x;", "f:3:8: 'x' was deleted in line 2\n"},
        {"var b;\nbitmapOp b,clear;", "f:2:10: 'b' is not a bitmap, it was declared by 'var' in line 1\n"},
        {"bitmap b;\nmeshOp b,points;", "f:2:8: 'b' is not a mesh, it was declared by 'bitmap' in line 1\n"},
        {"mesh m; vertexMapOp m,resize,1;", "f:1:21: 'm' is not a vertexMap, it was declared by 'mesh' in line 1\n"},
        {"var x; double x; variable x; vector v; color v;", ""},
        {"surface s,black;\n texture s,color,(1,1,1);",
         "f:2:10: 's' is another kind of object already, declared by 'surface' in line 1\n"},
        {"surface s,black; delete s; texture s,color,(1,1,1);", ""},
        {"bitmap b; reference r,b; reference r2,r; bitmapOp r2,clear;", ""},
        {"var x; reference r,x; bitmapOp r,clear;",
         "f:1:32: 'r' is not a bitmap, it was declared by 'var' in line 1\n"},
        {"bitmap b; reference r,b; delete b; bitmapOp r,clear;", ""},  // a dead end may come to life again
        {"mesh m; mesh m,triple,m;", ""},
        {"mesh t,triple,t;", "f:1:15: 't' is not declared\n"},
        {"surface a,black; shaderNode n,mix,{a,c},{(1,1,1)};", "f:1:35: 'c' is not declared, did you mean 'a'?\n"},
        {"delete x; delete x; var x;", "f:1:8: 'x' is not declared\nf:1:18: 'x' is not declared\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(findings(row.commands), row.said) << row.commands;
}

TEST(SymbolTable, KnowsPlacesInBlocks) {
    SymbolTable symbols;
    Command command;
    TextReader("delete x;").next(command);
    BinaryWriter writer;
    const void* const written = writer.write(command);
    const std::string block(static_cast<const char*>(written), writer.size());
    ASSERT_EQ(BinaryReader().read(block.data(), block.size(), command), ReadResult::Command);
    EXPECT_EQ(symbols.check(command).at(0).in(command).describe("f"), "f: byte 16: 'x' is not declared");
    symbols.follow(command, "a block");
    EXPECT_TRUE(symbols.all().empty()) << "what was never declared is not deleted";
}

TEST(SymbolTable, FollowsEveryFormThatDeclares) {
    size_t declaring = 0;
    for (const Form& form : allForms()) {
        Command command;
        command.form = &form;
        bool declares = false;
        for (size_t place = 0; place < form.tokenCount; ++place) {
            const ArgumentKind kind = form.tokens[place].kind;
            command.beginValue(kind, 0);
            if (valueKindOf(kind) == ValueKind::Symbol)
                command.addText(kind == ArgumentKind::NewSymbol ? "new" : "old");
            declares |= kind == ArgumentKind::NewSymbol;
        }
        SymbolTable symbols;
        symbols.follow(command, "here");
        ASSERT_EQ(symbols.all().size(), declares ? 1u : 0u) << form.notation;
        declaring += declares;
    }
    EXPECT_GT(declaring, 300u);
}
