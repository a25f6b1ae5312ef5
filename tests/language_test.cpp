// Reading the command language back: every form in every encoding, messages, hostile input, long input.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "allocationcount.h"
#include "language/grammar.h"
#include "language/lookup.h"
#include "language/writer.h"
#include "languagecheck.h"
#include "randomcommands.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

std::string canonical(std::string_view text) {
    TextReader reader(text);
    Command command;
    if (reader.next(command) != ReadResult::Command) return "error: " + reader.diagnostic().message;
    TextWriter writer;
    return writer.write(command);
}

std::string firstMessage(std::string_view text) {
    TextReader reader(text);
    Command command;
    while (true) {
        const ReadResult result = reader.next(command);
        if (result == ReadResult::End) return "understood";
        if (result == ReadResult::Error) return reader.diagnostic().describe("f");
    }
}

std::string blockOf(std::initializer_list<int64_t> items) {
    std::vector<int64_t> words{static_cast<int64_t>(8 * (items.size() + 2))};
    words.insert(words.end(), items);
    words.push_back(-3);
    return {reinterpret_cast<const char*>(words.data()), words.size() * 8};
}

int64_t bitsOf(double number) {
    int64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

}  // namespace

TEST(Language, ReadsEveryFormInEveryEncoding) {
    RandomCommands random(5);
    Command command;
    size_t functions = 0;
    for (const Form& form : allForms()) {
        for (int round = 0; round < 4; ++round) {
            random.make(form, command);
            ASSERT_EQ(checkRoundTrips(command), "") << form.notation;
        }
        functions += form.wideFunction ? 2 : 1;
    }
    EXPECT_EQ(functions, 2165u);
}

TEST(Language, HasNoFormsThatCouldBeTakenForOneAnother) {
    const auto& [sequences, keywords, arguments, kinds] = Grammar::vocabulary().ambiguities();
    for (const auto& found : {sequences, keywords, arguments, kinds})
        EXPECT_TRUE(found.empty()) << found[0]->notation;
}

