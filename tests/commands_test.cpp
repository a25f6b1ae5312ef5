// Every item in every encoding, the error protocol, names, wide strings, and what a command costs in allocations.

#include <cmath>
#include <limits>
#include <memory>

#include "client/commands/commandbuffer.h"
#include "client/commands/utf8.h"
#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/symbols/symbol.h"
#include "tests/allocationcount.h"
#include "tests/recordingengine.h"

namespace {

using namespace Zant;
using RecordingEngine::state;
using RecordingEngine::Texts;

constexpr double pi = 3.141592653589793;

/// A binary block as it should be. Padding is not compared.
class Block {
public:
    Block() { word(0); }
    Block& word(uint64_t value) { return bytes(&value, sizeof value); }
    Block& real(double value) { return bytes(&value, sizeof value); }
    Block& number(double value) { return word(0).real(value); }
    Block& reals(std::initializer_list<double> values) {
        for (double value : values)
            real(value);
        return *this;
    }
    Block& text(const std::string& characters) {
        word(characters.size()).bytes(characters.c_str(), characters.size() + 1);
        compared.resize((compared.size() + 7) / 8 * 8, false);
        expected.resize(compared.size());
        return *this;
    }
    Block& list(size_t length) { return word(static_cast<uint64_t>(-2)).word(length); }
    Block& end() { return word(static_cast<uint64_t>(-3)); }

    /// Whether a block that was sent is this one with its end marker and length.
    testing::AssertionResult is(const std::string& sent) {
        end();
        const uint64_t length = expected.size();
        std::memcpy(&expected[0], &length, sizeof length);
        if (sent.size() != length) return testing::AssertionFailure() << sent.size() << " bytes, not " << length;
        for (size_t i = 0; i < length; ++i) {
            if (compared[i] && sent[i] != expected[i]) return testing::AssertionFailure() << "differs at byte " << i;
        }
        return testing::AssertionSuccess();
    }

private:
    Block& bytes(const void* data, size_t size) {
        expected.append(static_cast<const char*>(data), size);
        compared.resize(expected.size(), true);
        return *this;
    }
    std::string expected;
    std::vector<bool> compared;
};

class Offline : public CommandOfflineBuffer {
public:
    using CommandOfflineBuffer::CommandOfflineBuffer;
    void parseOffline(const char* command) override { commands.push_back(command); }
    Texts commands;
};

/// Keeps every code that is reported, and may answer with a command of its own.
template <class Buffer>
class Reporting : public Buffer {
public:
    using Buffer::Buffer;
    void errorHandle(int code) override {
        codes.push_back(code);
        if (onError) onError();
    }
    std::vector<int> codes;
    std::function<void()> onError;
};

class Commands : public RecordingEngine::Test {
protected:
    void expectBinary(Block block) {
        ASSERT_EQ(state.parsed.size(), 1u);
        EXPECT_TRUE(block.is(state.parsed[0].data));
        EXPECT_EQ(state.parsed[0].mode, 2);
        EXPECT_FALSE(state.parsed[0].hasSource);
        state.parsed.clear();
    }
    void expectText(const char* source, int mode, const std::string& text) {
        ASSERT_EQ(state.parsed.size(), 1u);
        EXPECT_EQ(state.parsed[0].data, text);
        EXPECT_EQ(state.parsed[0].source, source);
        EXPECT_EQ(state.parsed[0].mode, mode);
        state.parsed.clear();
    }

    /// Writes one command in every encoding.
    void expectAll(const std::function<void(CommandBuffer&)>& write, const std::string& text, const std::string& quick,
                   Block binary) {
        SCOPED_TRACE(text.substr(0, 80));
        const auto send = [&](CommandBuffer& buffer) {
            write(buffer);
            buffer.parse();
        };
        send(textBuffer);
        expectText("CommandTextBuffer", 0, text);
        send(quickBuffer);
        expectText("CommandQuickTextBuffer", 1, quick);
        send(offlineBuffer);
        EXPECT_EQ(offlineBuffer.commands.back(), text);
        send(binaryBuffer);
        expectBinary(binary);
    }

    /// One argument of the command "rem" (number 1).
    void expectItem(const std::function<void(CommandBuffer&)>& add, const std::string& item, Block binary) {
        const auto write = [&](CommandBuffer& buffer) {
            buffer.addEnum(1, "rem");
            add(buffer);
        };
        expectAll(write, "rem " + item + ";", "[1]," + item + ";", binary);
    }

    static Block rem() { return Block().word(1); }

