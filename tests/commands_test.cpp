// Every item in every encoding, prototypers, and what a command costs in allocations.

#include <cmath>
#include <limits>
#include <memory>

#include "client/encoding/prototyper.h"
#include "client/symbols/symbol.h"
#include "tests/allocationcount.h"
#include "tests/commandstest.h"

/// @return the room of a block of memory, in bytes
size_t allocatedSize(void* block);

namespace {

constexpr double pi = 3.141592653589793;

TEST_F(Commands, KeywordsAndNumbers) {
    expectAll(
        [](CommandBuffer& b) {
            b.addEnum(46, "fg");
            b.addEnum(6, "gradients");
            b.addDouble(0.5);
            b.addDouble(2);
        },
        "fg gradients,0.5,2;", "[46],[6],0.5,2;", Block().word(46).word(6).number(0.5).number(2));
    EXPECT_EQ(state.count, 3u) << "the offline buffer sends nothing";
    expectAll(
        [](CommandBuffer& b) {
            b.addEnum(46, "fg");
            b.addEnum(23, "reset");
        },
        "fg reset;", "[46],[23];", Block().word(46).word(23));
    expectAll([](CommandBuffer& b) { b.addEnum(5, "echo"); }, "echo;", "[5];", Block().word(5));
    expectAll([](CommandBuffer& b) { b.addEnum(-5, "x"); }, "x;", "[-5];", Block().word(static_cast<uint64_t>(-5)));
    expectAll(
        [](CommandBuffer& b) {
            b.addEnum(3, nullptr);
            b.addDouble(1);
            b.addEnum(4, nullptr);
            b.addEnum(7, "on");
            b.addDouble(-0.125);
        },
        "[3] 1,[4],on,-0.125;", "[3],1,[4],[7],-0.125;", Block().word(3).number(1).word(4).word(7).number(-0.125));
    expectItem([](CommandBuffer& b) { b.addDouble(std::numeric_limits<double>::infinity()); }, "0",
               rem().number(std::numeric_limits<double>::infinity()));
    EXPECT_STREQ(textBuffer.getTerminatedBuffer(), ";");
}

TEST_F(Commands, Strings) {
    const std::string megabyte(1 << 20, 'm');
    const std::string megabyteOfQuotes(1 << 20, '"');
    const struct {
        std::string string, text;
    } rows[] = {{"", "\"\""},
                {"abcdefgh", "\"abcdefgh\""},
                {"abcdefg", "\"abcdefg\""},
                {"a\"b", "\"a\"\"b\""},
                {"\"", "\"\"\"\""},
                {"two\nlines, one; comma", "\"two\nlines, one; comma\""},
                {"gr\xC3\xBC\xC3\x9F \xE2\x82\xAC", "\"gr\xC3\xBC\xC3\x9F \xE2\x82\xAC\""},
                {megabyte, "\"" + megabyte + "\""},
                {megabyteOfQuotes, "\"" + megabyteOfQuotes + megabyteOfQuotes + "\""}};
    for (const auto& row : rows) {
        expectItem(
            [&](CommandBuffer& b) {
                b.addString(row.string.c_str());
                b.addDouble(9);
            },
            row.text + ",9", rem().text(row.string).number(9));
    }
    const Block null = rem().word(0).number(9);
    const auto addNull = [](CommandBuffer& b, auto text) {
        b.addString(text);
        b.addDouble(9);
    };
    const wchar_t invalidText[] = {L'a', static_cast<wchar_t>(0x80000000u), 0};
    expectItem([&](CommandBuffer& b) { addNull(b, static_cast<const char*>(nullptr)); }, "\"\",9", null);
    expectItem([&](CommandBuffer& b) { addNull(b, static_cast<const wchar_t*>(nullptr)); }, "\"\",9", null);
    if (sizeof(wchar_t) > sizeof(char16_t))  // no unit of 16 bits is invalid
        expectItem([&](CommandBuffer& b) { addNull(b, &invalidText[0]); }, "\"\",9", null);
}

TEST_F(Commands, WideStrings) {
    const std::wstring longText(3000, L'\u20AC');
    std::string longUtf8;
    for (size_t i = 0; i < longText.size(); ++i)
        longUtf8 += "\xE2\x82\xAC";
    expectItem([](CommandBuffer& b) { b.addString(L"\"\u00E9\u20AC"); }, "\"\"\"\xC3\xA9\xE2\x82\xAC\"",
               rem().text("\"\xC3\xA9\xE2\x82\xAC"));
    expectItem([&](CommandBuffer& b) { b.addString(longText.c_str()); }, "\"" + longUtf8 + "\"", rem().text(longUtf8));
    expectItem([](CommandBuffer& b) { b.addString(L""); }, "\"\"", rem().text(""));
    expectItem([](CommandBuffer& b) { b.addUtf16String(u"\U0001F4A1x"); }, "\"\xF0\x9F\x92\xA1x\"",
               rem().text("\xF0\x9F\x92\xA1x"));
    const char16_t alone[] = {0xDCA1, 0xD83D, 'x', 0xD83D, 0};
    expectItem([&](CommandBuffer& b) { b.addUtf16String(alone); }, "\"\xED\xB2\xA1\xED\xA0\xBDx\xED\xA0\xBD\"",
               rem().text("\xED\xB2\xA1\xED\xA0\xBDx\xED\xA0\xBD"));
    expectItem([](CommandBuffer& b) { b.addUtf16String(nullptr); }, "\"\"", rem().word(0));
}

TEST_F(Commands, Vectors) {
    Vector none;
    none.values[0] = 4;
    none.count = 0;
    Vector negative = none;
    negative.count = -1;
    expectItem([](CommandBuffer& b) { b.addVector(Vector(0.5, -2)); }, "(0.5,-2)", rem().word(2).reals({0.5, -2}));
    expectItem([](CommandBuffer& b) { b.addVector(Vector(1, 2, 3, 0.25)); }, "(1,2,3,0.25)",
               rem().word(4).reals({1, 2, 3, 0.25}));
    expectItem([&](CommandBuffer& b) { b.addVector(none); }, "(4)", rem().word(0));
    expectItem([&](CommandBuffer& b) { b.addVector(negative); }, "(4)", rem().word(static_cast<uint64_t>(-1)));

    const double x = -1.23456789e-300;
    std::string text;
    Block block = rem();
    for (int i = 0; i < 200; ++i) {
        text += i == 0 ? "" : ",";
        text += "(-1.23456789e-300,-1.23456789e-300,-1.23456789e-300,-1.23456789e-300)";
        block.word(4).reals({x, x, x, x});
    }
    const auto addAll = [&](CommandBuffer& b) {
        for (int i = 0; i < 200; ++i)
            b.addVector(Vector(x, x, x, x));
    };
    expectItem(addAll, text, block);
}

Axes axesOf(int rows, std::initializer_list<double> values) {
    Axes axes;
    axes.rows = rows;
    std::copy(values.begin(), values.end(), axes.m);
    return axes;
}

TEST_F(Commands, AxesAndCoordinateSystems) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        int rows;
        std::initializer_list<double> values;
        const char* text;
    } rows[] = {{0, {}, "<>"},
                {2, {0, 0, 0, 1, 1, 1}, "<>"},
                {3, {1, 0, 0, 0, 1, 0, 0, 0, 1}, "<>"},
                {3, {1, 0, 0, 0, 0, 1, 0, -1, 0}, "axes((1,0,0),(0,0,1),(0,-1,0))"},
                {2, {pi / 2, 0, 0, 1, 1, 1}, "<90,0,0>"},
                {2, {0, 0, -pi / 4, 1, 1, 1}, "<0,0,-45>"},
                {2, {1162.599, 0, 0, 1, 1, 1}, "<66612.01596612,0,0>"},  // by 180, then by pi
                {2, {0, 0, 0, 2, 2, 2}, "<>*(2)"},
                {2, {pi / 4, 0, 0, 1, 2, 1}, "<45,0,0>*(1,2,1)"},
                {2, {0, 0, 0, 1, 1, 2}, "<>*(1,1,2)"},
                {2, {0, nan, 0, 1, 1, 1}, "<0,0,0>"},
                {1, {1, 2, 3}, "axes((1,2,3))"},
                {-1, {}, "axes()"}};
    for (const auto& row : rows) {
        const Axes axes = axesOf(row.rows, row.values);
        Block item = rem().word(static_cast<uint64_t>(row.rows));
        item.reals(row.values);
        expectItem([&](CommandBuffer& b) { b.addAxes(axes); }, row.text, item);

        const CoordSys system(Vector(1, 2, 3), axes);
        Block systemItem = rem().reals({1, 2, 3}).word(static_cast<uint64_t>(row.rows));
        systemItem.reals(row.values);
        expectItem([&](CommandBuffer& b) { b.addCoordSys(system); }, std::string("(1,2,3)@") + row.text, systemItem);
    }
    expectItem([](CommandBuffer& b) { b + AxesHpb(pi, 0, 0) + AxesHpb(); }, "<180,0,0>,<>",
               rem().word(2).reals({pi, 0, 0, 1, 1, 1}).word(2).reals({0, 0, 0, 1, 1, 1}));
    textBuffer.addAxesCore(axesOf(0, {}));
    EXPECT_STREQ(textBuffer.getTerminatedBuffer(), "<>;");
}

