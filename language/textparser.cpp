// The notation of every kind of argument in text.

#include "language/textparser.h"

#include <cmath>
#include <cstring>

#include "language/characters.h"
#include "language/shortnumbers.h"

namespace Zant::Language {

namespace {

// A bare word or name ends at white space or at a mark; the ";" after the command is one.
const char* endOfWord(const char* word) {
    while (!isCharacter(*word, Space | Delimiter))
        ++word;
    return word;
}

}  // namespace

bool TextParser::parse(const char* first, const char* last, Command& target) {
    return walk(first, last, target);
}

inline void TextParser::skipSpace() {
    while (isCharacter(*here, Space))
        ++here;
}

inline bool TextParser::take(char character) {
    if (*here != character) return false;
    ++here;
    return true;
}

// Not inline: a caller of the fast path would pay for it.
ZANT_NOINLINE bool TextParser::readLongNumber(double& number) {
    const char* const after = readAnyNumber(here, number);
    if (after == here) return false;
    if (!std::isfinite(number)) return fail("the number is too large");
    here = after;
    return true;
}

inline bool TextParser::readNumber(double& number) {
    const char* const after = readShortNumber(here, number);
    if (!after) return readLongNumber(number);
    here = after;
    return true;
}

// The command word is followed by white space or ",", every later item by ",".
bool TextParser::readSeparator(Grammar::Node node, int depth) {
    if (*here != ',' && (depth != 0 || !isCharacter(here[-1], Space))) {
        complaint = depth == 0 ? "white space" : "',' or ';'";
        note(Problem::NoSeparator, node, depth + 1, here);
        return false;
    }
    if (take(',')) skipSpace();
    return true;
}

Grammar::Node TextParser::readKeyword(Grammar::Node node) {
    if (*here != '[') {
        const char* const word = here;
        const char* after = word;
        uint64_t tail = 0;
        for (; !isCharacter(*after, Space | Delimiter); ++after)
            tail = Grammar::Word::tailWith(tail, *after);
        here = after;
        return grammar.byWord(node, {{word, static_cast<size_t>(after - word)}, tail});
    }
    constexpr int longest = 9;  // digits that cannot wrap
    const char* const digits = ++here;
    uint64_t number = 0;
    for (; isCharacter(*here, Digit); ++here)
        number = 10 * number + static_cast<unsigned char>(*here - '0');
    if (here - digits > longest || !take(']')) return Grammar::none;
    return grammar.byNumber(node, number);
}

bool TextParser::readList(const PlaceKind& place) {
    if (here == end || *here == ',') return true;  // nothing at all is the empty list
    if (!take('{')) return readItem(place);
    skipSpace();
    if (take('}')) return true;
    while (true) {
        if (!readItem(place)) return fail(complaint ? complaint : "the list holds something else");
        skipSpace();
        if (take('}')) return true;
        if (!take(',')) return fail("expected ',' or '}'");
        skipSpace();
    }
}

bool TextParser::readAngle(double& radians) {
    const char* const angle = here;
    double degrees = 0;
    if (!readNumber(degrees)) return fail(complaint ? complaint : "expected an angle in degrees");
    radians = radiansOf(degrees);
    if (std::isfinite(radians)) return true;
    here = angle;
    return fail("the angle is too large");
}

// Numbers in parentheses.
bool TextParser::readRow(double* values, int minimum, int maximum, int& count) {
    if (!take('(')) return false;
    int numbers = 0;
    while (true) {
        skipSpace();
        if (numbers == maximum) return fail("too many numbers in parentheses");
        if (!readNumber(values[numbers])) return fail(complaint ? complaint : "expected a number in the parentheses");
        ++numbers;
        skipSpace();
        if (take(')')) break;
        if (!take(',')) return fail("expected ',' or ')'");
    }
    count = numbers;
    return numbers >= minimum || fail("too few numbers in parentheses");
}

bool TextParser::readVector(ZantVectorCore& vector) {
    return readRow(vector.values, 1, 4, vector.count);
}

bool TextParser::readAxes(ZantAxesCore& axes) {
    if (*here == '<') return readAngles(axes);
    constexpr std::string_view word = "axes";
    if (static_cast<size_t>(endOfWord(here) - here) != word.size() ||
        std::memcmp(here, word.data(), word.size()) != 0) {
        return false;
    }
    here += word.size();
    skipSpace();
    return readRows(axes);
}

bool TextParser::readAngles(ZantAxesCore& axes) {
    axes = AxesHpb();
    take('<');
    skipSpace();
    if (!take('>')) {
        for (int k = 0; k < 3; ++k) {
            if (k != 0 && !take(',')) return fail("expected three angles");
            skipSpace();
            if (!readAngle(axes.m[k])) return false;
            skipSpace();
        }
        if (!take('>')) return fail("expected '>'");
    }
    const char* const after = here;
    skipSpace();
    if (take('*')) return readScales(axes);
    here = after;
    return true;
}

// One scale for all three axes, or three.
bool TextParser::readScales(ZantAxesCore& axes) {
    skipSpace();
    int count = 0;
    if (!readRow(axes.m + 3, 1, 3, count)) return fail(complaint ? complaint : "expected scales in parentheses");
    if (count == 2) return fail("expected one scale or three");
    if (count == 1) axes.m[4] = axes.m[5] = axes.m[3];
    return true;
}

// Rows as they stand in the record; angles are in degrees here too.
bool TextParser::readRows(ZantAxesCore& axes) {
    if (!take('(')) return fail("expected '('");
    axes.rows = 0;
    do {
        skipSpace();
        if (axes.rows == 3) return fail("axes have at most three rows");
        int count = 0;
        if (!readRow(axes.m + 3 * axes.rows, 3, 3, count)) {
            return fail(complaint ? complaint : "expected a row of three numbers");
        }
        ++axes.rows;
        skipSpace();
    } while (take(','));
    if (!take(')')) return fail("expected ',' or ')'");
    for (int k = 0; axes.rows == 2 && k < 3; ++k) {
        axes.m[k] = radiansOf(axes.m[k]);
        if (!std::isfinite(axes.m[k])) return fail("the angle is too large");
    }
    return true;
}

bool TextParser::readCoordSys(ZantCoordSysCore& coordSys) {
    double values[3];
    int count = 0;
    if (!readRow(values, 3, 3, count)) return false;
    std::memcpy(coordSys.position, values, sizeof values);
    skipSpace();
    if (!take('@')) return fail("expected '@' and axes after the position");
    skipSpace();
    return readAxes(coordSys.axes) || fail(complaint ? complaint : "expected axes after '@'");
}

bool TextParser::readString() {
    size_t length = 0;
    return readQuoted(length);
}

bool TextParser::readQuoted(size_t& length) {
    if (*here != '"') return false;
    const char* piece = here + 1;
    for (bool first = true;; first = false) {
        const auto* close = static_cast<const char*>(std::memchr(piece, '"', static_cast<size_t>(end - piece)));
        if (!close) return fail("the text is not closed");
        const bool doubled = close[1] == '"';
        const size_t size = static_cast<size_t>(close - piece) + doubled;
        if (std::memchr(piece, '\0', size)) return fail("the text holds a zero byte");
        first ? command->addText({piece, size}) : command->extendText({piece, size});
        length += size;
        piece = close + 1 + doubled;
        if (!doubled) break;
    }
    here = piece;
    return true;
}

bool TextParser::readSymbol() {
    size_t length = 0;
    if (*here == '"') {
        if (!readQuoted(length)) return false;
        if (length == 0) return fail("the name is empty");
    } else {
        const std::string_view name(here, static_cast<size_t>(endOfWord(here) - here));
        length = name.size();
        if (length == 0 || (!isCharacter(*here, Letter) && isNumberWord(name))) return false;
        command->addText(name);
        here += length;
    }
    return length <= longestName || fail("the name is longer than 127 bytes");
}

std::string TextParser::foundWord() const {
    const char* const at = start + deepest.offset;
    constexpr size_t longest = 60;  // of a word that a message repeats
    size_t length = static_cast<size_t>(endOfWord(at) - at);
    if (length > longest) return {};
    std::string word(at, length);
    for (char& letter : word) {
        if (static_cast<unsigned char>(letter) < ' ' || letter == 0x7F) letter = '?';
    }
    return word;
}

std::string TextParser::found() const {
    const char* const at = start + deepest.offset;
    if (at == end) return "the end of the command";
    switch (*at) {
        case '"':
            return "a text";
        case '{':
            return "a list";
        case '<':
            return "axes";
        case ',':
            return "nothing";
        case '(': {
            const auto* close = static_cast<const char*>(std::memchr(at, ')', static_cast<size_t>(end - at)));
            return close && close[1] == '@' ? "a coordinate system" : "a vector";
        }
        default:
            break;
    }
    const std::string word = foundWord();
    if (word.empty()) return std::string("'") + (*at > ' ' && *at != 0x7F ? *at : '?') + "'";
    return "'" + word + "'";
}

}  // namespace Zant::Language
