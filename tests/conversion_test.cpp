// Commands and numbers from one encoding into another: nothing changes, and what is no command is refused in its place.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "language/reader.h"
#include "language/shortnumbers.h"
#include "language/writer.h"
#include "own/str2num.h"
#include "randomcommands.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

uint64_t bitsOf(double number) {
    uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

double doubleOf(uint64_t bits) {
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

/// Writes, reads, and writes again, with everything kept for the next command.
class Converter {
public:
    std::string text(const Command& original) { return plain.write(original); }

    /// @return what the text says as a block, as text again; or why not
    std::string throughBlock(const std::string& text) {
        if (!read(text)) return "not read: " + text;
        const void* block = binary.write(command);
        if (blocks.read(block, binary.size(), command) != ReadResult::Command) return blocks.diagnostic().message;
        return plain.write(command);
    }

    /// @return empty, or what did not hold for the three encodings of a command
    std::string check(const Command& original) {
        const std::string first = text(original);
        const bool isExact = plain.changedNumbers() == 0;
        if (!read(first)) return "not read: " + first;
        if (isExact && !sameCommand(original, command)) return "changed: " + first;
        if (!read(quick.write(command)) || plain.write(command) != first) return "changed as quick text: " + first;
        const void* block = binary.write(isExact ? original : command);
        if (blocks.read(block, binary.size(), command) != ReadResult::Command) return "no block: " + first;
        return plain.write(command) == first ? "" : "changed as a block: " + first;
    }

    TextWriter plain, quick{TextWriter::Form::Quick};
    BinaryWriter binary;
    BinaryReader blocks;
    Command command;

private:
    bool read(const std::string& text) {
        return TextReader(std::string_view(text)).next(command) == ReadResult::Command;
    }
};

std::string angleText(double radians, bool& exact) {
    char text[numberRoom];
    return {text, static_cast<size_t>(writeAngle(text, radians, exact) - text)};
}

}  // namespace

TEST(Conversion, KeepsAMillionDoubles) {
    RandomCommands random(11);
    Converter converter;
    std::vector<double> numbers = {0.0, -0.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 1e15, 959.815};
    while (numbers.size() < 1000)
        numbers.push_back(random.number());
    size_t checked = 0;
    std::string text;
    for (int round = 0; round < 1000; ++round) {
        text = "postProcess filter,{";
        for (double& number : numbers) {
            const std::string written = numberText(number);
            ASSERT_EQ(bitsOf(numberOf(written)), bitsOf(number)) << written;
            text += written + ",";
            number = random.number();
            ++checked;
        }
        text.back() = '}';
        text += ';';
        ASSERT_EQ(converter.throughBlock(text), text);
    }
    EXPECT_EQ(checked, 1000000u);
    EXPECT_EQ(converter.throughBlock("vector v,(-0,1000000,123456789.12345678,1e-7);"),
              "vector v,(-0,1000000,123456789.12345678,1e-7);");
}

TEST(Conversion, ReadsNumbersAsFarAsTheClientsParserAndRounds) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* text;
        double value;
    } rows[] = {{"5.", 5},
                {".5", .5},
                {".", 0},
                {"-.", -0.0},
                {"5.e3", 5000},
                {".e5", 0},
                {"1e", 1},
                {"1e+", 1},
                {"1e-", 1},
                {"1e+-3", 1e-3},
                {"1E2", 100},
                {"1e400", infinity},
                {"-1e400", -infinity},
                {"1e-400", 0},
                {"-2e-324", -0.0},
                {"0e99999999", 0},
                {"1e4294967297", infinity},
                {"0.000001e314", 1e308},
                {"1000000e-325", 1e-319},
                {"10000000e-340", 0},
                {"9007199254740993", 9007199254740992.0},
                {"0.9007199254740993", 0.9007199254740993},
                {"9999999999999999999", 1e19},
                {"18446744073709551617", 18446744073709551616.0},
                {"-0.000000000000000001", -1e-18},
                {"1.000000000000000000001", 1},
                {"1.7976931348623159e308", infinity}};
    for (const auto& row : rows) {
        double number = 0;
        EXPECT_EQ(bitsOf(numberOf(row.text)), bitsOf(row.value)) << row.text;
        const char* const end = readAnyNumber(row.text, number);
        EXPECT_TRUE(*end == '\0' && bitsOf(number) == bitsOf(row.value)) << row.text;
        EXPECT_TRUE(!readShortNumber(row.text, number) || bitsOf(number) == bitsOf(row.value)) << row.text;
    }
}

