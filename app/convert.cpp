// zant convert: writes commands in another encoding.

#include "app/commandfile.h"
#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

struct Options {
    std::string encoding;
    std::string output;
    std::vector<std::string> files;
};

/// Writes commands in one encoding.
class Converter {
public:
    explicit Converter(const Options& options)
        : out(options.output),
          binary(options.encoding == "binary"),
          text(options.encoding == "quick" ? TextWriter::Form::Quick : TextWriter::Form::Plain) {}

    /// A mistake is told and left out; the commands around it are converted.
    bool convertFile(const std::string& name) {
        CommandFile file(name);
        Command command;
        bool fine = true;
        for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
            if (result == ReadResult::Command) {
                write(command);
                continue;
            }
            fine = false;
            complain(file.describeError());
        }
        return fine;
    }
    void end(bool complete) { complete ? out.finish() : out.giveUp(); }

private:
    void write(const Command& command) {
        if (binary) {
            const auto* data = static_cast<const char*>(block.write(command));
            out.write({data, block.size()});
            return;
        }
        out.write(text.write(command));
        out.write("\n");
    }

    OutputFile out;
    bool binary;
    TextWriter text;
    BinaryWriter block;
};

int convert(const Options& options) {
    Converter converter(options);
    const Outcome outcome =
        readAll(options.files, [&](const std::string& name) { return converter.convertFile(name); });
    // What cannot be converted would be lost where the output takes the place of the input.
    const bool losing = outcome == Outcome::HasMistakes && isOneOf(options.output, options.files);
    converter.end(outcome != Outcome::Unreadable && !losing);
    return outcome == Outcome::Fine ? Fine : InputHasErrors;
}

}  // namespace

void addConvert(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("convert", "Write commands in another encoding");
    auto options = std::make_shared<Options>();
    command->add_option("--to", options->encoding, "Encoding to write")
        ->required()
        ->check(CLI::IsMember({"text", "quick", "binary"}));
    command->add_option("-o,--output", options->output, "File to write (default: standard output)");
    command->add_option("FILE", options->files, "Command files in any encoding; - is standard input")->required();
    command->callback([options, &exitCode] { exitCode = convert(*options); });
}

}  // namespace Zant::App