TEST(Language, ReadsTheSameCommandFromEveryNotation) {
    const struct {
        const char* text;
        const char* canonical;
    } rows[] = {
        {"fg gradients,0.5,2;", "fg gradients,0.5,2;"},
        {"[46],[6],0.5,2;", "fg gradients,0.5,2;"},
        {"  [46]\n gradients , 5e-1 ,\t2.0", "fg gradients,0.5,2;"},
        {"; ;about;", "about;"},
        {"\xEF\xBB\xBF"
         "about \"a\"\"b;\nc\";",
         "about \"a\"\"b;\nc\";"},
        {"lightAdd adaptive,(0,10,0),(1,1,1),( 0 , -1 , 0 ),sky,0.5,16,2;",
         "lightAdd adaptive,(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;"},
        {"delete \"two words\";", "delete \"two words\";"},
        {"delete \"sky\";", "delete sky;"},
        {"axes a,<90,0,0>;", "axes a,<90,0,0>;"},
        {"axes a,< 90 , 0 , 0 > * ( 2 );", "axes a,<90,0,0>*(2);"},
        {"axes a,<>*(1,2,1);", "axes a,<>*(1,2,1);"},
        {"axes a,<0,0,0>*(1);", "axes a,<>;"},
        {"axes a,axes((1,0,0),(0,1,0),(0,0,1));", "axes a,<>;"},
        {"axes a,axes((1,0,0),(0,0,1),(0,-1,0));", "axes a,axes((1,0,0),(0,0,1),(0,-1,0));"},
        {"axes a,axes((90,0,0),(1,1,1));", "axes a,<90,0,0>;"},
        {"axes a,axes((1,2,3));", "axes a,axes((1,2,3));"},
        {"coordSys c,(1,2,3) @ <>;", "coordSys c,(1,2,3)@<>;"},
        {"postProcess filter,;", "postProcess filter,;"},
        {"postProcess filter,{};", "postProcess filter,;"},
        {"postProcess filter,{ 1 };", "postProcess filter,1;"},
        {"postProcess filter,{1,2,3};", "postProcess filter,{1,2,3};"},
        {"fg timeGradients,1,;", "fg timeGradients,1,;"},
        {"sett energetic,-0;", "sett energetic,0;"},
        {"meshOp m,setUvIndexShift,1.84467440e19;", "meshOp m,setUvIndexShift,1.8446744e19;"},
        {"sett energetic,-2147483648;", "sett energetic,-2147483648;"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(canonical(row.text), row.canonical) << row.text;
}

const struct {
    const char* text;
    const char* message;
    const char* nearest = nullptr;  // form
} mistakes[] = {
    {"\n lihgt s,black;", "f:2:2: unknown command 'lihgt', did you mean 'light'?"},
    {"qqqqqqqq;", "f:1:1: unknown command 'qqqqqqqq'"},
    {"while 1;", "f:1:1: command 'while' has no form of its own"},
    {"[999];", "f:1:1: unknown command '[999]'"},
    {"[18446744073709551662],[6],0.5,2;", "f:1:1: unknown command '[18446744073709551662]'"},
    {"(1,2);", "f:1:1: expected a command, found a vector"},
    {"fg\n  gradinets,1,2;", "f:2:3: unknown keyword 'gradinets' after 'fg', did you mean 'gradients'?"},
    {"fg \"reset\";", "f:1:4: expected a keyword after 'fg', found a text"},
    {"fg gradients,1,(2,3);", "f:1:16: argument 2 of 'fg gradients': expected a number, found a vector",
     "fg gradients d d"},
    {"fg gradients,1;", "f:1:15: too few arguments for 'fg gradients'", "fg gradients d d"},
    {"fg gradients,1,2,3;", "f:1:18: too many arguments for 'fg gradients', found '3'", "fg gradients d d"},
    {"fg gradients 1,2;", "f:1:14: expected ',' or ';' after 'fg gradients', found '1'"},
    {"fg gradients,1x,2;", "f:1:15: expected ',' or ';' after 'fg gradients', found 'x'"},
    {"about\"x\";", "f:1:6: expected white space after 'about', found a text"},
    {"about x;", "f:1:7: argument 1 of 'about': expected a text in double quotes, found 'x'", "about s"},
    {"threads 1.5;", "f:1:9: argument 1 of 'threads': expected an integer, found '1.5'", "threads i"},
    {"threads 2147483648;", "f:1:9: argument 1 of 'threads': expected an integer, found '2147483648'", "threads i"},
    {"lightOp s,shadow,2;", "f:1:18: argument 2 of 'lightOp shadow': expected 0 or 1, found '2'", "lightOp S shadow b"},
    {"vector v,(1,2;", "f:1:14: argument 2 of 'vector': expected ',' or ')'", "vector N V"},
    {"vector v,();", "f:1:11: argument 2 of 'vector': expected a number in the parentheses", "vector N V"},
    {"vector v,(1,2,3,4,5);", "f:1:19: argument 2 of 'vector': too many numbers in parentheses", "vector N V"},
    {"axes a,<1,2>;", "f:1:12: argument 2 of 'axes': expected three angles", "axes N A"},
    {"axes a,<0,1e308,0>;", "f:1:11: argument 2 of 'axes': the angle is too large", "axes N A"},
    {"axes a,axes((0,0,1e308),(1,1,1));", "f:1:33: argument 2 of 'axes': the angle is too large", "axes N A"},
    {"double d,1e999;", "f:1:10: argument 2 of 'double': the number is too large", "double N d"},
    {"coordSys c,(1,2,3);", "f:1:19: argument 2 of 'coordSys': expected '@' and axes after the position",
     "coordSys N C"},
    {"fs cat,\"a;\nreset;", "f:1:8: the text that begins here is not closed"},
    {"stop 1;", "f:1:6: too many arguments for 'stop', found '1'", "stop"},
    {"fg reset\n  fg render;", "f:2:3: expected ',' or ';' after 'fg reset', found 'fg': is there a ';' missing?"},
    {"echo \"a;\nreset;\necho \"b\";", "f:1:6: the text that begins here is not closed"},
    {"echo \"a;\nreset;\necho \"b;c\";",
     "f:1:6: the text that begins here runs over several lines: is its closing quote missing?"},
    {"delete \"\";", "f:1:10: argument 1 of 'delete': the name is empty", "delete S"},
    {"delete ;", "f:1:8: too few arguments for 'delete'", "delete S"},
    {"fg timeGradients;", "f:1:17: too few arguments for 'fg timeGradients'", "fg timeGradients d"},
    {"axes a,<1,2,3>*(1,2);", "f:1:21: argument 2 of 'axes': expected one scale or three", "axes N A"},
    {"axes a,axes((1,0,0),(0,1,0),(0,0,1),(1,1,1));", "f:1:37: argument 2 of 'axes': axes have at most three rows",
     "axes N A"},
    {"stop;\xEF\xBB\xBFstop;", "f:1:6: unknown command '\xEF\xBB\xBFstop'"},
};

TEST(Language, SaysWhatIsWrongAndWhere) {
    for (const auto& row : mistakes) {
        const std::string end = row.nearest ? "; the nearest form is '" + std::string(row.nearest) + "'" : "";
        EXPECT_EQ(firstMessage(row.text), row.message + end) << row.text;
    }
    const std::string longest(127, 'n');
    EXPECT_EQ(canonical("delete " + longest + ";"), "delete " + longest + ";");
    EXPECT_EQ(canonical("delete n" + longest + ";"),
              "error: argument 1 of 'delete': the name is longer than 127 bytes; the nearest form is 'delete S'");
}

TEST(Language, TakesNoNumberForTheNameOfASymbol) {
    const struct {
        const char* word;
        bool isNumber;
    } words[] = {{"0.5", true},       {"-1", true},   {"+2", true},     {".5", true},  {"-.5e3", true}, {"1e5", true},
                 {"e1234560", false}, {"2nd", false}, {"1.2.3", false}, {"-x", false}, {"\"5\"", false}};
    const std::pair<std::string, const char*> places[] = {{"delete ", ";"},
                                                          {"vector ", ",(1,2,3);"},
                                                          {"bitmapOp ", ",clear;"},
                                                          {"meshOp m,points,", ";"},
                                                          {"surface s,diffuse,", ";"}};
    for (const auto& [front, rest] : places) {
        for (const auto& row : words) {
            const std::string message = firstMessage(front + row.word + rest);
            const std::string place = "f:1:" + std::to_string(front.size() + 1) + ": ";
            EXPECT_EQ(message == "understood", !row.isNumber) << front << row.word << message;
            if (!row.isNumber) continue;
            EXPECT_EQ(message.find(place), 0u) << message;
            EXPECT_NE(message.find(", found '" + std::string(row.word) + "'"), std::string::npos) << message;
        }
    }
    EXPECT_EQ(canonical("delete \"5\";"), "delete \"5\";");
}

TEST(Language, NamesAllMistakesOfAFile) {
    const char* const text =
        "surface s,diffuse,t;\n"
        "surfce s,black;\n"  // line 2
        "light l,piont,{(0,1,0),(0,2,0)},(1,1,1);\n"
        "echo \"a; b\";\nfg gradients,1\n;\n"  // a mistake at the end of the command, in line 6
        "vector v,\n  \"text\";\n"
        "render 1;\n"
        "threads many;\n"  // line 10
        "axes a,<1,2,3;\n"
        "echo \"one\" \"two\";\n"
        "sett pixelFilter,boxx,1;\n"
        "camera perspective,(1,1),45,(0,0,0)@eye;\n"
        "echo \"not closed; threads x;\n"  // line 15 has two
        "fg reset\n"
        "stop 2;\n"  // so has line 17: a ";" is missing in front
        "echo \"open\n"
        "threads y;\n"
        "echo \"closed;\";\n"
        "stop;";
    std::string found;
    size_t commands = 0;
    TextReader reader{std::string_view(text)};
    Command command;
    for (ReadResult result; (result = reader.next(command)) != ReadResult::End;) {
        const Position& position = reader.diagnostic().position;
        if (result == ReadResult::Error)
            found += std::to_string(position.line) + ":" + std::to_string(position.column) + " ";
        if (result == ReadResult::Command) ++commands;
    }
    EXPECT_EQ(found, "2:1 3:9 6:1 8:3 9:8 10:9 11:14 12:12 13:18 14:37 15:6 15:27 17:1 17:6 18:6 19:9 ");
    EXPECT_EQ(commands, 4u);
}

TEST(Language, ReadsWhatABlockCanHoldAndNothingElse) {
    constexpr int64_t n = 0x6E6E6E6E6E6E6E6E;  // eight letters of a name
    const struct {
        std::string block;
        const char* text;
    } rows[] = {
        {blockOf({40, 0}), "about \"\";"},
        {blockOf({40, 0, 0x1100}), "about \"\";"},  // the padding holds anything
        {blockOf({40, 0, 0x11}), "too many arguments"},
        {blockOf({31, 0, 0, bitsOf(5)}), "zant \"\",5;"},
        {blockOf({31, 0, 0, 0, bitsOf(5)}), "zant \"\",5;"},
        {blockOf({41, 0, 0}), "parse \"\";"},  // an empty text is preferred to two null ones
        {blockOf({41, 0, 0, 0, 0}), "parse \"\",\"\";"},
        {blockOf({46, 6, 0, bitsOf(0.5), 0, bitsOf(2)}), "fg gradients,0.5,2;"},
        {blockOf({46, 99, 0, bitsOf(0.5)}), "expected a keyword after 'fg', found the word 99"},
        {blockOf({42, 0, 7}), "delete seven;"},
        {blockOf({42, 0, 8}), "no object has this registered word"},
        {blockOf({42, 128, n, n, n, n, n, n, n, n, n, n, n, n, n, n, n, n, 0}), "longer than 127 bytes"},
        {blockOf({14, 1, 'v', 5, 0, 0, 0, 0, 0}), "expected a vector"},
        {blockOf({16, 1, 'a', 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), "expected axes"},
    };
    class Seven : public SymbolResolver {
        const char* nameOf(uint64_t registered) override { return registered == 7 ? "seven" : nullptr; }
    } names;
    BinaryReader reader(&names);
    Command command;
    TextWriter writer;
    for (const auto& row : rows) {
        const ReadResult result = reader.read(row.block.data(), row.block.size(), command);
        const std::string said = result == ReadResult::Command ? writer.write(command) : reader.diagnostic().message;
        EXPECT_NE(said.find(row.text), std::string::npos) << said << " instead of " << row.text;
    }
}

TEST(Language, StaysInsideOfDamagedInput) {
    RandomCommands random(11);
    std::mt19937 chance(12);
    Command command;
    TextWriter writer, quickWriter(TextWriter::Form::Quick);
    BinaryWriter blockWriter;
    size_t inputs = 0;
    const auto damage = [&](const std::string& input, CheckResult (*check)(std::string_view)) {
        for (size_t size = 0; size < input.size(); ++size, ++inputs) {
            ASSERT_EQ(check(std::string_view(input).substr(0, size)).fault, "") << input;
        }
        for (size_t at = 0; at < input.size(); ++at) {
            for (const int byte : {0, 1, 0x22, 0x3B, 0xFF, static_cast<int>(chance() % 256)}) {
                std::string changed = input;
                changed[at] = static_cast<char>(byte);
                ASSERT_EQ(check(changed).fault, "") << changed;
                ++inputs;
            }
        }
    };
    for (size_t k = 0; k < allForms().size(); k += 29) {
        random.make(allForms()[k], command);
        damage(writer.write(command), checkText);
        damage(quickWriter.write(command), checkText);
        const void* block = blockWriter.write(command);
        damage({static_cast<const char*>(block), blockWriter.size()}, checkBlock);
    }
    for (int k = 0; k < 3000; ++k, ++inputs) {
        std::string noise(chance() % 64, '\0');
        for (char& byte : noise)
            byte = static_cast<char>(chance());
        ASSERT_EQ(checkText(noise).fault, "");
        ASSERT_EQ(checkBlock(noise).fault, "");
    }
    EXPECT_GT(inputs, 20000u);
}

TEST(Language, SurvivesWhatTheFuzzersFound) {
    // The client's own text of these ends one unit of its last place too low: "1.5255551e7", "959.814".
    const char* const texts[] = {"vector v,(15255552,50.4140625,3.3127963399999997e150);", "vector v,(959.815,1,2);"};
    for (const char* text : texts) {
        const CheckResult result = checkText(text);
        EXPECT_EQ(result.fault, "");
        EXPECT_EQ(result.commands, 1u) << text;
    }
    EXPECT_EQ(canonical(texts[1]), texts[1]);
    std::string longer = "postProcess filter,{0";  // than the reader's window
    for (int k = 1; k < 5000; ++k)
        longer += "," + std::to_string(k);
    const CheckResult result = checkText(longer + "};about;");
    EXPECT_EQ(result.fault, "");
    EXPECT_EQ(result.commands, 2u);
}

TEST(Language, KeepsNothingOfALongText) {
    class Repeated : public TextSource {
    public:
        size_t left = 400000;
        size_t read(char* into, size_t room) override {
            const size_t count = std::min(left, room / line.size());
            for (size_t k = 0; k < count; ++k)
                line.copy(into + k * line.size(), line.size());
            left -= count;
            return count * line.size();
        }
        const std::string_view line =
            "light l,point,{(0,1,0),(0,2,0),(0,3,0)},(0.5,0.5,1);   \necho \"; again \"\"\";\n";
    };
    Repeated source;
    const size_t size = source.left * source.line.size();
    TextReader reader(source);
    Command command;
    size_t commands = 0;
    size_t allocations = 0;
    while (reader.next(command) == ReadResult::Command)
        if (++commands == 1000) allocations = allocationCount();
    EXPECT_EQ(allocationCount(), allocations);
    EXPECT_EQ(commands, 800000u) << reader.diagnostic().describe("text");
    EXPECT_EQ(reader.consumed(), size);
}

TEST(Language, ReadsAmbiguousFormsInTheOrderOfTheForms) {
    // about S; about reset (number 64 of the command words); about s d
    const FormToken symbol[] = {{ArgumentKind::Symbol, 0, 0}};
    const FormToken keyword[] = {{ArgumentKind::Keyword, 0, 64}};
    const FormToken keywordAndNumber[] = {{ArgumentKind::Keyword, 0, 64}, {ArgumentKind::Double, 0, 0}};
    const Form forms[] = {{"symbol", "about S", symbol, 1, 40, 1, nullptr},
                          {"keyword", "about reset d", keywordAndNumber, 2, 40, 1, nullptr},
                          {"again", "about S", symbol, 1, 40, 1, nullptr}};
    const Grammar grammar({forms, 3}, keywordTables());
    EXPECT_EQ(grammar.ambiguities().sameSequence.size(), 1u);
    EXPECT_EQ(grammar.ambiguities().keywordOrArgument.size(), 1u);
    const Form alone[] = {{"keyword", "about reset", keyword, 1, 40, 0, nullptr}, forms[0]};
    const Grammar both({alone, 2}, keywordTables());

    const auto formOf = [](const char* text, const Grammar& of) {
        TextReader reader(text, of);
        Command command;
        return reader.next(command) == ReadResult::Command ? command.form->function : "error";
    };
    EXPECT_STREQ(formOf("about reset,1;", grammar), "keyword");
    EXPECT_STREQ(formOf("about reset;", grammar), "symbol") << "the keyword does not fit to the end";
    EXPECT_STREQ(formOf("about reset;", both), "keyword");
    EXPECT_STREQ(formOf("about [64];", both), "keyword");

    TextReader mistaken("about reset,\"text\";", grammar);
    Command command;
    EXPECT_EQ(mistaken.next(command), ReadResult::Error);
    EXPECT_EQ(mistaken.diagnostic().message.find("argument 1 of 'about reset': expected a number"), 0u)
        << mistaken.diagnostic().message;
}

TEST(Language, FindsFormsForPeople) {
    const struct {
        const char* asked;
        size_t count;
        const char* first;
    } rows[] = {
        {"fg", formsOf(46).size(), formsOf(46)[0].function},
        {"FG", formsOf(46).size(), formsOf(46)[0].function},
        {"46", formsOf(46).size(), formsOf(46)[0].function},
        {"objectAdd sphere", 1, "objectAdd4_sphere"},
        {"object add  SPHERE", 1, "objectAdd4_sphere"},
        {"surface4_blur2", 1, "surface4_blur2"},
        {"", 0, nullptr},
        {"nothing like it", 0, nullptr},
        {"sphere objectAdd", 0, nullptr},
        {"0", 0, nullptr},
        {"4611686018427387950", 0, nullptr},
    };
    for (const auto& row : rows) {
        const auto forms = findForms(row.asked);
        ASSERT_EQ(forms.size(), row.count) << row.asked;
        EXPECT_STREQ(forms.empty() ? nullptr : forms[0]->function, row.first) << row.asked;
    }
    const auto samplers = findForms("image sampler");
    const auto isSampler = [](const Form* form) { return strstr(form->notation, "imageSampler"); };
    EXPECT_GT(samplers.size(), 1u);
    EXPECT_TRUE(std::all_of(samplers.begin(), samplers.end(), isSampler));
    EXPECT_STREQ(nearestCommandWord("shapeAd"), "shapeAdd");
    EXPECT_EQ(nearestCommandWord("xyzzyplugh"), nullptr);
}
