#include "client/commands/commandbuffer.h"

#include "client/commands/utf8.h"
#include "client/engine/instance.h"

namespace Zant {

namespace {

/// Converts on the stack where the text is short, so that commands with short texts allocate nothing.
template <class Unit>
void addConverted(CommandBuffer& buffer, const Unit* text) {
    using Encoder = UTF8EncoderBuffer<Unit>;
    char shortText[512];
    if (text && Encoder::stringUTF8Length(text) < sizeof shortText) {
        Encoder::encode(text, shortText);
        buffer.addString(shortText);
    } else {
        buffer.addString(Encoder(text).data);
    }
}

}  // namespace

CommandBuffer::~CommandBuffer() = default;

void CommandBuffer::errorHandle(int) {}

void CommandBuffer::generateAutoname(Symbol& symbol, char* name) {
    encode(reinterpret_cast<size_t>(&symbol), name, 60);
}

void CommandBuffer::addString(const wchar_t* text) {
    addConverted(*this, text);
}

void* CommandBuffer::getParser() const {
    return instance ? instance->parserContext : nullptr;
}

void CommandBuffer::addUtf16String(const char16_t* text) {
    addConverted(*this, text);
}

CommandBuffer& CommandBuffer::operator+(const AxesHpb& angles) {
    addAxes(Axes(angles));
    return *this;
}

char CommandBuffer::encode(int digit) {
    if (digit < 10) return static_cast<char>('0' + digit);
    if (digit < 35) return static_cast<char>('a' + digit - 10);
    return static_cast<char>('A' + digit - 35);
}

void CommandBuffer::encode(size_t value, char* out, int radix) {
    const size_t base = static_cast<size_t>(radix);
    size_t weight = 1;
    while (value / weight >= base) {
        weight *= base;
    }
    if (value / weight < 10) *out++ = '_';
    if (value == 0) weight = 0;
    for (; weight != 0; weight /= base) {
        *out++ = encode(static_cast<int>(value / weight % base));
    }
    *out = 0;
}

}  // namespace Zant