TEST_F(Commands, Lists) {
    const Double numbers[] = {1.0, 2.0, 3.0};
    expectItem([&](CommandBuffer& b) { b.addVarLenDouble(numbers); }, "{1,2,3}",
               rem().list().number(1).number(2).number(3).endList());
    expectItem([&](CommandBuffer& b) { b.addVarLenDouble(VarLenDouble(numbers, 1)); }, "1",
               rem().list().number(1).endList());
    expectItem(
        [&](CommandBuffer& b) {
            b.addDouble(1);
            b.addVarLenDouble(VarLenDouble());
            b.addDouble(2);
        },
        "1,,2", rem().number(1).list().endList().number(2));

    const Vector vectors[] = {Vector(1, 2, 3), Vector(4, 5)};
    expectItem([&](CommandBuffer& b) { b.addVarLenVector(VarLenVector(vectors, 1)); }, "(1,2,3)",
               rem().list().word(3).reals({1, 2, 3}).endList());
    expectItem([&](CommandBuffer& b) { b.addVarLenVector(vectors); }, "{(1,2,3),(4,5)}",
               rem().list().word(3).reals({1, 2, 3}).word(2).reals({4, 5}).endList());

    const AxesHpb axes[] = {AxesHpb(), AxesHpb(pi, 0, 0)};
    expectItem([&](CommandBuffer& b) { b.addVarLenAxes(axes); }, "{<>,<180,0,0>}",
               rem().list().word(2).reals({0, 0, 0, 1, 1, 1}).word(2).reals({pi, 0, 0, 1, 1, 1}).endList());

    const CoordSys systems[] = {CoordSys(), CoordSys(Vector(1, 2, 3), AxesHpb(pi, 0, 0))};
    expectItem([&](CommandBuffer& b) { b.addVarLenCoordSys(systems); }, "{(0,0,0)@<>,(1,2,3)@<180,0,0>}",
               rem().list().reals({0, 0, 0}).word(0).reals({1, 2, 3}).word(2).reals({pi, 0, 0, 1, 1, 1}).endList());

    std::vector<Double> many(100000, Double(7));
    std::string text = "{7";
    Block block = rem().list().number(7);
    for (size_t i = 1; i < many.size(); ++i) {
        text += ",7";
        block.number(7);
    }
    expectItem([&](CommandBuffer& b) { b.addVarLenDouble(many); }, text + "}", block.endList());
}

