// What other builds rely on beside the records, whose headers say it: the order of the virtual operations, and where
// the parts of classes lie. A change here breaks engines and hosts that were built before it.
#include <gtest/gtest.h>

#include <cstring>

#include "client/commands/commandbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/engine/jobsplit.h"
#include "client/events/eventlistener.h"
#include "client/listeners/linkedlisteners.h"
#include "client/symbols/symbol.h"

using namespace Zant;

namespace {

struct Number {
    const char* what;
    size_t is, expected;
};

// The slot of a virtual operation, from the platform's form of a pointer to a member: the offset into the table of
// virtual operations, plus 1 where the low bit tells virtual operations from others.
template <class Member>
size_t slotOf(Member member) {
    ptrdiff_t words[2];
    static_assert(sizeof words == sizeof member);
    std::memcpy(words, &member, sizeof words);
    return static_cast<size_t>(words[0]) / sizeof(void*);
}

#define SLOT(class_, operation, expected) \
    { #class_ "::" #operation, slotOf(&class_::operation), expected }

using NarrowString = void (CommandBuffer::*)(const char*);
using WideString = void (CommandBuffer::*)(const wchar_t*);

const Number virtualSlots[] = {
    SLOT(EventListener, activate, 0),
    SLOT(EventListener, deactivate, 1),
    SLOT(EventListener, createTextStream, 2),
    SLOT(EventListener, destroyTextStream, 3),
    SLOT(EventListener, textLine, 4),
    SLOT(EventListener, textNewLine, 5),
    SLOT(EventListener, getTextLine, 6),
    SLOT(EventListener, getTextFlags, 7),
    SLOT(EventListener, allocTextBuffer, 8),
    SLOT(EventListener, freeTextBuffer, 9),
    SLOT(EventListener, createWindow, 10),
    SLOT(EventListener, destroyWindow, 11),
    SLOT(EventListener, setWindowSize, 12),
    SLOT(EventListener, setPixels, 13),
    SLOT(EventListener, copyPixels, 14),
    SLOT(EventListener, getWindowFlags, 15),
    SLOT(EventListener, setWindowFlags, 16),
    SLOT(EventListener, setWindowTitle, 17),
    SLOT(EventListener, getWindowMouseRawPosition, 18),
    SLOT(EventListener, getWindowMousePosition, 19),
    SLOT(EventListener, getWindowKeyEvent, 20),
    SLOT(EventListener, getMouseRawDPI, 21),
    SLOT(DispatchLinkedListener, createTextListner, 22),
    SLOT(TextListener, textLine, 0),
    SLOT(TextListener, textNewLine, 1),
    SLOT(TextListener, getTextLine, 2),
    SLOT(TextListener, getTextFlags, 3),
    SLOT(MTJobSplit, run, 0),
    SLOT(Symbol, updateSymbol, 0),
    // The destructor of a command buffer comes first, as two entries.
    SLOT(CommandBuffer, errorHandle, 2),
    SLOT(CommandBuffer, parse, 3),
    SLOT(CommandBuffer, generateAutoname, 4),
    SLOT(CommandBuffer, addEnum, 5),
    SLOT(CommandBuffer, addDouble, 6),
    {"CommandBuffer::addString", slotOf(static_cast<NarrowString>(&CommandBuffer::addString)), 7},
    {"CommandBuffer::addString, wide", slotOf(static_cast<WideString>(&CommandBuffer::addString)), 8},
    SLOT(CommandBuffer, addVector, 9),
    SLOT(CommandBuffer, addAxes, 10),
    SLOT(CommandBuffer, addCoordSys, 11),
    SLOT(CommandBuffer, addSymbol, 12),
    SLOT(CommandBuffer, addVarLenDouble, 13),
    SLOT(CommandBuffer, addVarLenVector, 14),
    SLOT(CommandBuffer, addVarLenAxes, 15),
    SLOT(CommandBuffer, addVarLenCoordSys, 16),
    SLOT(CommandBuffer, addVarLenSymbol, 17),
};

template <size_t count>
void check(const Number (&numbers)[count]) {
    for (const Number& number : numbers)
        EXPECT_EQ(number.is, number.expected) << number.what;
}

TEST(Contract, VirtualOperationsKeepTheirSlots) {
    struct Second : EventListener {};
    ASSERT_EQ(slotOf(&Second::deactivate), 1u);
    check(virtualSlots);
}

// Calls what stands in a slot, as a build that knows nothing of the class does.
void callSlot(void* object, size_t slot) {
    void (*operation)(void*);
    std::memcpy(&operation, *static_cast<char**>(object) + slot * sizeof operation, sizeof operation);
    operation(object);
}

TEST(Contract, DestructorsKeepTheirSlots) {
    static int ended;
    struct Text : TextListener {
        ~Text() override { ++ended; }
        void textLine(const char*) override {}
        void textNewLine() override {}
        void getTextLine(const char*, _ZantEventTextBufferData*) override {}
        int getTextFlags() override { return 0; }
    };
    struct Proto : Prototyper {
        Proto() : Prototyper(static_cast<CommandBuffer*>(nullptr)) {}
        ~Proto() override { ++ended; }
    };
    ended = 0;
    callSlot(new Text, 5);
    EXPECT_EQ(ended, 1) << "after the four operations: its second entry frees as well";
    callSlot(new Proto, 1);
    EXPECT_EQ(ended, 2) << "the only operation of a prototyper";
}

// Where a part lies in an object of another class.
template <class Part, class Whole>
ptrdiff_t offsetOfPart(Whole& whole) {
    return reinterpret_cast<char*>(static_cast<Part*>(&whole)) - reinterpret_cast<char*>(&whole);
}

TEST(Contract, PartsLieBehindTheTableOfVirtualOperations) {
    Prototyper prototyper(static_cast<CommandBuffer*>(nullptr));
    EXPECT_EQ(offsetOfPart<Protos>(prototyper), 8);
    EXPECT_EQ(reinterpret_cast<char*>(&prototyper.ownsBuffer) - reinterpret_cast<char*>(&prototyper), 16);
    EXPECT_EQ(static_cast<void*>(prototyper.protos()), static_cast<void*>(&prototyper.buffer));
    InstanceLinkedListener listener;
    EXPECT_EQ(reinterpret_cast<char*>(&listener.instance) - reinterpret_cast<char*>(&listener), 8);
    EXPECT_EQ(sizeof(EventListener), 8u);
    EXPECT_EQ(sizeof(BounceBackListener), 16u);
}

}  // namespace