TEST(Conversion, ReadsShortNumbersAsIfTheyWereLong) {
    RandomCommands random(17);
    size_t shortOnes = 0;
    for (int round = 0; round < 200000; ++round) {
        std::string text(random.below(2), '-');
        const unsigned digits = random.below(22), point = random.below(22);
        for (unsigned place = 0; place <= digits; ++place)
            text += place == point ? '.' : static_cast<char>('0' + random.below(10));
        text += ";,e)"[random.below(4)];
        double value = 0, number = 0;
        const char* const end = readShortNumber(text.c_str(), value);
        if (!end) continue;
        ASSERT_EQ(end, readAnyNumber(text.c_str(), number)) << text;
        ASSERT_EQ(bitsOf(value), bitsOf(number)) << text;
        ++shortOnes;
    }
    EXPECT_GT(shortOnes, 100000u);
}

TEST(Conversion, EndsNumbersWhereTheClientsParserDoes) {
    RandomCommands random(13);
    for (int round = 0; round < 200000; ++round) {
        std::string text(1, "0123456789."[random.below(11)]);
        while (text.size() < 12)
            text += "0123456789.eE+-"[random.below(15)];
        if (random.below(4) == 0) text.insert(0, "-");
        const char* end = text.c_str();
        sdecimal_2_double(end);
        ASSERT_EQ(endOfNumber(text.c_str()), end) << text;
        ASSERT_FALSE(std::isnan(numberOf({text.c_str(), static_cast<size_t>(end - text.c_str())})));
    }
}

TEST(Conversion, WritesTheShortestDegreesThatAreReadAsTheSameAngle) {
    for (int thousandth = 1; thousandth < 360000; thousandth += 7) {
        const double degrees = thousandth / 1000.0;
        bool exact = true;
        const std::string text = angleText(radiansOf(degrees), exact);
        ASSERT_TRUE(exact) << degrees;
        ASSERT_EQ(bitsOf(radiansOf(numberOf(text))), bitsOf(radiansOf(degrees))) << degrees;
        ASSERT_LE(text.size(), numberText(degrees).size()) << text;
    }
    RandomCommands random(14);
    int none = 0;
    for (int round = 0; round < 100000; ++round) {
        const double radians = round % 10 == 0 ? random.anyBits() : random.number() / 1e4;
        if (std::fabs(radians) > 9e305) continue;
        bool exact = true;
        const std::string text = angleText(radians, exact);
        const double read = radiansOf(numberOf(text));
        none += !exact;
        ASSERT_EQ(exact, bitsOf(read) == bitsOf(radians)) << text;
        bool again = true;
        ASSERT_EQ(angleText(read, again), text);
        ASSERT_TRUE(again);
        // No degrees nearby are nearer, and none of those that are as near has a shorter text.
        for (int beside = -6; beside <= 6 && radians != 0; ++beside) {
            const double other = doubleOf(bitsOf(numberOf(text)) + static_cast<uint64_t>(beside));
            if (!std::isfinite(other)) continue;
            ASSERT_GE(std::fabs(radiansOf(other) - radians), std::fabs(read - radians)) << text;
            if (radiansOf(other) == read) {
                ASSERT_GE(numberText(other).size(), text.size()) << text;
            }
        }
    }
    EXPECT_GT(none, 5000);
    EXPECT_LT(none, 30000);
}

TEST(Conversion, CountsWhatTextCannotHold) {
    const double infinity = std::numeric_limits<double>::infinity();
    Command command;
    command.form = allForms().begin();
    while (std::strcmp(command.form->notation, "vector N V") != 0)
        ++command.form;
    command.beginValue(ArgumentKind::NewSymbol, 0);
    command.addText("v");
    command.beginValue(ArgumentKind::Vector, 0);
    command.addVector(Vector(std::nan(""), -infinity, 0.1));
    TextWriter writer, asClient(TextWriter::Form::Plain, TextWriter::Numbers::AsClient);
    EXPECT_STREQ(writer.write(command), "vector v,(0,-0,0.1);");
    EXPECT_EQ(writer.changedNumbers(), 2u);

    // The client's text of 959.815 is 959.814, and that of 959.814 is another one again.
    const auto settled = [&](double number) {
        command.truncate(1);
        command.beginValue(ArgumentKind::Vector, 0);
        command.addVector(Vector(number, 1.0 / 3, 1e15));
        return std::string(asClient.write(command));
    };
    const std::string text = settled(959.815);
    EXPECT_EQ(text.substr(text.find(',', 12)), ",0.33333333,10e14);");
    EXPECT_EQ(settled(numberOf(text.substr(10, text.find(',', 10) - 10))), text);
    EXPECT_EQ(writer.write(command) + std::string(),
              "vector v,(" + numberText(command.vector(command.values()[1]).values[0]) + ",0.3333333333333333,1e15);");
}

// ---- a hundred thousand commands ---------------------------------------------------------------------------------

