// The items of every kind of argument in a binary block.

#include "language/blockparser.h"

#include <cstring>

#include "language/numbers.h"

namespace Zant::Language {

using namespace BlockLayout;

bool BlockParser::parse(const void* block, size_t size, Command& target) {
    const auto* bytes = static_cast<const char*>(block);
    return walk(bytes + firstItem, bytes + size - endWords * wordSize, target);
}

// A length word of 0 stands for an empty text, with a zero byte after it, and for a null text, which ends there. A
// form with n texts is tried at most 2^n times, and no form has more than a few.
int BlockParser::readings(const PlaceKind& place) const {
    return place.value == ValueKind::String && wordAt(here) == 0 ? 2 : 1;
}

bool BlockParser::readList(const PlaceKind& place) {
    // One item may stand without the marks of a list, as it does in text: vertex maps send their rows like that.
    if (has(1) && wordAt(here) != listMarker) return readItem(place);
    if (!has(listWords + endWords) || takeWord() != listMarker) return false;
    const uint64_t length = takeWord();
    if (length < wordSize || length % wordSize != 0 || length > left())
        return fail("the list does not fit into the block");
    const char* const after = here + length;
    const char* const outerEnd = end;
    if (wordAt(after - wordSize) != endMarker) return fail("the list has no end");
    end = after - wordSize;
    bool good = true;
    while (good && here != end)
        good = readItem(place);
    end = outerEnd;
    if (!good) return fail(complaint ? complaint : "the list holds something else");
    here = after;
    return true;
}

bool BlockParser::readNumber(double& number) {
    if (!has(numberWords) || takeWord() != 0) return false;
    takeDoubles(&number, 1);
    return true;
}

bool BlockParser::readString() {
    if (!has(1)) return false;
    const uint64_t length = takeWord();
    if (length != 0 || reading == 0) return readText(length);
    command->addText({});
    return true;
}

bool BlockParser::readText(uint64_t length) {
    if (length >= left()) return fail("the text does not fit into the block");
    if (std::memchr(here, '\0', length + 1) != here + length) return fail("the text does not end where it should");
    command->addText({here, length});
    here += textWords(length) * wordSize;
    return true;
}

bool BlockParser::readVector(ZantVectorCore& vector) {
    if (!has(1)) return false;
    const uint64_t count = takeWord();
    if (count < 1 || count > 4 || !has(count)) return false;
    vector.count = static_cast<int32_t>(count);
    takeDoubles(vector.values, count);
    return true;
}

bool BlockParser::readAxes(ZantAxesCore& axes) {
    if (!has(1)) return false;
    const uint64_t rows = takeWord();
    if (rows > 3 || !has(3 * rows)) return false;
    axes.rows = static_cast<int32_t>(rows);
    takeDoubles(axes.m, 3 * rows);
    return true;
}

bool BlockParser::readCoordSys(ZantCoordSysCore& coordSys) {
    if (!has(coordSysWords(0))) return false;
    takeDoubles(coordSys.position, 3);
    return readAxes(coordSys.axes);
}

bool BlockParser::readSymbol() {
    if (!has(registeredWords)) return false;
    const uint64_t length = takeWord();
    if (length == 0) return readRegistered();
    if (length > longestName) return fail("the name is longer than 127 bytes");
    return readText(length);
}

bool BlockParser::readRegistered() {
    const char* const name = symbols_ ? symbols_->nameOf(takeWord()) : nullptr;
    if (!name) return fail("no object has this registered word");
    command->addText(name);
    return true;
}

uint64_t BlockParser::takeWord() {
    const uint64_t word = wordAt(here);
    here += wordSize;
    return word;
}

void BlockParser::takeDoubles(double* values, size_t count) {
    std::memcpy(values, here, count * sizeof *values);
    here += count * sizeof *values;
}

std::string BlockParser::found() const {
    const char* const at = start + deepest.offset;
    if (at == end) return "the end of the command";
    const uint64_t word = wordAt(at);
    if (word == listMarker) return "a list";
    if (word == 0 && deepest.problem != Problem::UnknownKeyword && at + wordSize < end) {
        double number = 0;
        std::memcpy(&number, at + wordSize, sizeof number);
        return "the word 0 and " + numberText(number);
    }
    return "the word " + std::to_string(static_cast<int64_t>(word));
}

}  // namespace Zant::Language
