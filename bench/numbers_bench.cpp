// The text of numbers against what a user would pick instead: five sets of numbers, all contestants taking turns.
// Peers write with the 8 decimals of a command where they can, and in their shortest form.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "own/str2num.h"
#include "own/textbuffer.h"

#ifdef ZANT_BENCH_FMT
#include <fmt/compile.h>
#include <fmt/format.h>
#endif
#ifdef ZANT_BENCH_DOUBLE_CONVERSION
#include <double-conversion/double-conversion.h>
#endif

namespace {

constexpr size_t setSize = 4096;
constexpr size_t textRoom = 400;
constexpr int decimals = 8;
constexpr int exponentLimit = 5;

using Numbers = std::vector<double>;

struct Set {
    const char* title;
    double concatTarget;
    Numbers numbers;
};

template <class Source>
Numbers generate(Source source) {
    std::mt19937_64 engine(20240229);
    Numbers numbers(setSize);
    for (double& number : numbers)
        number = source(engine);
    return numbers;
}

double uniform(std::mt19937_64& engine, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine);
}

std::vector<Set> makeSets() {
    using Engine = std::mt19937_64;
    return {
        {"small integers", 0.35, generate([](Engine& e) { return static_cast<double>(e() % 1000); })},
        {"short decimals", 0.50, generate([](Engine& e) { return static_cast<double>(e() % 10000) / 100.0; })},
        {"random in [0, 1)", 0.45, generate([](Engine& e) { return uniform(e, 0, 1); })},
        {"random in [-1000, 1000]", 0.40, generate([](Engine& e) { return uniform(e, -1000, 1000); })},
        {"exponents 1e-12 to 1e12", 0.50, generate([](Engine& e) { return std::pow(10.0, uniform(e, -12, 12)); })},
    };
}

void addOurs(Contest& contest, const Set& set, Zant::TextBuffer& buffer) {
    contest.ours(
        "TextBuffer::concat",
        [&] {
            for (const double number : set.numbers) {
                buffer.concat(number);
                keep(*static_cast<const char*>(buffer));
            }
        },
        set.concatTarget);
    contest.ours(
        "double_2_sci",
        [&] {
            char text[textRoom];
            for (const double number : set.numbers) {
                size_t room = sizeof text;
                Zant::double_2_sci(number, text, room, decimals, exponentLimit);
                keep(text);
            }
        },
        0.60);
}

void addStandardPeers(Contest& contest, const Numbers& numbers) {
    contest.peer("std::to_chars, shortest", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            std::to_chars(text, text + sizeof text, number);
            keep(text);
        }
    });
    contest.peer("std::to_chars, fixed", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, decimals);
            keep(text);
        }
    });
    contest.peer("snprintf", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            std::snprintf(text, sizeof text, "%.8g", number);
            keep(text);
        }
    });
    contest.peer("std::ostringstream", [&] {
        std::ostringstream stream;
        stream.precision(decimals);
        for (const double number : numbers) {
            stream.seekp(0);
            stream << number;
            keep(stream);
        }
    });
}

#ifdef ZANT_BENCH_FMT
void addFmt(Contest& contest, const Numbers& numbers) {
    contest.peer("fmt, shortest", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            fmt::format_to(text, "{}", number);
            keep(text);
        }
    });
    contest.peer("fmt, compiled, shortest", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            fmt::format_to(text, FMT_COMPILE("{}"), number);
            keep(text);
        }
    });
    contest.peer("fmt, compiled, fixed", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            fmt::format_to(text, FMT_COMPILE("{:.8f}"), number);
            keep(text);
        }
    });
}
#else
void addFmt(Contest&, const Numbers&) {}
#endif

#ifdef ZANT_BENCH_DOUBLE_CONVERSION
void addDoubleConversion(Contest& contest, const Numbers& numbers) {
    using double_conversion::DoubleToStringConverter;
    using double_conversion::StringBuilder;
    static const DoubleToStringConverter converter(0, "inf", "nan", 'e', -exponentLimit, exponentLimit + 1, 0, 0);
    contest.peer("double-conversion, shortest", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            StringBuilder builder(text, sizeof text);
            converter.ToShortest(number, &builder);
            builder.Finalize();
            keep(text);
        }
    });
    contest.peer("double-conversion, fixed", [&] {
        char text[textRoom];
        for (const double number : numbers) {
            StringBuilder builder(text, sizeof text);
            converter.ToFixed(number, decimals, &builder);
            builder.Finalize();
            keep(text);
        }
    });
}
#else
void addDoubleConversion(Contest&, const Numbers&) {}
#endif

bool runWriting(const Set& set) {
    Zant::TextBuffer buffer;
    buffer.fit(64);
    Contest contest(std::string("writing, ") + set.title, set.numbers.size());
    addOurs(contest, set, buffer);
    addStandardPeers(contest, set.numbers);
    addFmt(contest, set.numbers);
    addDoubleConversion(contest, set.numbers);
    return contest.run();
}

void runReading(const Set& set) {
    std::vector<std::string> texts;
    for (const double number : set.numbers) {
        char text[textRoom];
        size_t room = sizeof text;
        Zant::double_2_sci(number, text, room, decimals, exponentLimit);
        texts.emplace_back(text);
    }
    Contest contest(std::string("reading, ") + set.title, texts.size());
    contest.ours("sdecimal_2_double", [&] {
        for (const std::string& text : texts) {
            const char* at = text.c_str();
            keep(Zant::sdecimal_2_double(at));
        }
    });
    contest.peer("std::from_chars", [&] {
        for (const std::string& text : texts) {
            double number = 0;
            std::from_chars(text.data(), text.data() + text.size(), number);
            keep(number);
        }
    });
    contest.peer("strtod", [&] {
        for (const std::string& text : texts)
            keep(std::strtod(text.c_str(), nullptr));
    });
    contest.run();
}

void runIntegers() {
    std::vector<int> numbers;
    std::mt19937_64 engine(20240229);
    for (size_t i = 0; i < setSize; ++i)
        numbers.push_back(static_cast<int>(engine() % 2000) - 1000);
    Zant::TextBuffer buffer;
    buffer.fit(64);
    Contest contest("writing ints in [-1000, 1000)", numbers.size());
    contest.ours("TextBuffer::concat", [&] {
        for (const int number : numbers) {
            buffer.concat(number);
            keep(*static_cast<const char*>(buffer));
        }
    });
    contest.peer("std::to_chars", [&] {
        char text[textRoom];
        for (const int number : numbers) {
            std::to_chars(text, text + sizeof text, number);
            keep(text);
        }
    });
    contest.run();
}

}  // namespace

int main() {
    const std::vector<Set> sets = makeSets();
    bool allMet = true;
    for (const Set& set : sets)
        allMet &= runWriting(set);
    runIntegers();
    for (const Set& set : sets)
        runReading(set);
    return allMet ? 0 : 1;
}