    Reporting<CommandTextBuffer> textBuffer{instance};
    CommandQuickTextBuffer quickBuffer{instance};
    Offline offlineBuffer;
    Reporting<CommandBinaryBuffer> binaryBuffer{instance};
};

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

TEST_F(Commands, LightExample) {
    Symbol sky(offlineBuffer, "sky");
    const auto write = [&](CommandBuffer& b) {
        b.addEnum(11, "lightAdd");
        b.addEnum(20, "adaptive");
        b.addVector(Vector(0, 10, 0));
        b.addVector(Vector(1, 1, 1));
        b.addVector(Vector(0, -1, 0));
        b.addSymbol(sky);
        b.addDouble(0.5);
        b.addDouble(16);
        b.addDouble(2);
    };
    const auto block = [](bool registered) {
        Block b = Block().word(11).word(20);
        b.word(3).reals({0, 10, 0}).word(3).reals({1, 1, 1}).word(3).reals({0, -1, 0});
        registered ? b.word(0).word(0xABCDEF0123456789) : b.text("sky");
        return b.number(0.5).number(16).number(2);
    };
    const std::string arguments = ",(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;";
    expectAll(write, "lightAdd adaptive" + arguments, "[11],[20]" + arguments, block(false));
    sky.registered = 0xABCDEF0123456789;
    expectAll(write, "lightAdd adaptive" + arguments, "[11],[20]" + arguments, block(true));
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
    expectItem(
        [](CommandBuffer& b) {
            for (int i = 0; i < 200; ++i)
                b.addVector(Vector(-1.23456789e-300, -1.23456789e-300, -1.23456789e-300, -1.23456789e-300));
        },
        [] {
            std::string all;
            for (int i = 0; i < 200; ++i)
                all += i ? ",(-1.23456789e-300,-1.23456789e-300,-1.23456789e-300,-1.23456789e-300)"
                         : "(-1.23456789e-300,-1.23456789e-300,-1.23456789e-300,-1.23456789e-300)";
            return all;
        }(),
        [] {
            Block all = rem();
            for (int i = 0; i < 200; ++i)
                all.word(4).reals({-1.23456789e-300, -1.23456789e-300, -1.23456789e-300, -1.23456789e-300});
            return all;
        }());
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
               rem().list(56).number(1).number(2).number(3).end());
    expectItem([&](CommandBuffer& b) { b.addVarLenDouble(VarLenDouble(numbers, 1)); }, "1",
               rem().list(24).number(1).end());
    expectItem(
        [&](CommandBuffer& b) {
            b.addDouble(1);
            b.addVarLenDouble(VarLenDouble());
            b.addDouble(2);
        },
        "1,,2", rem().number(1).list(8).end().number(2));

    const Vector vectors[] = {Vector(1, 2, 3), Vector(4, 5)};
    expectItem([&](CommandBuffer& b) { b.addVarLenVector(VarLenVector(vectors, 1)); }, "(1,2,3)",
               rem().list(40).word(3).reals({1, 2, 3}).end());
    expectItem([&](CommandBuffer& b) { b.addVarLenVector(vectors); }, "{(1,2,3),(4,5)}",
               rem().list(64).word(3).reals({1, 2, 3}).word(2).reals({4, 5}).end());

    const AxesHpb axes[] = {AxesHpb(), AxesHpb(pi, 0, 0)};
    expectItem([&](CommandBuffer& b) { b.addVarLenAxes(axes); }, "{<>,<180,0,0>}",
               rem().list(120).word(2).reals({0, 0, 0, 1, 1, 1}).word(2).reals({pi, 0, 0, 1, 1, 1}).end());

    const CoordSys systems[] = {CoordSys(), CoordSys(Vector(1, 2, 3), AxesHpb(pi, 0, 0))};
    expectItem([&](CommandBuffer& b) { b.addVarLenCoordSys(systems); }, "{(0,0,0)@<>,(1,2,3)@<180,0,0>}",
               rem().list(120).reals({0, 0, 0}).word(0).reals({1, 2, 3}).word(2).reals({pi, 0, 0, 1, 1, 1}).end());

    Symbol known(offlineBuffer, "known"), unknown(offlineBuffer, "unknown8");
    known.registered = 77;
    const Symbol* symbols[] = {&known, &unknown};
    expectItem([&](CommandBuffer& b) { b.addVarLenSymbol(symbols); }, "{known,unknown8}",
               rem().list(48).word(0).word(77).text("unknown8").end());

    std::vector<Double> many(100000, Double(7));
    std::string text = "{7";
    Block block = rem().list(many.size() * 16 + 8).number(7);
    for (size_t i = 1; i < many.size(); ++i) {
        text += ",7";
        block.number(7);
    }
    expectItem([&](CommandBuffer& b) { b.addVarLenDouble(many); }, text + "}", block.end());
}

