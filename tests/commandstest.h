#ifndef ZANT_TESTS_COMMANDSTEST_H
#define ZANT_TESTS_COMMANDSTEST_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "tests/handmadeblock.h"
#include "tests/recordingengine.h"

using namespace Zant;
using RecordingEngine::state;
using RecordingEngine::Texts;
using Block = HandmadeBlock;

/// Keeps its commands, and may send more while it is given one.
class Offline : public CommandOfflineBuffer {
public:
    using CommandOfflineBuffer::CommandOfflineBuffer;
    void parseOffline(const char* command) override {
        commands.push_back(command);
        if (const auto hook = std::exchange(onParse, nullptr)) hook(command);
    }
    Texts commands;
    std::function<void(const char*)> onParse;  ///< called once
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

#endif
