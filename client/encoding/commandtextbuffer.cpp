#include "client/encoding/commandtextbuffer.h"

#include <algorithm>
#include <cstring>

#include "client/engine/instance.h"
#include "client/symbols/symbol.h"
#include "own/lentblock.h"
#include "own/numbertext.h"

namespace Zant {

namespace {

constexpr double pi = 3.141592653589793;

/// A vector of four with its brackets and commas; axes of nine with theirs, and the longest word around them.
constexpr size_t vectorRoom = 4 * (doubleStyle.room + 1) + 2 + numberTextRoom;
constexpr size_t axesRoom = 9 * (doubleStyle.room + 1) + 16 + numberTextRoom;
/// What the longest command that a symbol sends of itself, in a destructor, takes after its keyword: a separator, a
/// name of 127 bytes, a semicolon, a terminator. With room for all of it, it fails before its first byte or not at all.
constexpr size_t symbolCommandRoom = 1 + (sizeof ZantSymbolCore::name - 1) + 2;

char* put(char* out, char c) {
    *out = c;
    return out + 1;
}

char* put(char* out, const char* characters, size_t length) {
    std::memcpy(out, characters, length);
    return out + length;
}

/// Half of the keywords have 8 to 16 letters: two moves, which may overlap, in place of a call.
char* putKeyword(char* out, const char* word, size_t length) {
    constexpr size_t half = 8;
    if (length - half > half) return put(out, word, length);
    std::memcpy(out, word, half);
    std::memcpy(out + length - half, word + length - half, half);
    return out + length;
}

char* putNumber(char* out, double value) {
    return writeNumberText(value, out);
}

/// Numbers with commas between them; at least one.
char* putNumbers(char* out, const double* values, int count) {
    out = putNumber(out, values[0]);
    for (int i = 1; i < count; ++i) {
        out = putNumber(put(out, ','), values[i]);
    }
    return out;
}

/// Numbers in brackets.
char* putTuple(char* out, const double* values, int count) {
    return put(putNumbers(put(out, '('), values, count), ')');
}

char* putAngles(char* out, const double* radians) {
    if (radians[0] == 0 && radians[1] == 0 && radians[2] == 0) return out;
    const double degrees[3] = {radians[0] * 180.0 / pi, radians[1] * 180.0 / pi, radians[2] * 180.0 / pi};
    return putNumbers(out, degrees, 3);
}

char* putScales(char* out, const double* scales) {
    if (scales[0] == 1 && scales[1] == 1 && scales[2] == 1) return out;
    const bool uniform = scales[0] == scales[1] && scales[1] == scales[2];
    return putTuple(put(out, '*'), scales, uniform ? 1 : 3);
}

char* putRows(char* out, const double* values, int rows) {
    out = put(out, "axes(", 5);
    for (int row = 0; row < std::min(rows, 3); ++row) {
        if (row > 0) out = put(out, ',');
        out = putTuple(out, values + 3 * row, 3);
    }
    return put(out, ')');
}

/// The notation of an orientation; the form of the record decides which.
char* putAxes(char* out, const ZantAxesCore& axes) {
    if (axes.rows != 2) return Axes::isEye(axes) ? put(out, "<>", 2) : putRows(out, axes.m, axes.rows);
    out = put(putAngles(put(out, '<'), axes.m), '>');
    return putScales(out, axes.m + 3);
}

/// The characters with every double quote doubled.
char* putDoubled(char* out, const char* text, size_t length) {
    const char* const end = text + length;
    while (const void* found = std::memchr(text, '"', static_cast<size_t>(end - text))) {
        const char* const after = static_cast<const char*>(found) + 1;
        out = put(put(out, text, static_cast<size_t>(after - text)), '"');
        text = after;
    }
    return put(out, text, static_cast<size_t>(end - text));
}

}  // namespace

// ---- CommandTextBuffer ----------------------------------------------------------------------------------------------

CommandTextBuffer::CommandTextBuffer(Instance* owner) : CommandTextBuffer(owner, false) {}

CommandTextBuffer::CommandTextBuffer(Instance* owner, bool numbers) : CommandBuffer(owner), quick(numbers) {}

CommandTextBuffer::~CommandTextBuffer() = default;

void CommandTextBuffer::parse() {
    send("CommandTextBuffer", ParseText);
}

void CommandTextBuffer::send(const char* source, ParseMode mode) {
    if (errorCode != 0 || !instance) return;
    error(deliver(source, mode));
}

int CommandTextBuffer::deliver(const char* source, ParseMode mode) {
    const char* const command = getTerminatedBuffer();
    const LentBlock lent(text_);
    return instance->parse(command, source, mode);
}

void CommandTextBuffer::generateAutoname(Symbol& symbol, char* name) {
    encode(reinterpret_cast<size_t>(&symbol), name, quick ? 60 : 16);
}

void CommandTextBuffer::addEnum(int number, const char* word) {
    if (quick || !word) return addEnumQuick(number);
    const size_t length = std::strlen(word);
    const char* const next = text_.separator ? "," : " ";
    end(putKeyword(begin(length + symbolCommandRoom), word, length), next);
}

void CommandTextBuffer::addEnumQuick(int number) {
    const char* const next = quick || text_.separator ? "," : " ";
    char* const out = put(begin(numberTextRoom + 2 + symbolCommandRoom), '[');
    end(put(writeNumberText(number, out), ']'), next);
}

void CommandTextBuffer::addDouble(double value) {
    end(putNumber(begin(numberTextRoom), value), ",");
}

void CommandTextBuffer::addString(const char* string) {
    if (!string) string = "";
    const size_t length = std::strlen(string);
    const auto quotes = static_cast<size_t>(std::count(string, string + length, '"'));
    char* const out = put(begin(length + quotes + 2), '"');
    end(put(putDoubled(out, string, length), '"'), ",");
}

void CommandTextBuffer::addVector(const Vector& vector) {
    end(putTuple(begin(vectorRoom), vector.values, std::min(vector.count, 4)), ",");
}

void CommandTextBuffer::addAxes(const Axes& axes) {
    end(putAxes(begin(axesRoom), axes), ",");
}

void CommandTextBuffer::addCoordSys(const CoordSys& coordSys) {
    char* const out = putTuple(begin(vectorRoom + axesRoom), coordSys.position, 3);
    end(putAxes(put(out, '@'), coordSys.axes), ",");
}

void CommandTextBuffer::addSymbol(const Symbol& symbol) {
    const size_t length = std::strlen(symbol.name);
    end(put(begin(length), symbol.name, length), ",");
}

void CommandTextBuffer::addVarLenDouble(const VarLenDouble& list) {
    addVarLen(list);
}

void CommandTextBuffer::addVarLenVector(const VarLenVector& list) {
    addVarLen(list);
}

void CommandTextBuffer::addVarLenAxes(const VarLenAxes& list) {
    addVarLen(list);
}

void CommandTextBuffer::addVarLenCoordSys(const VarLenCoordSys& list) {
    addVarLen(list);
}

void CommandTextBuffer::addVarLenSymbol(const VarLenSymbol& list) {
    addVarLen(list);
}

void CommandTextBuffer::addAxesCore(const ZantAxesCore& axes) {
    text_.fit(text_.dataSize + axesRoom);
    end(putAxes(text_.buffer + text_.dataSize, axes), text_.separator);
}

void CommandTextBuffer::setCommandSeparator() {
    text_.separator = quick || text_.separator ? "," : " ";
}

void CommandTextBuffer::setArgumentSeparator() {
    text_.separator = ",";
}

const char* CommandTextBuffer::getTerminatedBuffer() {
    text_.concat(";");
    return text_;
}

void CommandTextBuffer::discard() {
    text_.dataSize = 0;
    text_.separator = nullptr;
}

// ---- CommandQuickTextBuffer -----------------------------------------------------------------------------------------

CommandQuickTextBuffer::CommandQuickTextBuffer(Instance* owner) : CommandTextBuffer(owner, true) {}

CommandQuickTextBuffer::~CommandQuickTextBuffer() = default;

void CommandQuickTextBuffer::parse() {
    send("CommandQuickTextBuffer", ParseQuickText);
}

void CommandQuickTextBuffer::addEnum(int number, const char*) {
    addEnumQuick(number);
}

// ---- CommandOfflineBuffer -------------------------------------------------------------------------------------------

CommandOfflineBuffer::CommandOfflineBuffer(Instance* owner) : CommandTextBuffer(owner) {}

CommandOfflineBuffer::~CommandOfflineBuffer() = default;

void CommandOfflineBuffer::parse() {
    const char* const command = getTerminatedBuffer();
    const LentBlock lent(text_);
    parseOffline(command);
}

}  // namespace Zant
