// Writing commands again, through the client's own command buffers.

#include "language/writer.h"

#include <cstring>
#include <string>

#include "client/encoding/commandbinarybuffer.h"
#include "client/engine/instance.h"
#include "language/reader.h"

namespace Zant {

namespace {

/// Takes everything and sends nothing.
class Nowhere : public CommandBuffer {
public:
    Nowhere() : CommandBuffer(nullptr) {}
    void parse() override {}
    void addEnum(int, const char*) override {}
    void addDouble(double) override {}
    using CommandBuffer::addString;
    void addString(const char*) override {}
    void addVector(const Vector&) override {}
    void addAxes(const Axes&) override {}
    void addCoordSys(const CoordSys&) override {}
    void addSymbol(const Symbol&) override {}
    void addVarLenDouble(const VarLenDouble&) override {}
    void addVarLenVector(const VarLenVector&) override {}
    void addVarLenAxes(const VarLenAxes&) override {}
    void addVarLenCoordSys(const VarLenCoordSys&) override {}
    void addVarLenSymbol(const VarLenSymbol&) override {}
};

}  // namespace

CommandReplay::CommandReplay() : nowhere(std::make_unique<Nowhere>()) {}
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
    symbolList.clear();
    for (size_t item = 0; item < value.count; ++item) {
        symbolList.push_back(&symbolNamed(command.text(value, item), item));
    }
    buffer.addVarLenSymbol(VarLenSymbol(symbolList.data(), symbolList.size()));
}

// Symbols of our own that only lend their name.
const Symbol& CommandReplay::symbolNamed(const char* name, size_t slot) {
    while (symbols.size() <= slot)
        symbols.emplace_back(*nowhere, "");
    symbols[slot].setName(name);
    return symbols[slot];
}

/// A library whose engine only takes the blocks.
class BinaryWriter::Buffer {
public:
    std::vector<char> block;

    Buffer() : library(describe, nullptr), commands(library.createInstanceWithHandler(ignoreEvent, nullptr)) {
        commands.instance->parserContext = this;
    }

    Library library;
    CommandBinaryBuffer commands;

private:
    static void describe(Library* into) {
        static const LibraryFunctionsVtable engine = {[] {},
                                                      [](Instance* instance) -> void* { return instance; },
                                                      [](ZantLibraryInstance*) {},
                                                      [](int) { return 1; },
                                                      [](int) -> const char* { return nullptr; },
                                                      [](ZantLibraryInstance*, ZantEventData*) { return 0; },
                                                      {},
                                                      [](const char*, const char*, void*) { return 0; }};
        static const ParserFunctionsVtable parser = {nullptr, take, {}, nullptr, nullptr};
        into->vtables.library = &engine;
        into->vtables.parser = &parser;
    }

    static void ignoreEvent(ZantEventData*) {}

    static int take(void* self, const void* data, const char*, int) {
        const auto* bytes = static_cast<const char*>(data);
        static_cast<Buffer*>(self)->block.assign(bytes, bytes + BinaryReader::blockLength(data));
        return 0;
    }
};

namespace {

/// Walks over a block beside the command that it holds, and clears what stands between the items.
class PaddingCleaner {
public:
    PaddingCleaner(const Command& described, char* bytes) : command(described), block(bytes) {}

    void clean() {
        for (const Value& value : command.values()) {
            if (value.isList) at += 2 * wordSize;
            if (value.kind == ValueKind::Keyword) at += wordSize;
            for (size_t item = 0; item < value.count; ++item)
                skip(value, item);
            if (value.isList) at += wordSize;
        }
    }

private:
    void skip(const Value& value, size_t item) {
        switch (value.kind) {
            case ValueKind::Keyword:
                break;
            case ValueKind::Number:
                at += 2 * wordSize;
                break;
            case ValueKind::Vector:
                at += words(1 + command.vector(value, item).count);
                break;
            case ValueKind::Axes:
                at += words(1 + 3 * command.axes(value, item).rows);
                break;
            case ValueKind::CoordSys:
                at += words(4 + 3 * command.coordSys(value, item).axes.rows);
                break;
            default:
                skipText(std::strlen(command.text(value, item)));
                break;
        }
    }

    void skipText(size_t length) {
        const size_t behind = at + wordSize + length + 1;
        at = (behind + wordSize - 1) / wordSize * wordSize;
        std::memset(block + behind, 0, at - behind);
    }

    static size_t words(int count) { return wordSize * static_cast<size_t>(count); }

    static constexpr size_t wordSize = 8;
    const Command& command;
    char* block;
    size_t at = 2 * wordSize;  // behind the length and the command word
};

}  // namespace

BinaryWriter::BinaryWriter() : buffer(std::make_unique<Buffer>()) {}
BinaryWriter::~BinaryWriter() = default;

const void* BinaryWriter::write(const Command& command) {
    replay.send(command, buffer->commands);
    PaddingCleaner(command, buffer->block.data()).clean();
    return buffer->block.data();
}

size_t BinaryWriter::size() const {
    return buffer->block.size();
}

}  // namespace Zant
