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

TextWriter::TextWriter(Form textForm, Numbers numberText) : form_(textForm), numbers_(numberText) {}

const char* TextWriter::write(const Command& command) {
    text_.clear();
    changed_ = 0;
    writeKeyword(command.form->command, command.word());
    for (size_t place = 0; place < command.values().size(); ++place) {
        text_ += place == 0 && form_ == Form::Plain ? ' ' : ',';
        const Value& value = command.values()[place];
        if (value.kind == ValueKind::Keyword) {
            writeKeyword(command.keywordNumber(place), command.keywordText(place));
        } else {
            writeValue(command, value);
        }
    }
    text_ += ';';
    return text_.c_str();
}

void TextWriter::writeKeyword(int number, const char* word) {
    if (form_ == Form::Plain) {
        text_ += word;
        return;
    }
    text_ += '[';
    writeNumber(number);
    text_ += ']';
}

// A list of one item is the bare item, an empty list is nothing.
void TextWriter::writeValue(const Command& command, const Value& value) {
    const bool braces = value.count >= 2;
    if (braces) text_ += '{';
    for (size_t item = 0; item < value.count; ++item) {
        if (item != 0) text_ += ',';
        writeItem(command, value, item);
    }
    if (braces) text_ += '}';
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
            text_ += '@';
            return writeAxes(coordSys.axes);
        }
        case ValueKind::Symbol: {
            const char* const name = command.text(value, item);
            isBareName(name) ? void(text_ += name) : writeQuoted(name);
        }
    }
}

// Quotes inside are doubled; every other character stands for itself.
void TextWriter::writeQuoted(const char* string) {
    text_ += '"';
    while (const char* const quote = std::strchr(string, '"')) {
        text_.append(string, quote + 1).push_back('"');
        string = quote + 1;
    }
    text_ += string;
    text_ += '"';
}

void TextWriter::writeNumber(double number) {
    if (numbers_ == Numbers::AsClient) return writeAsClient(number, false);
    char digits[numberRoom];
    changed_ += !std::isfinite(number);
    text_.append(digits, Language::writeNumber(digits, number));
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
    text_.append(digits[(mostPasses - 1) % 2], length);
}

void TextWriter::writeNumbers(const double* values, int count) {
    for (int k = 0; k < count; ++k) {
        text_ += k == 0 ? '(' : ',';
        writeNumber(values[k]);
    }
    text_ += ')';
}

void TextWriter::writeAngle(double radians) {
    if (numbers_ == Numbers::AsClient) return writeAsClient(radians * 180.0 / pi, true);
    char digits[numberRoom];
    bool exact = true;
    text_.append(digits, Language::writeAngle(digits, radians, exact));
    changed_ += !exact;
}

void TextWriter::writeAngles(const double* radians, const double* scales) {
    text_ += '<';
    for (int k = 0; k < 3 && !isBitwise(radians, 3, 0.0); ++k) {
        if (k != 0) text_ += ',';
        writeAngle(radians[k]);
    }
    text_ += '>';
    if (isBitwise(scales, 3, 1.0)) return;
    text_ += '*';
    writeNumbers(scales, isBitwise(scales, 3, scales[0]) ? 1 : 3);
}

void TextWriter::writeAxes(const ZantAxesCore& axes) {
    if (Axes::isEye(axes)) {
        text_ += "<>";
    } else if (axes.rows == 2) {
        writeAngles(axes.m, axes.m + 3);
    } else {
        text_ += "axes(";
        for (int row = 0; row < axes.rows; ++row) {
            if (row != 0) text_ += ',';
            writeNumbers(axes.m + 3 * row, 3);
        }
        text_ += ')';
    }
}

}  // namespace Zant::Language
