// Numbers as text. std::from_chars and std::to_chars for doubles bring no unique symbol, those for integers do: a
// module with one would never be unloaded.

#include "language/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "language/characters.h"

namespace Zant::Language {

namespace {

constexpr double pi = 3.141592653589793;
constexpr double infinity = std::numeric_limits<double>::infinity();

const char* endOfDigits(const char* text) {
    while (isCharacter(*text, Digit))
        ++text;
    return text;
}

// Whether a number that no double holds is too large, and not too small: where its first digit stands decides.
bool isLarge(std::string_view number) {
    const size_t mark = std::min(number.find_first_of("eE"), number.size());
    const size_t point = std::min(number.find('.'), mark);
    const size_t first = number.find_first_of("123456789");
    const std::string_view exponent = number.substr(mark);
    constexpr int64_t limit = int64_t{1} << 40;  // far beyond any text that fits into memory
    int64_t power = 0;
    for (const char character : exponent) {
        if (isCharacter(character, Digit)) power = std::min(limit, 10 * power + (character - '0'));
    }
    if (exponent.find('-') != exponent.npos) power = -power;
    return power + static_cast<int64_t>(point) - static_cast<int64_t>(first) > 0;
}

// @return whether the standard library takes all of the text for a number, and a double holds it
bool parse(std::string_view number, double& value) {
    const char* const last = number.data() + number.size();
    const auto [end, error] = std::from_chars(number.data(), last, value);
    return end == last && error == std::errc();
}

// A number that no double holds, or one in the client's notation alone: the digits of the exponent, or all of them, may
// be missing, and "+-" is "-".
double parseOdd(std::string_view number) {
    const size_t mark = std::min(number.find_first_of("eE"), number.size());
    const double zero = number[0] == '-' ? -0.0 : 0.0;
    double value = 0;
    if (number.substr(0, mark).find_first_of("123456789") == number.npos) return zero;
    std::string plain(number.substr(0, isCharacter(number.back(), Digit) ? number.size() : mark));
    if (plain.compare(std::min(mark + 1, plain.size()), 2, "+-") == 0) plain.erase(mark + 1, 1);
    if (parse(plain, value)) return value;
    return isLarge(plain) ? std::copysign(infinity, zero) : zero;
}

// The degrees whose radians are nearest to the given ones. Two operations round on the way back, so that they may stand
// a few doubles beside the quotient.
double nearestDegrees(double radians) {
    constexpr int widest = 4;
    constexpr double largest = 9.9e305;  // the degrees of which can be multiplied
    const double quotient = std::clamp(radians, -largest, largest) * 180.0 / pi;
    const auto distance = [&](double degrees) { return std::fabs(radiansOf(degrees) - radians); };
    double low = quotient, high = quotient, best = quotient;
    for (int k = 0; k < widest && distance(best) != 0; ++k) {
        low = std::nextafter(low, -infinity);
        high = std::nextafter(high, infinity);
        if (distance(low) < distance(best)) best = low;
        if (distance(high) < distance(best)) best = high;
    }
    return best;
}

struct NumberText {
    char characters[numberRoom];
    size_t length = 0;

    explicit NumberText(double number) { length = static_cast<size_t>(writeNumber(characters, number) - characters); }
};

// The shortest text of all degrees with the same radians as these, and of the shortest the first one. There are three
// at most, some sixty when the radians are denormal.
NumberText shortestDegrees(double degrees) {
    const double radians = radiansOf(degrees);
    for (double below; radiansOf(below = std::nextafter(degrees, -infinity)) == radians;)
        degrees = below;
    NumberText shortest(degrees);
    while (radiansOf(degrees = std::nextafter(degrees, infinity)) == radians) {
        const NumberText text(degrees);
        if (text.length < shortest.length) shortest = text;
    }
    return shortest;
}

}  // namespace

const char* readAnyNumber(const char* text, double& number) {
    const char* const end = endOfNumber(text);
    if (end != text) number = numberOf({text, static_cast<size_t>(end - text)});
    return end;
}

const char* endOfNumber(const char* text) {
    const char* at = text + (*text == '-');
    if (!isCharacter(*at, Digit) && *at != '.') return text;
    at = endOfDigits(at);
    if (*at == '.') at = endOfDigits(at + 1);
    if (!isCharacter(*at, Exponent)) return at;
    ++at;
    at += *at == '+';
    at += *at == '-';
    return endOfDigits(at);
}

double numberOf(std::string_view number) {
    double value = 0;
    return parse(number, value) ? value : parseOdd(number);
}

bool isNumberWord(std::string_view word) {
    const char* const end = word.data() + word.size();
    const char* const unsignedWord = word.data() + (!word.empty() && (word[0] == '+' || word[0] == '-'));
    const char* const digit = unsignedWord + (unsignedWord != end && *unsignedWord == '.');
    return digit != end && isCharacter(*digit, Digit) && endOfNumber(unsignedWord) == end;
}

char* writeNumber(char* out, double number) {
    if (!std::isfinite(number)) {
        if (std::isinf(number) && number < 0) *out++ = '-';
        *out++ = '0';
        return out;
    }
    if (std::fabs(number) <= 1e6 && number == std::trunc(number)) {
        return std::to_chars(out, out + numberRoom, number, std::chars_format::fixed).ptr;
    }
    char* const end = std::to_chars(out, out + numberRoom, number).ptr;
    char* const mark = std::find(out, end, 'e');
    if (mark == end) return end;
    // "e+07" and "e-07" are as good as "e7" and "e-7".
    char* to = mark + 1;
    const char* from = to + 1;
    if (*to == '-') ++to;
    if (*from == '0') ++from;
    return std::copy(from, static_cast<const char*>(end), to);
}

std::string numberText(double number) {
    if (std::isnan(number)) return "NaN";
    if (std::isinf(number)) return number < 0 ? "-infinity" : "infinity";
    char text[numberRoom];
    return {text, static_cast<size_t>(writeNumber(text, number) - text)};
}

double radiansOf(double degrees) {
    return degrees * pi / 180.0;
}

char* writeAngle(char* out, double radians, bool& exact) {
    if (radians == 0 || !std::isfinite(radians)) {
        exact = exact && radians == 0;
        return writeNumber(out, radians);
    }
    const double nearest = nearestDegrees(radians);
    exact = exact && radiansOf(nearest) == radians;
    const NumberText shortest = shortestDegrees(nearest);
    return std::copy_n(shortest.characters, shortest.length, out);
}

}  // namespace Zant::Language