TEST_F(Commands, SymbolsByNameOrRegisteredWord) {
    Symbol known(offlineBuffer, "known"), unknown(offlineBuffer, "unknown8");
    known.registered = 77;
    const auto addBoth = [&](CommandBuffer& b) {
        b.addSymbol(known);
        b.addSymbol(unknown);
    };
    expectItem(addBoth, "known,unknown8", rem().word(0).word(77).text("unknown8"));
    const Symbol* symbols[] = {&known, &unknown};
    expectItem([&](CommandBuffer& b) { b.addVarLenSymbol(symbols); }, "{known,unknown8}",
               rem().list().word(0).word(77).text("unknown8").endList());
}

/// Counts its end.
class Mortal : public Offline {
public:
    explicit Mortal(int& counter) : ends(counter) {}
    ~Mortal() override { ++ends; }
    int& ends;
};

TEST_F(Commands, Prototypers) {
    int ends = 0;
    { Prototyper owner(new Mortal(ends)); }
    EXPECT_EQ(ends, 1);
    Mortal kept(ends);
    {
        Prototyper borrower(&kept);
        borrower.ownsBuffer = false;
    }
    EXPECT_EQ(ends, 1);
    { Prototyper empty(static_cast<CommandBuffer*>(nullptr)); }

    // What a typed command function does with its first argument.
    const auto gradients = [](void* protos) {
        CommandBuffer* buffer = *static_cast<CommandBuffer**>(protos);
        buffer->addEnum(46, "fg");
        buffer->addEnum(6, "gradients");
        buffer->addDouble(0.5);
        buffer->addDouble(2);
        buffer->parse();
    };
    Prototyper quick(instance);
    EXPECT_NE(static_cast<void*>(quick.protos()), static_cast<void*>(&quick));
    gradients(Proto(quick));
    expectText("CommandQuickTextBuffer", 1, "[46],[6],0.5,2;");

    std::unique_ptr<Prototyper> direct(new DirectPrototyper(instance));
    direct->buffer->addEnum(46, "fg");
    state.parseResult = 12;
    EXPECT_EQ(static_cast<DirectPrototyper*>(direct.get())->parse("fg gradients,0.5,2;"), 12);
    EXPECT_EQ(direct->buffer->errorCode, 0);
    EXPECT_FALSE(state.parsed[0].hasSource);
    expectText("", 0, "fg gradients,0.5,2;");
    state.parseResult = 0;
    direct->buffer->parse();
    expectBinary(Block().word(46));
    gradients(direct->protos());
    expectBinary(Block().word(46).word(6).number(0.5).number(2));
}