TEST_F(Commands, Separators) {
    textBuffer.setArgumentSeparator();
    textBuffer.addDouble(1);
    EXPECT_STREQ(textBuffer.getTerminatedBuffer(), ",1;");
    textBuffer.setCommandSeparator();
    textBuffer.addDouble(1);
    textBuffer.setCommandSeparator();
    textBuffer.addDouble(2);
    EXPECT_STREQ(textBuffer.getTerminatedBuffer(), " 1,2;");
    quickBuffer.setCommandSeparator();
    quickBuffer.addDouble(1);
    EXPECT_STREQ(quickBuffer.getTerminatedBuffer(), ",1;");
    textBuffer.quick = true;
    textBuffer.addEnum(46, "fg");
    textBuffer.parse();
    expectText("CommandTextBuffer", 0, "[46];");
    quickBuffer.quick = false;
    quickBuffer.addEnum(46, "fg");
    quickBuffer.addDouble(1);
    quickBuffer.parse();
    expectText("CommandQuickTextBuffer", 1, "[46] 1;");
    offlineBuffer.error(3);
    offlineBuffer.addEnum(1, "rem");
    offlineBuffer.parse();
    EXPECT_EQ(offlineBuffer.commands, Texts{"rem;"}) << "an error does not hold an offline buffer back";
}

void send(CommandBuffer& buffer, int number, const char* word) {
    buffer.addEnum(46, "fg");
    buffer.addEnum(number, word);
    buffer.parse();
}

TEST_F(Commands, TextHoldsBackAfterAnError) {
    send(textBuffer, 1, "first");
    state.parseResult = 3;
    send(textBuffer, 23, "reset");
    EXPECT_EQ(textBuffer.errorCode, 3);
    send(textBuffer, 23, "reset");
    send(textBuffer, 24, "render");
    textBuffer.addDouble(3);
    textBuffer.parse();
    EXPECT_EQ(texts(), (Texts{"fg first;", "fg reset;"}));
    EXPECT_EQ(textBuffer.codes, std::vector<int>{3}) << "reported once";
    state.parseResult = 0;
    textBuffer.error(0);
    textBuffer.parse();
    send(textBuffer, 1, "last");
    EXPECT_EQ(texts(), (Texts{"fg first;", "fg reset;", "fg reset,fg,render,3;", "fg last;"}));
    EXPECT_EQ(textBuffer.codes, std::vector<int>{3});
}

TEST_F(Commands, BinaryDropsAfterAnError) {
    state.parseResult = 3;
    send(binaryBuffer, 1, "first");
    send(binaryBuffer, 2, "second");
    EXPECT_EQ(state.parsed.size(), 1u);
    state.parsed.clear();
    state.parseResult = 0;
    binaryBuffer.error(7);
    send(binaryBuffer, 3, "third");
    binaryBuffer.error(0);
    send(binaryBuffer, 4, "fourth");
    expectBinary(Block().word(46).word(4));
    EXPECT_EQ(binaryBuffer.codes, (std::vector<int>{3, 7}));
}

TEST_F(Commands, AHookMaySendThroughItsOwnBuffer) {
    binaryBuffer.onError = [&] {
        state.parseResult = 0;
        binaryBuffer.error(0);
        send(binaryBuffer, 2, "repair");
    };
    state.parseResult = 3;
    send(binaryBuffer, 1, "broken");
    send(binaryBuffer, 5, "next");
    ASSERT_EQ(state.parsed.size(), 3u);
    EXPECT_TRUE(Block().word(46).word(2).is(state.parsed[1].data));
    EXPECT_TRUE(Block().word(46).word(5).is(state.parsed[2].data));

    textBuffer.onError = [&] {
        state.parseResult = 0;
        textBuffer.error(0);
        send(textBuffer, 2, "repair");
    };
    state.parsed.clear();
    state.parseResult = 3;
    send(textBuffer, 1, "broken");
    EXPECT_EQ(texts(), (Texts{"fg broken;", "fg repair;"}));
}

TEST(CommandNames, Digits) {
    const struct {
        int digit;
        char character;
    } digits[] = {{0, '0'}, {9, '9'}, {10, 'a'}, {34, 'y'}, {35, 'A'}, {59, 'Y'}, {60, 'Z'}, {-1, '/'}};
    for (const auto& row : digits)
        EXPECT_EQ(CommandBuffer::encode(row.digit), row.character) << row.digit;
    const struct {
        size_t value;
        int radix;
        const char* text;
    } values[] = {{0, 60, "_"},
                  {0, 16, "_"},
                  {5, 60, "_5"},
                  {35, 60, "A"},
                  {60, 60, "_10"},
                  {255, 16, "ff"},
                  {0x600000c04a80, 16, "_600000c04a80"},
                  {0x600000c04a80, 60, "CHmbwTyF"},
                  {0xa0001234, 16, "a0001234"},
                  {0xa0001234, 60, "_3r7Akk"},
                  {SIZE_MAX, 16, "ffffffffffffffff"},
                  {0x1000000000000000, 16, "_1000000000000000"}};
    for (const auto& row : values) {
        char text[18];
        CommandBuffer::encode(row.value, text, row.radix);
        EXPECT_STREQ(text, row.text);
    }
}

