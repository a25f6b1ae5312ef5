#include "languagecheck.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "language/writer.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

/// Memory of exactly the size, so that a sanitizer sees every step outside.
class ExactCopy {
public:
    explicit ExactCopy(std::string_view content) : bytes(new char[content.size()]), size(content.size()) {
        if (size != 0) std::memcpy(bytes.get(), content.data(), size);
    }
    std::string_view view() const { return {bytes.get(), size}; }

private:
    std::unique_ptr<char[]> bytes;
    size_t size;
};

/// Hands out a text in pieces of changing size.
class PieceSource : public TextSource {
public:
    explicit PieceSource(std::string_view whole) : rest(whole) {}
    size_t read(char* into, size_t room) override {
        step = step * 7 % 31 + 1;
        const size_t size = std::min({room, rest.size(), step});
        std::memcpy(into, rest.data(), size);
        rest.remove_prefix(size);
        return size;
    }

private:
    std::string_view rest;
    size_t step = 3;
};

/// Names some registered words.
class OddWords : public SymbolResolver {
public:
    const char* nameOf(uint64_t registered) override { return registered % 2 != 0 ? "odd one" : nullptr; }
};

// What text cannot hold has changed once it was written; then it stays.
bool isKept(const Command& original, const Command& read, size_t changed) {
    if (changed == 0) return sameCommand(original, read);
    TextWriter writer;
    const std::string text = writer.write(read);
    Command again;
    return original.form == read.form && writer.changedNumbers() == 0 &&
           TextReader(std::string_view(text)).next(again) == ReadResult::Command && sameCommand(read, again);
}

std::string readOneText(const char* text, const Command& original, size_t changed) {
    const ExactCopy copy(text);
    TextReader reader(copy.view());
    Command command;
    if (reader.next(command) != ReadResult::Command) {
        return std::string(text) + " was written and is not understood: " + reader.diagnostic().message;
    }
    if (!isKept(original, command, changed)) return std::string(text) + " was written and is read differently";
    if (reader.next(command) != ReadResult::End) return std::string(text) + " was written and is read as two";
    return {};
}

std::string position(const Position& position) {
    return std::to_string(position.offset) + "/" + std::to_string(position.line) + "/" +
           std::to_string(position.column);
}

// Everything that a reader says about its input.
std::string account(TextReader& reader, CheckResult& result, bool withRoundTrips) {
    std::string said;
    Command command;
    while (true) {
        const ReadResult read = reader.next(command);
        if (read == ReadResult::End) return said;
        if (read == ReadResult::Error) {
            ++result.errors;
            said += reader.diagnostic().describe("") + "\n";
            continue;
        }
        ++result.commands;
        said += position(command.position) + command.form->function + std::string(command.source) + "\n";
        if (withRoundTrips && result.fault.empty()) result.fault = checkRoundTrips(command);
    }
}

}  // namespace

std::string checkRoundTrips(const Command& command) {
    TextWriter plain, quick(TextWriter::Form::Quick);
    BinaryWriter binary;
    const std::string text = plain.write(command);
    const size_t changed = plain.changedNumbers();
    std::string fault = readOneText(text.c_str(), command, changed);
    if (fault.empty()) fault = readOneText(quick.write(command), command, changed);
    if (!fault.empty()) return fault;

    const void* block = binary.write(command);
    const ExactCopy copy({static_cast<const char*>(block), binary.size()});
    BinaryReader reader;
    Command again;
    if (reader.read(copy.view().data(), copy.view().size(), again) != ReadResult::Command) {
        return text + " as a block is not understood: " + reader.diagnostic().message;
    }
    if (!sameCommand(command, again)) return text + " as a block is read differently";
    return plain.write(again) == text ? std::string() : text + " as a block gives another text";
}

CheckResult checkText(std::string_view text) {
    const ExactCopy copy(text);
    CheckResult result, pieceResult;
    TextReader reader(copy.view());
    const std::string said = account(reader, result, true);
    if (reader.consumed() > text.size() + 1) result.fault = "more was read than there is";

    PieceSource source(copy.view());
    TextReader pieceReader(source, 16);
    if (account(pieceReader, pieceResult, false) != said) result.fault = "read in pieces, the text says something else";
    return result;
}

CheckResult checkBlock(std::string_view block) {
    const ExactCopy copy(block);
    CheckResult result;
    OddWords names;
    BinaryReader reader(&names);
    Command command;
    const ReadResult read = reader.read(copy.view().data(), copy.view().size(), command);
    if (read == ReadResult::Command) {
        ++result.commands;
        result.fault = checkRoundTrips(command);
    }
    if (read == ReadResult::Error) {
        ++result.errors;
        if (reader.diagnostic().message.empty()) result.fault = "an error without a message";
    }
    return result;
}
