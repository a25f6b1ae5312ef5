// zant convert: writes commands in another encoding.

#include "app/commandfile.h"
#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

/// Numbers that text cannot hold, and where the first of them stands.
struct Changes {
    size_t count = 0;
    std::string place;

    void add(size_t more, const CommandFile& file, const Command& command) {
        if (count == 0 && more != 0) place = file.whereIs(command);
        count += more;
    }
    void tell(const std::string& name) const {
        complain(
            fmt::format("{}: text cannot hold {} of the numbers, the first at {}: NaN and infinity become 0, an angle "
                        "without degrees the nearest one",
                        name, count, place));
    }
};

/// Writes commands in one encoding.
class Converter {
public:
    explicit Converter(const ConvertOptions& options)
        : out_(options.output),
          binary_(options.encoding == "binary"),
          text_(options.encoding == "quick" ? TextWriter::Form::Quick : TextWriter::Form::Plain) {}

    /// A mistake is told and left out; the commands around it are converted.
    bool convertFile(const std::string& name) {
        CommandFile file(name);
        Command command;
        Changes changes;
        bool fine = true;
        for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
            if (result == ReadResult::Command) {
                changes.add(write(command), file, command);
                continue;
            }
            fine = false;
            complain(file.describeError());
        }
        if (changes.count != 0) changes.tell(file.fileName());
        exact_ &= changes.count == 0;
        return fine;
    }
    void end(bool complete) { complete ? out_.finish() : out_.giveUp(); }

    /// Whether the encoding could hold every number so far.
    bool isExact() const { return exact_; }

private:
    /// @return how many numbers of the command the encoding cannot hold
    size_t write(const Command& command) {
        if (binary_) {
            const auto* data = static_cast<const char*>(block_.write(command));
            out_.write({data, block_.size()});
            return 0;
        }
        out_.write(text_.write(command));
        out_.write("\n");
        return text_.changedNumbers();
    }

    OutputFile out_;
    bool binary_;
    bool exact_ = true;
    TextWriter text_;
    BinaryWriter block_;
};

}  // namespace

int convert(const ConvertOptions& options) {
    Converter converter(options);
    const Outcome outcome =
        readAll(options.files, [&](const std::string& name) { return converter.convertFile(name); });
    // What cannot be converted would be lost where the output takes the place of the input.
    const bool losing = outcome == Outcome::HasMistakes && isOneOf(options.output, options.files);
    converter.end(outcome != Outcome::Unreadable && !losing);
    return outcome == Outcome::Fine && converter.isExact() ? Fine : InputHasErrors;
}

}  // namespace Zant::App
