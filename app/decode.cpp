// zant decode: commands of any encoding as lines that a person can read.

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "app/commandfile.h"
#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

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

/// Shows commands one after the other, each with its items on lines of their own.
class Decoder {
public:
    explicit Decoder(const DecodeOptions& options) : out_(options.output) {}

    bool decodeFile(const std::string& name) {
        CommandFile file(name);
        bool fine = true;
        for (ReadResult result; (result = file.next(command_)) != ReadResult::End;) {
            if (result == ReadResult::Command) {
                showCommand(file.whereIs(command_));
                continue;
            }
            fine = false;
            out_.print("{}\n", shown(file.describeError()));
        }
        return fine;
    }
    void end(bool complete) { complete ? out_.finish() : out_.giveUp(); }

private:
    void showCommand(const std::string& where) {
        out_.print("{}: {}\n", where, shown(writer_.write(command_)));
        showItem("function", command_.form->function);
        for (size_t place = 0; place < command_.values().size(); ++place)
            showValue(place);
    }

    void showValue(size_t place) {
        const FormToken& token = command_.form->tokens[place];
        const Value& value = command_.values()[place];
        const char* kind = kindRow(token.kind).name;
        if (token.kind == ArgumentKind::Keyword)
            return showItem(kind,
                            fmt::format("{} (number {})", command_.keywordText(place), command_.keywordNumber(place)));
        if (value.isList) showItem(kind, counted(value.count, "item"));
        for (size_t item = 0; item < value.count; ++item)
            showItem(value.isList ? "" : kind, shown(show(command_, value, item)));
    }

    void showItem(const char* kind, const std::string& content) { out_.print("    {:<26} {}\n", kind, content); }

    OutputFile out_;
    Command command_;
    TextWriter writer_;
};

}  // namespace

int decode(const DecodeOptions& options) {
    refuseToReplace(options.files, options.output);
    Decoder decoder(options);
    const Outcome outcome = readAll(options.files, [&](const std::string& name) { return decoder.decodeFile(name); });
    decoder.end(outcome != Outcome::Unreadable);
    return outcome == Outcome::Fine ? Fine : InputHasErrors;
}

}  // namespace Zant::App
