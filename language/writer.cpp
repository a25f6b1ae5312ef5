// Writing commands again, through the client's own command buffers.

#include "language/writer.h"

#include <cstring>

#include "client/encoding/blocklayout.h"
#include "client/encoding/commandbinarybuffer.h"

namespace Zant::Language {

CommandReplay::CommandReplay() : nowhere_(std::make_unique<CommandBinaryBuffer>(nullptr)) {}
CommandReplay::~CommandReplay() = default;

void CommandReplay::send(const Command& command, CommandBuffer& buffer) {
    write(command, buffer);
    buffer.parse();
}

void CommandReplay::write(const Command& command, CommandBuffer& buffer) {
    buffer.addEnum(command.form->command, command.word());
    for (size_t place = 0; place < command.values().size(); ++place) {
        const Value& value = command.values()[place];
        if (value.kind == ValueKind::Keyword) {
            buffer.addEnum(command.keywordNumber(place), command.keywordText(place));
        } else if (value.isList) {
            writeList(command, value, buffer);
        } else {
            writeValue(command, value, buffer);
        }
    }
}

void CommandReplay::writeValue(const Command& command, const Value& value, CommandBuffer& buffer) {
    switch (value.kind) {
        case ValueKind::Keyword:
            break;
        case ValueKind::Number:
            return buffer.addDouble(command.number(value));
        case ValueKind::String:
            return buffer.addString(command.text(value));
        case ValueKind::Vector:
            return buffer.addVector(command.vector(value));
        case ValueKind::Axes:
            return buffer.addAxes(command.axes(value));
        case ValueKind::CoordSys:
            return buffer.addCoordSys(command.coordSys(value));
        case ValueKind::Symbol:
            return buffer.addSymbol(symbolNamed(command.text(value), 0));
    }
}

void CommandReplay::writeList(const Command& command, const Value& value, CommandBuffer& buffer) {
    switch (value.kind) {
        case ValueKind::Number:
            return buffer.addVarLenDouble(command.numbers(value));
        case ValueKind::Vector:
            return buffer.addVarLenVector(command.vectors(value));
        case ValueKind::CoordSys:
            return buffer.addVarLenCoordSys(command.coordSystems(value));
        default:
            break;
    }
    symbolList_.clear();
    for (size_t item = 0; item < value.count; ++item) {
        symbolList_.push_back(&symbolNamed(command.text(value, item), item));
    }
    buffer.addVarLenSymbol(VarLenSymbol(symbolList_.data(), symbolList_.size()));
}

// Symbols of our own that only lend their name.
const Symbol& CommandReplay::symbolNamed(const char* name, size_t slot) {
    while (symbols_.size() <= slot)
        symbols_.emplace_back(*nowhere_, "");
    symbols_[slot].setName(name);
    return symbols_[slot];
}

/// Keeps its block, and clears the padding after texts.
class BinaryWriter::Buffer : public CommandBinaryBuffer {
public:
    std::string_view block;

    Buffer() : CommandBinaryBuffer(nullptr) {}

    void parse() override { block = finish(); }

    using CommandBinaryBuffer::addString;
    void addString(const char* string) override {
        CommandBinaryBuffer::addString(string);
        const size_t size = std::strlen(string) + 1;
        const size_t padding = BlockLayout::textWords(size - 1) * BlockLayout::wordSize - size;
        std::memset(nextItem() - padding, 0, padding);
    }

    void addSymbol(const Symbol& symbol) override { addString(symbol.name); }
};

BinaryWriter::BinaryWriter() : buffer_(std::make_unique<Buffer>()) {}
BinaryWriter::~BinaryWriter() = default;

const void* BinaryWriter::write(const Command& command) {
    buffer_->discard();
    replay_.send(command, *buffer_);
    return buffer_->block.data();
}

size_t BinaryWriter::size() const {
    return buffer_->block.size();
}

}  // namespace Zant::Language
