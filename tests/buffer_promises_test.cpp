// What command buffers promise beyond their bytes: to hosts that override their operations, that send commands from
// events, that run out of memory, and with records whose counts say more than there is.
#include <climits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "client/encoding/prototyper.h"
#include "client/symbols/symbol.h"
#include "tests/commandstest.h"
#include "tests/failingallocator.h"

namespace {

/// Notes every virtual operation that runs, by a letter.
template <class Buffer>
class Tracing : public Buffer {
public:
    using Buffer::addString;
    using Buffer::Buffer;
    void errorHandle(int code) override { noted('!').Buffer::errorHandle(code); }
    void parse() override { noted('p').Buffer::parse(); }
    void addEnum(int n, const char* word) override { noted('e').Buffer::addEnum(n, word); }
    void addDouble(double v) override { noted('d').Buffer::addDouble(v); }
    void addString(const char* s) override { noted('s').Buffer::addString(s); }
    void addString(const wchar_t* s) override { noted('w').Buffer::addString(s); }
    void addVector(const Vector& v) override { noted('v').Buffer::addVector(v); }
    void addAxes(const Axes& a) override { noted('a').Buffer::addAxes(a); }
    void addCoordSys(const CoordSys& c) override { noted('c').Buffer::addCoordSys(c); }
    void addSymbol(const Symbol& s) override { noted('y').Buffer::addSymbol(s); }
    void addVarLenDouble(const VarLenDouble& l) override { noted('D').Buffer::addVarLenDouble(l); }
    void addVarLenVector(const VarLenVector& l) override { noted('V').Buffer::addVarLenVector(l); }
    void addVarLenAxes(const VarLenAxes& l) override { noted('A').Buffer::addVarLenAxes(l); }
    void addVarLenCoordSys(const VarLenCoordSys& l) override { noted('C').Buffer::addVarLenCoordSys(l); }
    void addVarLenSymbol(const VarLenSymbol& l) override { noted('Y').Buffer::addVarLenSymbol(l); }

    /// Text that takes that many bytes, past the trace.
    void fill(size_t bytes) { Buffer::addString(std::string(bytes, 'x').c_str()); }

    std::string trace;

private:
    Tracing& noted(char letter) {
        trace += letter;
        return *this;
    }
};

class BufferPromises : public RecordingEngine::Test {
protected:
    BufferPromises() { registered.registered = 77; }
    ~BufferPromises() override { registered.registered = 0; }

    template <class Buffer>
    void expectTraces() {
        const Double numbers[] = {1.0, 2.0};
        const Vector vectors[] = {Vector(1, 2, 3), Vector(1, 2)};
        const AxesHpb axes[] = {AxesHpb(1, 2, 3), AxesHpb()};
        const CoordSys systems[] = {CoordSys(), CoordSys()};
        const Symbol* const symbols[] = {&named, &registered};
        const struct {
            std::function<void(CommandBuffer&)> call;
            const char* trace;
        } rows[] = {
            {[](CommandBuffer& b) { b.addEnum(46, "fg"); }, "e"},
            {[](CommandBuffer& b) { b.addEnum(46, nullptr); }, "e"},
            {[](CommandBuffer& b) { b.addDouble(1.0 / 3); }, "d"},
            {[](CommandBuffer& b) { b.addString("text"); }, "s"},
            {[](CommandBuffer& b) { b.addString(L"text"); }, "ws"},
            {[](CommandBuffer& b) { b.addVector(Vector(1, 2, 3, 4)); }, "v"},
            {[](CommandBuffer& b) { b.addAxes(Axes(Matrix3x3())); }, "a"},
            {[](CommandBuffer& b) { b + AxesHpb(1, 2, 3); }, "a"},
            {[](CommandBuffer& b) { b.addCoordSys(CoordSys()); }, "c"},
            {[&](CommandBuffer& b) { b.addSymbol(named); }, "y"},
            {[&](CommandBuffer& b) { b.addSymbol(registered); }, "y"},
            {[&](CommandBuffer& b) { b.addVarLenDouble(VarLenDouble(numbers)); }, "Ddd"},
            {[&](CommandBuffer& b) { b.addVarLenVector(VarLenVector(vectors)); }, "Vvv"},
            {[&](CommandBuffer& b) { b.addVarLenAxes(VarLenAxes(axes)); }, "Aaa"},
            {[&](CommandBuffer& b) { b.addVarLenCoordSys(VarLenCoordSys(systems)); }, "Ccc"},
            {[&](CommandBuffer& b) { b.addVarLenSymbol(VarLenSymbol(symbols)); }, "Yyy"},
            {[](CommandBuffer& b) { b.parse(); }, "p"},
            {[](CommandBuffer& b) { b.error(3); }, "!"},
        };
        for (const auto& row : rows) {
            for (size_t bytes = 0; bytes < 300; ++bytes) {
                Tracing<Buffer> buffer(instance);
                if (bytes != 0) buffer.fill(bytes - 1);
                row.call(buffer);
                ASSERT_EQ(buffer.trace, row.trace) << "after " << bytes << " bytes";
            }
        }
    }

