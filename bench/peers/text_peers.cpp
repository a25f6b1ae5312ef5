// The two commands as text with the formatters of the standard library and of {fmt}.
#include <charconv>
#include <cstdio>
#include <sstream>
#include <string>

#ifdef ZANT_BENCH_FMT
#include <fmt/compile.h>
#include <fmt/format.h>
#endif

#include "bench/peers/commands.h"

namespace peers {

namespace {

// ---- std::to_chars --------------------------------------------------------------------------------------------------

/// Appends to a string that is reused: eight significant digits, or the shortest text that reads back the same.
template <bool shortest>
class Appender {
public:
    explicit Appender(std::string& target) : text(target) { text.clear(); }
    Appender& operator<<(const char* literal) {
        text.append(literal);
        return *this;
    }
    Appender& operator<<(double value) {
        char digits[32];
        const auto end = shortest ? std::to_chars(digits, digits + 32, value)
                                  : std::to_chars(digits, digits + 32, value, std::chars_format::general, 8);
        text.append(digits, end.ptr);
        return *this;
    }
    Appender& operator<<(int value) {
        char digits[16];
        text.append(digits, std::to_chars(digits, digits + 16, value).ptr);
        return *this;
    }

private:
    std::string& text;
};

template <class Stream>
void stream(Stream& out, const LightValues& v) {
    out << "lightAdd adaptive,(" << v.position.values[0] << "," << v.position.values[1] << "," << v.position.values[2]
        << "),(" << v.colour.values[0] << "," << v.colour.values[1] << "," << v.colour.values[2] << "),("
        << v.direction.values[0] << "," << v.direction.values[1] << "," << v.direction.values[2] << ")," << v.symbolName
        << "," << v.brightness << "," << v.samples << "," << v.depth << ";";
}

template <class Stream>
void stream(Stream& out, const GradientsValues& v) {
    out << "fg gradients," << v.first << "," << v.second << ";";
}

std::string reused;

template <bool shortest, class Value>
[[gnu::noinline]] void toChars(const Value& v) {
    Appender<shortest> out(reused);
    stream(out, v);
    receive(reused.c_str());
}

std::ostringstream reusedStream;

/// Writes over the same storage; taking the text out of the stream would cost a copy more.
template <class Value>
[[gnu::noinline]] void stringStream(const Value& v) {
    reusedStream.seekp(0);
    stream(reusedStream, v);
    receive(&reusedStream);
}

// ---- printf ---------------------------------------------------------------------------------------------------------

void print(char* out, size_t room, const LightValues& v) {
    std::snprintf(out, room, "lightAdd adaptive,(%.8g,%.8g,%.8g),(%.8g,%.8g,%.8g),(%.8g,%.8g,%.8g),%s,%.8g,%d,%d;",
                  v.position.values[0], v.position.values[1], v.position.values[2], v.colour.values[0],
                  v.colour.values[1], v.colour.values[2], v.direction.values[0], v.direction.values[1],
                  v.direction.values[2], v.symbolName, v.brightness, v.samples, v.depth);
}

void print(char* out, size_t room, const GradientsValues& v) {
    std::snprintf(out, room, "fg gradients,%.8g,%.8g;", v.first, v.second);
}

template <class Value>
[[gnu::noinline]] void printf(const Value& v) {
    char text[512];
    print(text, sizeof text, v);
    receive(text);
}

// ---- {fmt} ----------------------------------------------------------------------------------------------------------

#ifdef ZANT_BENCH_FMT
#define ZANT_LIGHT_FORMAT "lightAdd adaptive,({},{},{}),({},{},{}),({},{},{}),{},{},{},{};"
#define ZANT_LIGHT_FORMAT_8 \
    "lightAdd adaptive,({:.8g},{:.8g},{:.8g}),({:.8g},{:.8g},{:.8g}),({:.8g},{:.8g},{:.8g}),{},{:.8g},{},{};"

template <class Format>
void format(char* out, const Format& text, const LightValues& v) {
    *fmt::format_to(out, text, v.position.values[0], v.position.values[1], v.position.values[2], v.colour.values[0],
                    v.colour.values[1], v.colour.values[2], v.direction.values[0], v.direction.values[1],
                    v.direction.values[2], v.symbolName, v.brightness, v.samples, v.depth) = 0;
}

template <class Format>
void format(char* out, const Format& text, const GradientsValues& v) {
    *fmt::format_to(out, text, v.first, v.second) = 0;
}

template <class Value, class Format>
[[gnu::noinline]] void formatOne(const Value& v, const Format& text) {
    char out[512];
    format(out, text, v);
    receive(out);
}

template <class Values, class Format>
Contest::Turn formatted(const Values& values, const Format& text) {
    return [&values, text] {
        for (const auto& v : values)
            formatOne(v, text);
    };
}

void addFormats(Contest& contest, const Lights& values) {
    contest.peer("{fmt}", formatted(values, FMT_STRING(ZANT_LIGHT_FORMAT)));
    contest.peer("{fmt}, compiled", formatted(values, FMT_COMPILE(ZANT_LIGHT_FORMAT)));
    contest.peer("{fmt}, compiled, 8 digits", formatted(values, FMT_COMPILE(ZANT_LIGHT_FORMAT_8)));
}

void addFormats(Contest& contest, const Gradients& values) {
    contest.peer("{fmt}", formatted(values, FMT_STRING("fg gradients,{},{};")));
    contest.peer("{fmt}, compiled", formatted(values, FMT_COMPILE("fg gradients,{},{};")));
    contest.peer("{fmt}, compiled, 8 digits", formatted(values, FMT_COMPILE("fg gradients,{:.8g},{:.8g};")));
}
#else
template <class Values>
void addFormats(Contest&, const Values&) {}
#endif

template <class Values, class Value>
Contest::Turn each(const Values& values, void (*send)(const Value&)) {
    return [&values, send] {
        for (const Value& v : values)
            send(v);
    };
}

template <class Values>
void addAll(Contest& contest, const Values& values) {
    using Value = typename Values::value_type;
    addFormats(contest, values);
    contest.peer("std::to_chars", each(values, toChars<true, Value>));
    contest.peer("std::to_chars, 8 digits", each(values, toChars<false, Value>));
    contest.peer("snprintf", each(values, printf<Value>));
    reusedStream.precision(8);
    contest.peer("std::ostringstream", each(values, stringStream<Value>));
}

}  // namespace

void addTextPeers(Contest& contest, const Lights& values) {
    addAll(contest, values);
}

void addTextPeers(Contest& contest, const Gradients& values) {
    addAll(contest, values);
}

}  // namespace peers
