// zant convert: writes commands in another encoding.

#include <fmt/core.h>

#include <cstring>
#include <stdexcept>

#include "app/commandfile.h"
#include "app/program.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

struct Options {
    std::string encoding;
    std::string output;
    std::vector<std::string> files;
};

/// Writes commands in one encoding to a file, or to standard output.
class Output {
public:
    explicit Output(const Options& options)
        : name(options.output.empty() ? "standard output" : options.output),
          file(options.output.empty() ? stdout : std::fopen(options.output.c_str(), "wb")),
          binary(options.encoding == "binary"),
          text(options.encoding == "quick" ? TextWriter::Form::Quick : TextWriter::Form::Plain) {
        if (!file) throw std::runtime_error(fmt::format("{}: {}", name, std::strerror(errno)));
    }
    ~Output() {
        if (file != stdout) std::fclose(file);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void write(const Command& command) {
        if (binary) {
            const void* data = block.write(command);
            put(data, block.size());
            return;
        }
        const char* line = text.write(command);
        put(line, std::strlen(line));
        put("\n", 1);
    }

    void flush() const {
        if (std::fflush(file) != 0) throw std::runtime_error(name + ": cannot be written");
    }

private:
    void put(const void* data, size_t size) const {
        if (std::fwrite(data, 1, size, file) != size) throw std::runtime_error(name + ": cannot be written");
    }

    std::string name;
    std::FILE* file;
    bool binary;
    TextWriter text;
    BinaryWriter block;
};

/// A mistake is told and left out; the commands around it are converted.
bool convertFile(const std::string& name, Output& output) {
    CommandFile file(name);
    Command command;
    bool fine = true;
    for (ReadResult result; (result = file.next(command)) != ReadResult::End;) {
        if (result == ReadResult::Command) {
            output.write(command);
            continue;
        }
        fine = false;
        fmt::print(stderr, "{}\n", file.describeError());
    }
    return fine;
}

int convert(const Options& options) {
    Output output(options);
    bool fine = true;
    for (const std::string& name : options.files)
        fine &= convertFile(name, output);
    output.flush();
    return fine ? Fine : InputHasErrors;
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
