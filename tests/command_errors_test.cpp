// What the buffers do after an error, and the separators between items.

#include "tests/commandstest.h"

namespace {

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

}  // namespace