namespace {

/// What stands at no place of the kind, and where reading says so.
const char* wrongItem(ArgumentKind kind, unsigned choice) {
    switch (kind) {
        case ArgumentKind::Keyword:
            return "qqzzq";
        case ArgumentKind::Int:
            return choice % 2 ? "1.5" : "2147483648";
        case ArgumentKind::Bool:
            return choice % 2 ? "2" : "<>";
        case ArgumentKind::Unsigned:
            return choice % 2 ? "-1" : "name";
        case ArgumentKind::Double:
            return choice % 2 ? "1e999" : "\"1\"";
        case ArgumentKind::String:
            return choice % 2 ? "bare" : "(1)";
        case ArgumentKind::Axes:
            return choice % 2 ? "1" : "(1,2,3)";
        default:
            if (valueKindOf(kind) == ValueKind::Symbol) return choice % 2 ? "-0.5" : "7";
            return choice % 2 ? "\"text\"" : "bare";
    }
}

/// Replaces one item of a text by a wrong one. @return where it stands
size_t spoilText(std::string& text, const Command& read, unsigned choice) {
    const size_t places = read.values().size() + 1;
    const size_t place = choice % places;
    if (place == read.values().size()) {
        text.insert(0, "q");
        return 0;
    }
    const size_t begin = read.values()[place].offset;
    const size_t end = place + 1 < read.values().size() ? read.values()[place + 1].offset - 1 : text.size() - 1;
    text.replace(begin, end - begin, wrongItem(read.form->tokens[place].kind, choice / 7));
    return begin;
}

/// The same with one word of a block.
size_t spoilBlock(std::vector<uint64_t>& words, const Command& read, unsigned choice) {
    const size_t places = read.values().size() + 1;
    const size_t place = choice % places;
    if (place == read.values().size()) {
        words[1] = 99999;
        return 8;
    }
    const Value& value = read.values()[place];
    uint64_t* const word = &words[1 + value.offset / 8];
    if (value.isList) {
        word[1] = 4;
    } else if (value.kind == ValueKind::CoordSys) {
        word[3] = 7;
    } else {
        *word = uint64_t{1} << 40;
    }
    return 8 + value.offset;
}

bool hasEmptyText(const Command& command) {
    return std::any_of(command.values().begin(), command.values().end(), [&](const Value& value) {
        return value.kind == ValueKind::String && *command.text(value) == 0;
    });
}

class Illegal {
public:
    /// @return empty, or what is wrong with the refusal of a spoilt text
    std::string checkText(std::string text, unsigned choice) {
        TextReader(std::string_view(text)).next(command);
        const size_t place = spoilText(text, command, choice);
        TextReader reader{std::string_view(text)};
        if (reader.next(command) != ReadResult::Error) return "taken: " + text;
        const Diagnostic& said = reader.diagnostic();
        return said.position.offset == place && !said.message.empty() ? "" : said.describe(text.c_str());
    }

    std::string checkBlock(const void* block, size_t size, unsigned choice) {
        std::vector<uint64_t> words(size / 8);
        std::memcpy(words.data(), block, size);
        blocks.read(words.data(), size, command);
        // The null text and the empty one begin alike: what follows may be read further than the wrong word.
        const bool isClear = !hasEmptyText(command);
        const size_t place = spoilBlock(words, command, choice);
        if (blocks.read(words.data(), size, command) != ReadResult::Error) return "a block is taken";
        const Diagnostic& said = blocks.diagnostic();
        return !isClear || said.position.offset == place ? "" : said.describe("block");
    }

private:
    BinaryReader blocks;
    Command command;
};

}  // namespace

TEST(Conversion, KeepsEveryCommandAndRefusesWhatIsNone) {
    RandomCommands random(15);
    Converter converter;
    Illegal illegal;
    Command command;
    size_t legal = 0, refused = 0;
    for (; legal < 100000; ++legal, ++refused) {
        const Form& form = allForms()[legal % allForms().size()];
        random.make(form, command);
        ASSERT_EQ(converter.check(command), "") << form.notation;
        const unsigned choice = random.below(1000000);
        std::string fault;
        if (choice % 3 == 0) {
            const void* block = converter.binary.write(command);
            fault = illegal.checkBlock(block, converter.binary.size(), choice / 3);
        } else {
            fault = illegal.checkText(choice % 3 == 1 ? converter.text(command) : converter.quick.write(command),
                                      choice / 3);
        }
        ASSERT_EQ(fault, "") << form.notation;
    }
    EXPECT_EQ(refused, 100000u);
}

TEST(Conversion, ClearsThePaddingOfBlocks) {
    BinaryWriter writer;
    const auto blockOf = [&](std::string_view text) {
        Command command;
        EXPECT_EQ(TextReader(text).next(command), ReadResult::Command);
        const auto* block = static_cast<const char*>(writer.write(command));
        return std::string(block, writer.size());
    };
    blockOf("about \"xxxxxxxxxxxxxxxx\";");
    EXPECT_EQ(blockOf("about \"a\";").substr(24, 8), std::string("a\0\0\0\0\0\0\0", 8));
}
