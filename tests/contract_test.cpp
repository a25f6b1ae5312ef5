// What other builds rely on: the size and offsets of every shared record, and the order of the virtual operations.
// A change here breaks engines and hosts that were built before it.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "client/commands/commandbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/engine/instance.h"
#include "client/engine/jobsplit.h"
#include "client/engine/library.h"
#include "client/engine/raytrace.h"
#include "client/events/eventlistener.h"
#include "client/listeners/linkedlisteners.h"
#include "client/symbols/symbol.h"
#include "own/textbuffer.h"

using namespace Zant;

namespace {

struct Number {
    const char* what;
    size_t is, expected;
};

#define SIZE(record, expected) \
    { "size of " #record, sizeof(record), expected }
#define OFFSET(record, field, expected) \
    { #record "::" #field, offsetof(record, field), expected }

const Number records[] = {
    SIZE(Library, 104),
    OFFSET(Library, reserved0, 0),
    OFFSET(Library, reserved1, 8),
    OFFSET(Library, libraryDir, 16),
    OFFSET(Library, vtables, 24),
    OFFSET(Library, moduleHandle, 64),
    OFFSET(Library, instanceList, 72),
    OFFSET(Library, instanceMutex, 80),
    OFFSET(Library, hostVersion, 96),
    OFFSET(Library, flags, 100),
    SIZE(Vtables, 40),
    OFFSET(Vtables, library, 0),
    OFFSET(Vtables, mt, 8),
    OFFSET(Vtables, bitmap, 16),
    OFFSET(Vtables, raytrace, 24),
    OFFSET(Vtables, parser, 32),
    SIZE(Mutex, 16),
    OFFSET(Mutex, vt, 0),
    OFFSET(Mutex, handle, 8),
    SIZE(Instance, 72),
    OFFSET(Instance, library, 0),
    OFFSET(Instance, next, 8),
    OFFSET(Instance, libraryTable, 16),
    OFFSET(Instance, engineInstance, 24),
    OFFSET(Instance, parserContext, 32),
    OFFSET(Instance, ownedListener, 40),
    OFFSET(Instance, eventFunction, 48),
    OFFSET(Instance, listener, 56),
    OFFSET(Instance, userData, 64),
    SIZE(EventData, 48),
    OFFSET(EventData, kind, 0),
    OFFSET(EventData, instance, 8),
    OFFSET(EventData, reserved, 16),
    OFFSET(EventData, handle, 24),
    OFFSET(EventData, value, 32),
    OFFSET(EventData, text, 40),
    OFFSET(_ZantEventTextBufferData, text, 0),
    OFFSET(_ZantEventTextBufferData, size, 8),
    OFFSET(_ZantEventTextBufferData, buffer, 16),
    OFFSET(_ZantEventKey, present, 8),
    OFFSET(_ZantEventMousePosition, position, 0),
    SIZE(_ZantEventMousePosition, 32),
    SIZE(ZantVectorCore, 40),
    OFFSET(ZantVectorCore, count, 32),
    SIZE(ZantAxesCore, 80),
    OFFSET(ZantAxesCore, rows, 72),
    SIZE(ZantCoordSysCore, 104),
    OFFSET(ZantCoordSysCore, position, 0),
    OFFSET(ZantCoordSysCore, axes, 24),
    SIZE(ZantParserExchangeBuffer, 112),
    OFFSET(ZantParserExchangeBuffer, value, 0),
    OFFSET(ZantParserExchangeBuffer, type, 104),
    OFFSET(ZantTextStorage, text, 0),
    OFFSET(ZantTextStorage, length, 8),
    SIZE(ZantBitmapCore, 64),
    OFFSET(ZantBitmapCore, data, 0),
    OFFSET(ZantBitmapCore, width, 8),
    OFFSET(ZantBitmapCore, height, 12),
    OFFSET(ZantBitmapCore, format, 16),
    SIZE(ZantVertexMapRecord, 24),
    OFFSET(ZantVertexMapRecord, size, 0),
    OFFSET(ZantVertexMapRecord, values, 8),
    OFFSET(ZantVertexMapRecord, dimension, 16),
    OFFSET(ZantVertexMapRecord, samples, 20),
    SIZE(RaytraceInputBuffer, 80),
    OFFSET(RaytraceInputBuffer, counts, 24),
    OFFSET(RaytraceInputBuffer, blocks, 72),
    SIZE(RaytraceOutputBuffer, 80),
    OFFSET(RaytraceAccess, context, 8),
    OFFSET(RaytraceAccess, input, 16),
    OFFSET(RaytraceAccess, output, 96),
    OFFSET(ZantSymbolCore, name, 0),
    OFFSET(ZantSymbolCore, buffer, 128),
    OFFSET(ZantSymbolCore, handle, 136),
    OFFSET(ZantSymbolCore, registered, 144),
    OFFSET(ResizableBuffer, buffer, 0),
    OFFSET(ResizableBuffer, bufferSize, 8),
    OFFSET(ResizableBuffer, dataSize, 16),
    OFFSET(ProtoBase, buffer, 0),
    SIZE(Protos, 8),
    SIZE(EventListener, 8),
    SIZE(InstanceLinkedListener, 16),
    SIZE(BounceBackListener, 16),
};

const Number engineSlots[] = {
    OFFSET(LibraryFunctionsVtable, exit, 0 * 8),
    OFFSET(LibraryFunctionsVtable, createInstance, 1 * 8),
    OFFSET(LibraryFunctionsVtable, destroyInstance, 2 * 8),
    OFFSET(LibraryFunctionsVtable, getInfoInt, 3 * 8),
    OFFSET(LibraryFunctionsVtable, getInfoString, 4 * 8),
    OFFSET(LibraryFunctionsVtable, sendBackEvent, 5 * 8),
    OFFSET(LibraryFunctionsVtable, setPlatformOption, 9 * 8),
    OFFSET(MTFunctionsVtable, runJob, 1 * 8),
    OFFSET(MTFunctionsVtable, createJob, 2 * 8),
    OFFSET(MTFunctionsVtable, destroyJob, 3 * 8),
    OFFSET(MTFunctionsVtable, createMutex, 4 * 8),
    OFFSET(MTFunctionsVtable, mutexOp, 5 * 8),
    OFFSET(MTFunctionsVtable, destroyMutex, 6 * 8),
    OFFSET(BitmapFunctionsVtable, linkBitmap, 0 * 8),
    OFFSET(BitmapFunctionsVtable, setSharedMemory, 1 * 8),
    OFFSET(RaytraceFunctionsVtable, createContext, 0 * 8),
    OFFSET(RaytraceFunctionsVtable, destroyContext, 1 * 8),
    OFFSET(RaytraceFunctionsVtable, setupBuffers, 2 * 8),
    OFFSET(RaytraceFunctionsVtable, describeBuffer, 3 * 8),
    OFFSET(RaytraceFunctionsVtable, getBlock, 4 * 8),
    OFFSET(ParserFunctionsVtable, findObject, 0 * 8),
    OFFSET(ParserFunctionsVtable, parse, 1 * 8),
    OFFSET(ParserFunctionsVtable, getValue, 4 * 8),
    OFFSET(ParserFunctionsVtable, setValue, 5 * 8),
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

TEST(Contract, RecordsKeepTheirLayout) {
    check(records);
}

TEST(Contract, EngineTablesKeepTheirSlots) {
    check(engineSlots);
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
    EXPECT_EQ(ended, 1) << "behind the four operations: its second entry frees as well";
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
}

}  // namespace
