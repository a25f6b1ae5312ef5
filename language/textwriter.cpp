// Writing commands as text.

#include <algorithm>
#include <cmath>
#include <cstring>

#include "language/characters.h"
#include "language/numbers.h"
#include "language/writer.h"
#include "own/numbertext.h"

namespace Zant::Language {

namespace {

constexpr double pi = 3.141592653589793;

bool isBitwise(const double* values, int count, double wanted) {
    return std::all_of(values, values + count,
                       // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the sign of zero counts
                       [&](double value) { return std::memcmp(&value, &wanted, sizeof value) == 0; });
}

size_t clientText(double number, char* out) {
    return static_cast<size_t>(writeNumberText(number, out, doubleStyle) - out);
}

}  // namespace

bool isBareName(const char* name) {
    const char* end = name;
    while (!isCharacter(*end, Space | Delimiter))
        ++end;
    return *end == '\0' && end != name && !isNumberWord({name, static_cast<size_t>(end - name)});
}

TextWriter::TextWriter(Form textForm, Numbers numberText) : form(textForm), numbers(numberText) {}

const char* TextWriter::write(const Command& command) {
    text.clear();
    changed = 0;
    writeKeyword(command.form->command, command.word());
    for (size_t place = 0; place < command.values().size(); ++place) {
        text += place == 0 && form == Form::Plain ? ' ' : ',';
        const Value& value = command.values()[place];
        if (value.kind == ValueKind::Keyword) {
            writeKeyword(command.keywordNumber(place), command.keywordText(place));
        } else {
            writeValue(command, value);
        }
    }
    text += ';';
    return text.c_str();
}

void TextWriter::writeKeyword(int number, const char* word) {
    if (form == Form::Plain) {
        text += word;
        return;
    }
    text += '[';
    writeNumber(number);
    text += ']';
}

// A list of one item is the bare item, an empty list is nothing.
void TextWriter::writeValue(const Command& command, const Value& value) {
    const bool braces = value.count >= 2;
    if (braces) text += '{';
    for (size_t item = 0; item < value.count; ++item) {
        if (item != 0) text += ',';
        writeItem(command, value, item);
    }
    if (braces) text += '}';
}

void TextWriter::writeItem(const Command& command, const Value& value, size_t item) {
    switch (value.kind) {
        case ValueKind::Keyword:
            return;
        case ValueKind::Number:
            return writeNumber(command.number(value, item));
        case ValueKind::String:
            return writeQuoted(command.text(value, item));
        case ValueKind::Vector: {
            const Vector& vector = command.vector(value, item);
            return writeNumbers(vector.values, vector.count);
        }
        case ValueKind::Axes:
            return writeAxes(command.axes(value, item));
        case ValueKind::CoordSys: {
            const CoordSys& coordSys = command.coordSys(value, item);
            writeNumbers(coordSys.position, 3);
            text += '@';
            return writeAxes(coordSys.axes);
        }
        case ValueKind::Symbol: {
            const char* const name = command.text(value, item);
            isBareName(name) ? void(text += name) : writeQuoted(name);
        }
    }
}

// Quotes inside are doubled; every other character stands for itself.
void TextWriter::writeQuoted(const char* string) {
    text += '"';
    while (const char* const quote = std::strchr(string, '"')) {
        text.append(string, quote + 1).push_back('"');
        string = quote + 1;
    }
    text += string;
    text += '"';
}

void TextWriter::writeNumber(double number) {
    if (numbers == Numbers::AsClient) return writeAsClient(number, false);
    char digits[numberRoom];
    changed += !std::isfinite(number);
    text.append(digits, Language::writeNumber(digits, number));
}

// The client's text may change again when it is read and written once more. It is, until it stays: then a number has
// the same text whether it came as a double or as the client's text.
void TextWriter::writeAsClient(double number, bool isAngle) {
    constexpr int mostPasses = 64;  // every pass takes one unit of the last place off; three are rare
    char digits[2][numberRoom];
    size_t length = clientText(number, digits[0]);
    for (int pass = 1; pass < mostPasses; ++pass) {
        const double read = numberOf({digits[(pass - 1) % 2], length});
        const size_t again = clientText(isAngle ? radiansOf(read) * 180.0 / pi : read, digits[pass % 2]);
        const bool stays = again == length && std::memcmp(digits[0], digits[1], length) == 0;
        length = again;
        if (stays) break;
    }
    text.append(digits[(mostPasses - 1) % 2], length);
}

void TextWriter::writeNumbers(const double* values, int count) {
    for (int k = 0; k < count; ++k) {
        text += k == 0 ? '(' : ',';
        writeNumber(values[k]);
    }
    text += ')';
}

void TextWriter::writeAngle(double radians) {
    if (numbers == Numbers::AsClient) return writeAsClient(radians * 180.0 / pi, true);
    char digits[numberRoom];
    bool exact = true;
    text.append(digits, Language::writeAngle(digits, radians, exact));
    changed += !exact;
}

void TextWriter::writeAngles(const double* radians, const double* scales) {
    text += '<';
    for (int k = 0; k < 3 && !isBitwise(radians, 3, 0.0); ++k) {
        if (k != 0) text += ',';
        writeAngle(radians[k]);
    }
    text += '>';
    if (isBitwise(scales, 3, 1.0)) return;
    text += '*';
    writeNumbers(scales, isBitwise(scales, 3, scales[0]) ? 1 : 3);
}

void TextWriter::writeAxes(const ZantAxesCore& axes) {
    if (Axes::isEye(axes)) {
        text += "<>";
    } else if (axes.rows == 2) {
        writeAngles(axes.m, axes.m + 3);
    } else {
        text += "axes(";
        for (int row = 0; row < axes.rows; ++row) {
            if (row != 0) text += ',';
            writeNumbers(axes.m + 3 * row, 3);
        }
        text += ')';
    }
}

}  // namespace Zant::Language