TEST_F(Commands, WideTextIsConvertedOnTheStackWhileItIsShort) {
    offlineBuffer.addString(std::string(5000, 'x').c_str());
    for (const size_t length : {511u, 512u}) {
        const std::wstring wide(length, L'x');
        const size_t before = allocationCount();
        offlineBuffer.addString(wide.c_str());
        EXPECT_EQ(allocationCount() != before, length == 512)
            << "a text with its terminator has 512 bytes on the stack";
    }
}

TEST_F(Commands, TheLongestItemsFitTheirRoom) {
    struct Measuring : CommandOfflineBuffer {
        void parseOffline(const char* command) override {
            EXPECT_GE(allocatedSize(const_cast<char*>(command)), std::strlen(command) + 1) << command;
        }
    };
    const double x = -1.23456789e-300;
    const Axes axes = Matrix3x3(x, x, x, x, x, x, x, x, x);
    const std::function<void(CommandBuffer&)> items[] = {
        [&](CommandBuffer& b) { b.addDouble(x); }, [&](CommandBuffer& b) { b.addVector(Vector(x, x, x, x)); },
        [&](CommandBuffer& b) { b.addAxes(axes); },
        [&](CommandBuffer& b) { b.addCoordSys(CoordSys(Vector(x, x, x), axes)); },
        [](CommandBuffer& b) { b.addEnum(-2147483647 - 1, nullptr); }};
    for (const auto& item : items) {
        for (size_t before = 0; before < 512; before += 8) {
            Measuring fresh;
            fresh.addString(std::string(before, 'x').c_str());
            item(fresh);
            fresh.parse();
        }
    }
}

}  // namespace
