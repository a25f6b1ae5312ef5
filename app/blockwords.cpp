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
    explicit BlockLines(const Command& described) : command_(described) {
        const auto* block = static_cast<const char*>(writer_.write(command_));
        for (size_t at = 0; at < writer_.size(); at += sizeof(uint64_t)) {
            words_.emplace_back();
            std::memcpy(&words_.back(), block + at, sizeof(uint64_t));
        }
    }

    std::string write() {
        line(fmt::format("block of {} bytes", words_[0]));
        line(fmt::format("keyword {}", command_.word()));
        for (size_t place = 0; place < command_.values().size(); ++place)
            writeValue(place);
        line("end of the block");
        if (next_ != words_.size()) throw std::runtime_error("a block is longer than its items");
        return text_;
    }

private:
    void line(const std::string& meaning) { text_ += fmt::format("{:016x}  {}\n", words_.at(next_++), meaning); }

    void writeValue(size_t place) {
        const Value& value = command_.values()[place];
        if (value.kind == ValueKind::Keyword) return line(fmt::format("keyword {}", command_.keywordText(place)));
        if (value.isList) {
            line("list");
            line(fmt::format("{} bytes of items", words_[next_]));
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
                return numbers(command_.vector(value, item).count);
            case ValueKind::Axes:
                return axes(command_.axes(value, item));
            case ValueKind::CoordSys:
                numbers(3, "  (position)");
                return axes(command_.coordSys(value, item).axes);
            default:
                return bytes(command_.text(value, item), value.kind == ValueKind::Symbol ? "symbol" : "text");
        }
    }

    void axes(const ZantAxesCore& value) {
        line("axes, rows");
        numbers(3 * value.rows);
    }

    void numbers(int count, const char* role = "") {
        for (int index = 0; index < count; ++index) {
            double number;
            std::memcpy(&number, &words_.at(next_), sizeof number);
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

    const Command& command_;
    BinaryWriter writer_;
    std::vector<uint64_t> words_;
    size_t next_ = 0;
    std::string text_;
};

}  // namespace

std::string blockWords(const Command& command) {
    return BlockLines(command).write();
}

}  // namespace Zant::App
