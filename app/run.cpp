// zant run: drives an engine with command files and shows its text.

#include <fmt/core.h>

#include <cinttypes>
#include <fstream>
#include <stdexcept>

#include "app/program.h"
#include "app/progress.h"
#include "app/session.h"

namespace Zant::App {
namespace {

/// A file of up to this size travels as one text, so that the engine counts its lines from the first one.
constexpr size_t wholeFile = 4 << 20;

struct Options {
    std::string engine;
    std::vector<std::string> files;
    std::vector<std::string> values;
};

/// One parse call.
bool send(Instance& instance, const std::string& text, const std::string& source) {
    return instance.library->vtables.parser->parse(instance.parserContext, text.c_str(), source.c_str(), ParseText) ==
           0;
}

/// Sends a file in pieces that end at the end of a command; `line` is where each one begins.
bool sendInPieces(Instance& instance, std::ifstream& file, const std::string& name, Progress& progress) {
    bool fine = true;
    size_t line = 1;
    bool quoted = false;
    std::string piece;
    for (std::string row; std::getline(file, row);) {
        for (const char c : row)
            quoted ^= c == '"';
        piece += row;
        piece += '\n';
        ++line;
        const bool complete = !quoted && !row.empty() && row.back() == ';';
        if (!complete || piece.size() < wholeFile) continue;
        fine &= send(instance, piece, fmt::format("{} (up to line {})", name, line - 1));
        progress.advance(piece.size());
        piece.clear();
    }
    return send(instance, piece, fmt::format("{} (up to line {})", name, line - 1)) && fine;
}

bool runFile(Instance& instance, const std::string& name, Progress& progress) {
    std::ifstream file(name, std::ios::binary | std::ios::ate);
    if (!file) throw std::runtime_error(name + ": cannot be read");
    const auto size = static_cast<size_t>(file.tellg());
    file.seekg(0);
    progress.start(name, size);
    if (size > wholeFile) return sendInPieces(instance, file, name, progress);
    std::string text(size, '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    return send(instance, text, name);
}

std::string describe(const ZantAxesCore& axes) {
    return axes.rows == 2   ? fmt::format("heading {} pitch {} bank {} (radians), scale {} {} {}", axes.m[0], axes.m[1],
                                          axes.m[2], axes.m[3], axes.m[4], axes.m[5])
           : axes.rows == 3 ? std::string("matrix")
                            : std::string("<>");
}

bool isVector(const ZantVectorCore& vector) {
    return vector.count >= 0 && vector.count <= 4;
}

std::string describe(const ZantVectorCore& vector) {
    std::string text = "(";
    for (int i = 0; i < vector.count; ++i)
        text += fmt::format(i ? ", {}" : "{}", vector.values[i]);
    return text + ")";
}

std::string describe(const ZantCoordSysCore& system) {
    return fmt::format("({}, {}, {}) @ {}", system.position[0], system.position[1], system.position[2],
                       describe(system.axes));
}

/// Reads a declared value back, whatever its type is: the engine leaves the code of what it delivers.
std::string readBack(Instance& instance, const std::string& name) {
    void* handle = instance.findObject(name.c_str(), HandleValue);
    if (!handle) return "no such value";
    for (const int type : {ZantValueNumber, ZantValueString, ZantValueVector, ZantValueAxes}) {
        ZantParserExchangeBuffer record{};
        record.type = type;
        instance.getValue(handle, &record);
        if (record.type != type) continue;
        if (type == ZantValueNumber) return fmt::format("{}", record.value.number);
        if (type == ZantValueString) return record.value.string ? record.value.string : "";
        // Coordinate systems travel under the code of vectors; where a vector has its count, they have an angle.
        if (type == ZantValueVector)
            return isVector(record.value.vector) ? describe(record.value.vector) : describe(record.value.coordSys);
        return describe(record.value.axes);
    }
    return "a value of another kind";
}

int run(const Options& options) {
    Session session(options.engine);
    if (!session.instance()) {
        fmt::print(stderr, "zant run: {}\n", session.reason());
        return EngineNotLoaded;
    }
    bool fine = true;
    Progress progress;
    for (const std::string& file : options.files)
        fine &= runFile(*session.instance(), file, progress);
    progress.finish();
    for (const std::string& name : options.values)
        fmt::print("{} = {}\n", name, readBack(*session.instance(), name));
    return fine ? Fine : InputHasErrors;
}

}  // namespace

void addRun(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("run", "Drive an engine with command files and show its text");
    auto options = std::make_shared<Options>();
    command->add_option("--engine", options->engine, "Directory of the engine file (default: the loopback engine)");
    command->add_option("--value", options->values, "Read a declared value back when the files are done (repeatable)")
        ->allow_extra_args(false);
    command->add_option("FILE", options->files, "Command files, sent in this order")
        ->required()
        ->check(CLI::ExistingFile);
    command->callback([options, &exitCode] { exitCode = run(*options); });
}

}  // namespace Zant::App
