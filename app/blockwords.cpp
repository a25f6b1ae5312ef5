// A binary block as lines for a person: each 64-bit word, and what it means.

#include <fmt/core.h>

#include <cstring>
#include <stdexcept>

#include "app/example.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

class BlockLines {
public:
    explicit BlockLines(const Command& described) : command(described) {
        const auto* block = static_cast<const char*>(writer.write(command));
        for (size_t at = 0; at < writer.size(); at += sizeof(uint64_t)) {
            words.emplace_back();
            std::memcpy(&words.back(), block + at, sizeof(uint64_t));
        }
    }

    std::string write() {
        line(fmt::format("block of {} bytes", words[0]));
        line(fmt::format("keyword {}", command.word()));
        for (size_t place = 0; place < command.values().size(); ++place)
            writeValue(place);
        line("end of the block");
        if (next != words.size()) throw std::runtime_error("a block is longer than its items");
        return text;
    }

private:
    void line(const std::string& meaning) { text += fmt::format("{:016x}  {}\n", words.at(next++), meaning); }

    void writeValue(size_t place) {
        const Value& value = command.values()[place];
        if (value.kind == ValueKind::Keyword) return line(fmt::format("keyword {}", command.keywordText(place)));
        if (value.isList) {
            line("list");
            line(fmt::format("{} bytes of items", words[next]));
        }
        for (size_t item = 0; item < value.count; ++item)
            writeItem(value, item);
        if (value.isList) line("end of the list");
    }

    void writeItem(const Value& value, size_t item) {
        switch (value.kind) {
            case ValueKind::Number:
                line("number");
                return numbers(1);
            case ValueKind::Vector:
                line("vector, components");
                return numbers(command.vector(value, item).count);
            case ValueKind::Axes:
                return axes(command.axes(value, item));
            case ValueKind::CoordSys:
                numbers(3, "  (position)");
                return axes(command.coordSys(value, item).axes);
            default:
                return bytes(command.text(value, item), value.kind == ValueKind::Symbol ? "symbol" : "text");
        }
    }

    void axes(const ZantAxesCore& value) {
        line("axes, rows");
        numbers(3 * value.rows);
    }

    void numbers(int count, const char* role = "") {
        for (int index = 0; index < count; ++index) {
            double number;
            std::memcpy(&number, &words.at(next), sizeof number);
            line(fmt::format("  {}{}", number, role));
        }
    }

    // The bytes, their terminator and the padding, eight to a word.
    void bytes(const char* content, const char* kind) {
        const size_t length = std::strlen(content);
        line(fmt::format("{}, bytes", kind));
        for (size_t at = 0; at <= length; at += sizeof(uint64_t))
            line(fmt::format("  \"{:.8}\"", at < length ? content + at : ""));
    }

    const Command& command;
    BinaryWriter writer;
    std::vector<uint64_t> words;
    size_t next = 0;
    std::string text;
};

}  // namespace

std::string blockWords(const Command& command) {
    return BlockLines(command).write();
}

}  // namespace Zant::App