TEST_F(Commands, AutomaticNames) {
    CommandBuffer* const buffers[] = {&textBuffer, &quickBuffer, &offlineBuffer, &binaryBuffer};
    const int radixes[] = {16, 60, 16, 60};
    for (size_t i = 0; i < 4; ++i) {
        Symbol symbol(*buffers[i]);
        char expected[18];
        CommandBuffer::encode(reinterpret_cast<size_t>(&symbol), expected, radixes[i]);
        EXPECT_STREQ(symbol.name, expected) << i;
    }
}

TEST(Utf8, CodeValues) {
    const struct {
        unsigned int code;
        const char* bytes;
    } rows[] = {{0x7F, "\x7F"},
                {0x80, "\xC2\x80"},
                {0x7FF, "\xDF\xBF"},
                {0x800, "\xE0\xA0\x80"},
                {0x20AC, "\xE2\x82\xAC"},
                {0xD800, "\xED\xA0\x80"},
                {0xFFFF, "\xEF\xBF\xBF"},
                {0x10000, "\xF0\x90\x80\x80"},
                {0x10FFFF, "\xF4\x8F\xBF\xBF"},
                {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
                {0x200000, "\xF8\x88\x80\x80\x80"},
                {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
                {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
                {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"}};
    for (const auto& row : rows) {
        const wchar_t text[] = {static_cast<wchar_t>(row.code), L'z', 0};
        const UTF8EncoderBuffer<wchar_t> encoded(text);
        EXPECT_EQ(std::string(encoded.data), std::string(row.bytes) + "z") << row.code;
        EXPECT_EQ(encoded.capacity, std::strlen(row.bytes) + 2);
    }
    char untouched[] = "abc";
    UTF8Codec::encode(0x80000000u, untouched);
    EXPECT_STREQ(untouched, "abc");
    UTF8EncoderBuffer<wchar_t> reused(L"");
    EXPECT_STREQ(reused.data, "");
    const wchar_t invalidText[] = {static_cast<wchar_t>(0xFFFFFFFFu), 0};
    EXPECT_FALSE(reused.encode(invalidText));
    EXPECT_EQ(UTF8EncoderBuffer<wchar_t>::stringUTF8Length(invalidText), static_cast<size_t>(-1));
    EXPECT_EQ(UTF8EncoderBuffer<wchar_t>(invalidText).data, nullptr);
    EXPECT_TRUE(reused.encode(L"longer"));
    EXPECT_STREQ(reused.data, "longer");
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
    gradients(quick.protos());
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

/// One command with an item of every kind.
void sendEverything(CommandBuffer& buffer, const Symbol& symbol, double value) {
    static const Double numbers[] = {1.5, 2.5};
    static const Vector vectors[] = {Vector(1, 2), Vector(3, 4)};
    const Symbol* const symbols[] = {&symbol, &symbol};
    buffer.addEnum(11, "lightAdd");
    buffer.addDouble(value);
    buffer.addString("text with \" inside");
    buffer.addString(L"wide \u20AC");
    buffer.addVector(Vector(value, 1, 0));
    buffer.addAxes(AxesHpb(value, 1, 0));
    buffer.addCoordSys(CoordSys(Vector(value, 1, 0), Axes()));
    buffer.addSymbol(symbol);
    buffer.addVarLenDouble(numbers);
    buffer.addVarLenVector(vectors);
    buffer.addVarLenSymbol(symbols);
    buffer.parse();
}

class Silent : public CommandOfflineBuffer {
    void parseOffline(const char*) override { ++state.count; }
};

TEST_F(Commands, AMillionCommandsAllocateNothing) {
    Silent silent;
    Symbol symbol(silent, "symbol");
    state.keeping = false;
    for (CommandBuffer* buffer : {static_cast<CommandBuffer*>(&textBuffer), static_cast<CommandBuffer*>(&quickBuffer),
                                  static_cast<CommandBuffer*>(&silent), static_cast<CommandBuffer*>(&binaryBuffer)}) {
        sendEverything(*buffer, symbol, -1.23456789e-100);
        const size_t before = allocationCount();
        state.count = 0;
        for (int i = 0; i < 1000000; ++i)
            sendEverything(*buffer, symbol, i * 0.37);
        EXPECT_EQ(allocationCount(), before);
        EXPECT_EQ(state.count, 1000000u);
    }
    EXPECT_GT(allocationCount(), 0u) << "the counter is in use";
}

}  // namespace