    Offline names;  // without an instance: what the symbols send goes nowhere
    Symbol named{names, "sky"};
    Symbol registered{names, "cube"};
};

TEST_F(BufferPromises, NoOperationRunsAnotherVirtualOne) {
    state.keeping = false;
    expectTraces<CommandTextBuffer>();
    expectTraces<CommandQuickTextBuffer>();
    expectTraces<Offline>();
    expectTraces<CommandBinaryBuffer>();
}

std::string blockOf(const std::function<void(CommandBuffer&)>& write, Instance* instance) {
    CommandBinaryBuffer buffer(instance);
    write(buffer);
    buffer.parse();
    return state.parsed.back().data;
}

void small(CommandBuffer& buffer) {
    buffer.addEnum(46, "fg");
    buffer.addDouble(0.5);
}

void large(CommandBuffer& buffer) {
    buffer.addEnum(1, "rem");
    for (int i = 0; i < 100; ++i)
        buffer.addVector(Vector(i, i, i));
}

std::function<void(CommandBuffer&)> whole(void (*write)(CommandBuffer&)) {
    return [write](CommandBuffer& buffer) {
        write(buffer);
        buffer.parse();
    };
}

/// Sends `outer`; from an event while it is parsed, `nested` through the same buffer; then `outer` again.
void sendNested(CommandBuffer& buffer, const std::function<void(CommandBuffer&)>& outer,
                const std::function<void(CommandBuffer&)>& nested) {
    state.parsed.clear();
    bool unchanged = false;
    state.onParse = [&](const char* data, size_t length) {
        nested(buffer);
        unchanged = std::string(data, length) == state.parsed[0].data;
    };
    outer(buffer);
    buffer.parse();
    EXPECT_TRUE(unchanged) << "what is being parsed stays as it is";
    outer(buffer);
    buffer.parse();
}

TEST_F(BufferPromises, AnEventMaySendThroughTheBufferThatIsParsed) {
    const std::string smallBlock = blockOf(small, instance);
    const std::string largeBlock = blockOf(large, instance);
    CommandBinaryBuffer binary(instance);
    for (int round = 0; round < 3; ++round) {
        sendNested(binary, small, whole(large));
        EXPECT_EQ(texts(), (Texts{smallBlock, largeBlock, smallBlock}));
        sendNested(binary, large, whole(small));
        EXPECT_EQ(texts(), (Texts{largeBlock, smallBlock, largeBlock}));
        sendNested(binary, small, small);  // never parsed: one placeholder stands there afterwards, and nothing else
        EXPECT_EQ(texts(), (Texts{smallBlock, smallBlock}));
        sendNested(binary, small, [&](CommandBuffer& b) {
            large(b);
            binary.discard();
        });
        EXPECT_EQ(texts(), (Texts{smallBlock, smallBlock}));
    }
    CommandTextBuffer text(instance);
    sendNested(text, small, [&](CommandBuffer& b) {
        for (int i = 0; i < 100; ++i)
            whole(small)(b);
    });
    EXPECT_EQ(texts(), Texts(102, "fg 0.5;"));
    sendNested(text, small, small);
    EXPECT_EQ(texts(), (Texts{"fg 0.5;", "fg 0.5,fg,0.5;"})) << "abandoned: it stays in front of the next one";
}

TEST_F(BufferPromises, AnOfflineBufferMayBeSentMoreWhileItGivesACommand) {
    Offline offline;
    offline.onParse = [&](const char* command) {
        whole(small)(offline);
        EXPECT_EQ(offline.commands[0], command);
    };
    whole(large)(offline);
    whole(small)(offline);
    EXPECT_EQ(offline.commands.size(), 3u);
    EXPECT_EQ(offline.commands[1] + offline.commands[2], "fg 0.5;fg 0.5;");
}

TEST_F(BufferPromises, ABufferOutlivesAnExceptionOutOfAnEvent) {
    CommandTextBuffer text(instance);
    CommandBinaryBuffer binary(instance);
    for (CommandBuffer* buffer : {static_cast<CommandBuffer*>(&text), static_cast<CommandBuffer*>(&binary)}) {
        for (const bool nested : {false, true}) {
            state.parsed.clear();
            state.onParse = [&](const char*, size_t) {
                if (nested) {
                    large(*buffer);
                    buffer->parse();
                }
                throw std::runtime_error("listener");
            };
            small(*buffer);
            EXPECT_THROW(buffer->parse(), std::runtime_error);
            small(*buffer);
            buffer->parse();
            EXPECT_EQ(state.parsed.back().data, state.parsed.front().data);
        }
    }
}

TEST_F(BufferPromises, CountsThatLieAreWrittenAsWhatIsThere) {
    const auto block = [&](auto value, auto write) {
        return blockOf([&](CommandBuffer& b) { write(b, value); }, instance);
    };
    const auto text = [&](auto value, auto write) {
        CommandTextBuffer buffer(instance);
        write(buffer, value);
        buffer.parse();
        return state.parsed.back().data;
    };
    const auto addVector = [](CommandBuffer& b, const Vector& v) { b.addVector(v); };
    const auto addAxes = [](CommandBuffer& b, const Axes& a) { b.addAxes(a); };
    const auto addSystem = [](CommandBuffer& b, const CoordSys& c) { b.addCoordSys(c); };
    const Axes matrix{Matrix3x3()};
    CoordSys system;
    system.axes = matrix;
    for (const int lie : {5, 100, INT_MAX}) {
        Vector vector(1, 2, 3, 4);
        vector.count = lie;
        EXPECT_EQ(block(vector, addVector), block(Vector(1, 2, 3, 4), addVector));
        EXPECT_EQ(text(vector, addVector), "(1,2,3,4);");
        Axes axes = matrix;
        axes.rows = lie;
        EXPECT_EQ(block(axes, addAxes), block(matrix, addAxes));
        EXPECT_EQ(text(axes, addAxes), "axes((1,0,0),(0,1,0),(0,0,1));");
        CoordSys lying = system;
        lying.axes.rows = lie;
        EXPECT_EQ(block(lying, addSystem), block(system, addSystem));
    }
    Vector vector(1, 2);
    vector.count = -5;
    const std::string negative = block(vector, addVector);
    int64_t word;
    std::memcpy(&word, negative.data() + 8, sizeof word);
    EXPECT_EQ(word, -5);
    EXPECT_EQ(negative.size(), 24u);
}

/// The deletion that a symbol's destructor sends finds all the memory that it needs before its first byte, or none.
/// @return how many times it found none
template <class Buffer>
size_t expectNoHalfDeletion(Instance* instance, size_t length) {
    const auto sendSmall = [](Tracing<Buffer>& buffer) {
        state.keeping = true;
        small(buffer);
        buffer.parse();
        return state.parsed.back().data;
    };
    size_t failed = 0;
    // Whole words in a block, since nothing is written to padding.
    const size_t step = std::is_same_v<Buffer, CommandBinaryBuffer> ? 8 : 1;
    for (size_t bytes = 7; bytes < 600; bytes += step) {
        Tracing<Buffer> untouched(instance), buffer(instance);
        untouched.fill(bytes);
        buffer.fill(bytes);
        auto symbol = std::make_unique<Symbol>(buffer, std::string(length, 'n').c_str());
        symbol->registered = 1;
        state.keeping = false;  // keeping what is sent allocates
        state.count = 0;
        FailingAllocator::failAt(1);
        symbol.reset();
        FailingAllocator::failAt(0);
        if (state.count != 0) continue;
        ++failed;
        EXPECT_EQ(sendSmall(buffer), sendSmall(untouched)) << "after " << bytes << " bytes";
    }
    state.keeping = true;
    return failed;
}

TEST_F(BufferPromises, ADestructorLeavesNoHalfCommand) {
    for (const size_t length : {size_t{1}, size_t{60}, size_t{127}}) {
        EXPECT_GT(expectNoHalfDeletion<CommandTextBuffer>(instance, length), 10u);
        EXPECT_GT(expectNoHalfDeletion<CommandQuickTextBuffer>(instance, length), 10u);
        EXPECT_GT(expectNoHalfDeletion<CommandBinaryBuffer>(instance, length), 10u);
    }
}

TEST_F(BufferPromises, WhatIsHalfWrittenCanBeDropped) {
    CommandTextBuffer text(instance);
    CommandQuickTextBuffer quick(instance);
    CommandBinaryBuffer binary(instance);
    const auto check = [&](auto& buffer) {
        small(buffer);
        buffer.parse();
        const std::string whole = state.parsed.back().data;
        buffer.addEnum(42, "delete");
        FailingAllocator::failAt(1);
        EXPECT_THROW(buffer.addString(std::string(5000, 'x').c_str()), std::bad_alloc);
        FailingAllocator::failAt(0);
        buffer.discard();
        buffer.error(9);
        small(buffer);
        buffer.parse();
        buffer.discard();
        EXPECT_EQ(buffer.errorCode, 9) << "the error is not dropped";
        buffer.error(0);
        small(buffer);
        buffer.parse();
        EXPECT_EQ(state.parsed.back().data, whole);
    };
    check(text);
    check(quick);
    check(binary);
}

TEST_F(BufferPromises, PrototypersWithoutAnInstanceSendNothing) {
    DirectPrototyper direct(nullptr);
    EXPECT_EQ(direct.parse("fg reset;"), 0);
}

}  // namespace
