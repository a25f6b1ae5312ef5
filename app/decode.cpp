// zant decode: commands of any encoding as lines that a person can read.

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "app/commandfile.h"
#include "app/program.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

const char* nameOf(ArgumentKind kind) {
    static constexpr const char* names[] = {"keyword",  "number",      "integer",    "truth value", "unsigned",
                                            "text",     "vector",      "axes",       "coordinates", "symbol",
                                            "declares", "bitmap",      "mesh",       "vertex map",  "number list",
                                            "vectors",  "coordinates", "symbol list"};
    return names[static_cast<size_t>(kind)];
}

std::string show(const Command& command, const Value& value, size_t item) {
    switch (value.kind) {
        case ValueKind::Number:
            return fmt::format("{}", command.number(value, item));
        case ValueKind::Vector: {
            const Vector& v = command.vector(value, item);
            return fmt::format("({})", fmt::join(v.values, v.values + std::clamp<int32_t>(v.count, 0, 4), ", "));
        }
        case ValueKind::Axes:
            return fmt::format("form {}", command.axes(value, item).rows);
        case ValueKind::CoordSys: {
            const CoordSys& c = command.coordSys(value, item);
            return fmt::format("at ({}), axes form {}", fmt::join(c.position, ", "), c.axes.rows);
        }
        default:
            return command.text(value, item);
    }
}

void showValue(const Command& command, size_t place) {
    const FormToken& token = command.form->tokens[place];
    const Value& value = command.values()[place];
    if (token.kind == ArgumentKind::Keyword) {
        fmt::print("    {:<12} {} (number {})\n", "keyword", command.keywordText(place), command.keywordNumber(place));
        return;
    }
    if (value.isList) fmt::print("    {:<12} {} items\n", nameOf(token.kind), value.count);
    for (size_t item = 0; item < value.count; ++item)
        fmt::print("    {:<12} {}\n", value.isList ? "" : nameOf(token.kind), show(command, value, item));
}

bool decodeFile(const std::string& name) {
    CommandFile file(name);
    Command command;
    TextWriter writer;
    bool fine = true;
    for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
        if (result == ReadResult::Error) {
            fine = false;
            fmt::print("{}\n", file.describeError());
            continue;
        }
        fmt::print("{}: {}\n", file.whereIs(command), writer.write(command));
        fmt::print("    {:<12} {}\n", "function", command.form->function);
        for (size_t place = 0; place < command.values().size(); ++place)
            showValue(command, place);
    }
    return fine;
}

int decode(const std::vector<std::string>& files) {
    bool fine = true;
    for (const std::string& name : files)
        fine &= decodeFile(name);
    return fine ? Fine : InputHasErrors;
}

}  // namespace

void addDecode(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("decode", "Show commands of any encoding, item by item");
    auto files = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *files, "Command files in any encoding; - is standard input")->required();
    command->callback([files, &exitCode] { exitCode = decode(*files); });
}

}  // namespace Zant::App
