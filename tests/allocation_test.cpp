// Every allocation of every operation that allocates fails once: the exception arrives, nothing leaks, the object is as
// it was before, and the operation succeeds afterwards.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "client/capi/zant_c.h"
#include "client/zant.h"
#include "failingallocator.h"

namespace {

using namespace Zant;

// ---- a silent engine, which keeps what it is sent without allocating ------------------------------------------------

char received[1 << 16];
size_t receivedSize = 0;
std::string objectText;

int keep(void*, const void* data, const char*, int mode) {
    uint64_t length = 0;
    std::memcpy(&length, data, mode == ParseBinary ? sizeof length : 0);
    if (mode != ParseBinary) length = std::strlen(static_cast<const char*>(data));
    std::memcpy(received + receivedSize, data, length);
    receivedSize += length;
    return 0;
}

int giveText(void*, void*, ZantParserExchangeBuffer* record) {
    auto& text = record->value.text;
    const bool fits = text.text && text.length > objectText.size();
    if (fits) std::memcpy(const_cast<char*>(text.text), objectText.c_str(), objectText.size() + 1);
    if (!fits) text = {nullptr, objectText.size()};
    return 1;
}

LibraryFunctionsVtable libraryTable{};
ParserFunctionsVtable parserTable{};
BitmapFunctionsVtable bitmapTable{};
RaytraceFunctionsVtable raytraceTable{};
uint64_t rayCounts[3];
int rayContexts = 0;

void init(Library* library) {
    libraryTable.exit = [] {};
    libraryTable.createInstance = [](Instance* instance) -> void* { return instance; };
    libraryTable.destroyInstance = [](ZantLibraryInstance*) {};
    libraryTable.getInfoInt = [](int) { return 1; };
    parserTable.parse = keep;
    parserTable.findObject = [](void*, const char*, void*, int, const char*) -> void* { return &received; };
    parserTable.getValue = giveText;
    bitmapTable.linkBitmap = [](void*, ZantBitmapCore*) {};
    raytraceTable.createContext = [](ZantLibraryInstance*) -> void* { return &++rayContexts; };
    raytraceTable.destroyContext = [](void*) { --rayContexts; };
    raytraceTable.setupBuffers = [](void*, const size_t*) -> unsigned char { return 1; };
    raytraceTable.describeBuffer = [](void*, void* buffer) {
        std::memcpy(static_cast<char*>(buffer) + 24, rayCounts, sizeof rayCounts);
    };
    raytraceTable.getBlock = [](void*, size_t, int) -> void* { return &received; };
    library->vtables = {&libraryTable, nullptr, &bitmapTable, &raytraceTable, &parserTable};
}

std::string takeReceived() {
    return {received, std::exchange(receivedSize, 0)};
}

// ---- the trial ------------------------------------------------------------------------------------------------------

/// Runs an operation with its n-th allocation failing. @return false when it has no n-th allocation
bool failsAt(size_t n, const std::function<void()>& operation) {
    bool thrown = false;
    FailingAllocator::failAt(n);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    FailingAllocator::failAt(0);
    return thrown;
}

/// Tries an operation on new subjects until no allocation is left to fail.
/// @param make a new subject, a smart pointer
/// @param act the operation, which is given the subject
/// @param look describes the subject; may change it
/// @return the number of allocations that failed
template <class Make, class Act, class Look>
size_t failEachAllocation(const char* what, Make make, Act act, Look look) {
    const auto lookAtNew = [&](auto... acts) {
        auto subject = make();
        (acts(*subject), ...);
        return look(*subject);
    };
    const std::string before = lookAtNew();
    const std::string after = lookAtNew(act);
    const size_t live = FailingAllocator::liveBlocks();
    for (size_t n = 1;; ++n) {
        bool failed = false;
        const auto fail = [&](auto& subject) { failed = failsAt(n, [&] { act(subject); }); };
        const bool asBefore = lookAtNew(fail) == before;
        if (!failed) return n - 1;
        EXPECT_TRUE(asBefore) << what << " changed its object when allocation " << n << " failed";
        EXPECT_TRUE(lookAtNew(fail, act) == after)
            << what << " did something else than usual after allocation " << n << " failed";
        EXPECT_EQ(FailingAllocator::liveBlocks(), live) << what << " leaks when allocation " << n << " fails";
        if (testing::Test::HasFailure()) return n;
    }
}

/// The same for operations that need no object.
size_t failEachAllocation(const char* what, const std::function<void()>& operation) {
    const auto make = [] { return std::make_unique<int>(0); };
    return failEachAllocation(
        what, make, [&](int&) { operation(); }, [](int&) { return std::string(); });
}

// ---- library and instances ------------------------------------------------------------------------------------------

/// Everything about a library that a host can see.
std::string lookAtLibrary(const Library& library) {
    std::string text = library.getLibraryDir() ? library.getLibraryDir() : "(none)";
    text += " flags " + std::to_string(library.flags) + (library.moduleHandle ? " open" : " closed");
    for (const Instance* instance = library.instanceList; instance; instance = instance->next)
        text += instance->ownedListener ? " default" : instance->listener ? " listener" : " handler";
    return text + (library.isLoaded() ? " loaded" : "");
}

std::unique_ptr<Library> unloaded() {
    return std::make_unique<Library>("/nowhere/in/particular/");
}

std::unique_ptr<Library> loaded() {
    return std::make_unique<Library>(init, "directory/");
}

std::unique_ptr<Library> loadedWithInstance() {
    auto library = loaded();
    library->createInstanceWithListner(nullptr);
    return library;
}

TEST(Allocation, OfLibrariesAndDirectories) {
    EXPECT_EQ(failEachAllocation("Library(dir)", [] { Library library("directory/"); }), 1u);
    EXPECT_EQ(failEachAllocation("Library(init)", [] { Library library(init, nullptr); }), 1u);
    EXPECT_EQ(failEachAllocation("new Library", [] { delete new Library("directory/"); }), 2u);
    EXPECT_EQ(failEachAllocation("StaticLibraryLoader",
                                 [] {
                                     StaticLibraryLoader loader;
                                     loader.getLibrary("directory/");
                                 }),
              2u);
    const auto setDirectory = [](Library& library) { library.setLibraryDir("another/"); };
    EXPECT_EQ(failEachAllocation("setLibraryDir", unloaded, setDirectory, lookAtLibrary), 1u);
    const auto setOwn = [](Library& library) { library.setLibraryDir(library.getLibraryDir()); };
    EXPECT_EQ(failEachAllocation("setLibraryDir of its own", unloaded, setOwn, lookAtLibrary), 1u);
}

TEST(Allocation, OfLoading) {
    const std::string longDirectory(300, 'd');
    const auto loadNothing = [&](Library& library) { library.load(longDirectory.c_str()); };
    // The copy, and two file names that grow from 16 bytes to 512.
    EXPECT_EQ(failEachAllocation("load of no file", unloaded, loadNothing, lookAtLibrary), 3u);
    const std::string directory = ZANT_LOOPBACK_DIR;
    const auto loadEngine = [&](Library& library) { EXPECT_TRUE(library.loadExplicitly(directory.c_str())); };
    const auto explicitly = [] {
        auto library = unloaded();
        library->flags = 0;
        return library;
    };
    const auto lookAndUnload = [](Library& library) {
        const std::string text = lookAtLibrary(library);
        library.unloadExplicitly();
        return text;
    };
    EXPECT_GE(failEachAllocation("load of an engine", explicitly, loadEngine, lookAndUnload), 2u);
    // A file without an entry point stays open; the next load closes it.
    const std::string noEntry = ZANT_TEST_ENGINES "no_entry/";
    const auto loadNoEntry = [&](Library& library) { library.load(noEntry.c_str()); };
    EXPECT_GE(failEachAllocation("load of a file without entry point", unloaded, loadNoEntry, lookAtLibrary), 2u);
}

TEST(Allocation, OfInstances) {
    EventListener listener;
    const std::function<Instance*(Library&)> kinds[] = {
        [](Library& library) { return library.createInstance(); },
        [&](Library& library) { return library.createInstanceWithListner(&listener); },
        [](Library& library) { return library.createInstanceWithHandler([](ZantEventData*) {}, nullptr); }};
    const size_t expected[] = {2, 1, 1};  // the instance, and the default listener
    const auto unloadedYet = [] { return std::make_unique<Library>(ZANT_LOOPBACK_DIR); };
    for (size_t i = 0; i < 3; ++i) {
        const auto create = [&](Library& library) { EXPECT_NE(kinds[i](library), nullptr); };
        EXPECT_EQ(failEachAllocation("an instance", loaded, create, lookAtLibrary), expected[i]);
        EXPECT_EQ(failEachAllocation("a second instance", loadedWithInstance, create, lookAtLibrary), expected[i]);
        EXPECT_GT(failEachAllocation("an instance that loads", unloadedYet, create, lookAtLibrary), expected[i]);
    }
    const auto setDefault = [](Library& library) { library.instanceList->setDefaultEventListener(); };
    EXPECT_EQ(failEachAllocation("the default listener", loadedWithInstance, setDefault, lookAtLibrary), 1u);
}

// ---- command buffers ------------------------------------------------------------------------------------------------

/// A command buffer with a command begun in it, and what its operations are given.
template <class Buffer>
struct Writer {
    Library library{init, nullptr};
    Buffer buffer{library.createInstanceWithListner(nullptr)};

    /// @param bytes of text in front, so that the block is filled to different degrees
    explicit Writer(size_t bytes) {
        buffer.addEnum(46, "fg");
        buffer.addString(std::string(bytes, 'x').c_str());
    }
};

/// Fills that differ by every byte; of blocks by every word, since padding has no content.
template <class Buffer>
std::vector<size_t> fills() {
    std::vector<size_t> all;
    for (size_t i = 0; i < 160; ++i)
        all.push_back(std::is_same_v<Buffer, CommandBinaryBuffer> ? 8 * i + 7 : 100 + i);
    return all;
}

struct Operation {
    const char* name;
    std::function<void(CommandBuffer&)> act;
};

/// Texts of 8 bytes with their terminators: nothing is padded in the binary block, whose padding has no content.
std::vector<Operation> bufferOperations() {
    static const std::string text(999, '"');
    static const std::wstring wide = std::wstring(1999, L'\x00E4') + L'x';
    static const std::u16string utf16 = std::u16string(1999, u'\x00E4') + u'x';
    static const std::vector<Double> numbers(200, Double{0.25});
    static const std::vector<Vector> points(200, Vector(1, 2, 3));
    static const std::vector<AxesHpb> angles(100, AxesHpb(1, 2, 3));
    static const std::vector<CoordSys> systems(100);
    return {
        {"addEnum", [](CommandBuffer& b) { b.addEnum(6, "gradients"); }},
        {"addDouble", [](CommandBuffer& b) { b.addDouble(0.1); }},
        {"addString", [](CommandBuffer& b) { b.addString(text.c_str()); }},
        {"addString wide", [](CommandBuffer& b) { b.addString(wide.c_str()); }},
        {"addUtf16String", [](CommandBuffer& b) { b.addUtf16String(utf16.c_str()); }},
        {"addVector", [](CommandBuffer& b) { b.addVector(Vector(1, 2, 3)); }},
        {"addAxes", [](CommandBuffer& b) { b.addAxes(AxesHpb(0.1, 0.2, 0.3)); }},
        {"addCoordSys", [](CommandBuffer& b) { b.addCoordSys(CoordSys()); }},
        {"addVarLenDouble", [](CommandBuffer& b) { b.addVarLenDouble(numbers); }},
        {"addVarLenVector", [](CommandBuffer& b) { b.addVarLenVector(points); }},
        {"addVarLenAxes", [](CommandBuffer& b) { b.addVarLenAxes(angles); }},
        {"addVarLenCoordSys", [](CommandBuffer& b) { b.addVarLenCoordSys(systems); }},
        {"addVarLenSymbol",
         [](CommandBuffer& b) {
             const Symbol symbol(b, "a symbol with a name that makes the text of a list grow soon...");
             const Symbol* const list[] = {&symbol, &symbol, &symbol, &symbol};
             b.addVarLenSymbol(list);
         }},
        {"parse", [](CommandBuffer& b) { b.parse(); }},
    };
}

template <class Buffer>
size_t failInBuffers(const char* encoding) {
    size_t points = 0;
    const auto look = [](Writer<Buffer>& writer) {
        writer.buffer.addDouble(1.5);
        writer.buffer.parse();
        return takeReceived();
    };
    for (const Operation& operation : bufferOperations()) {
        size_t pointsOfOperation = 0;
        const std::string what = std::string(encoding) + " " + operation.name;
        for (const size_t bytes : fills<Buffer>()) {
            const auto make = [bytes] { return std::make_unique<Writer<Buffer>>(bytes); };
            const auto act = [&](Writer<Buffer>& writer) { operation.act(writer.buffer); };
            pointsOfOperation += failEachAllocation(what.c_str(), make, act, look);
            if (testing::Test::HasFailure()) return 0;
        }
        EXPECT_GT(pointsOfOperation, 0u) << what << " never grew";
        points += pointsOfOperation;
    }
    const auto construct = [](Library& library) { Buffer{library.instanceList}; };
    return points + failEachAllocation(encoding, loadedWithInstance, construct, lookAtLibrary);
}

TEST(Allocation, OfCommandBuffers) {
    EXPECT_GE(failInBuffers<CommandTextBuffer>("text"), 500u);
    EXPECT_GE(failInBuffers<CommandQuickTextBuffer>("quick text"), 500u);
    EXPECT_GE(failInBuffers<CommandBinaryBuffer>("binary"), 500u);
}

// ---- blocks and texts -----------------------------------------------------------------------------------------------

auto textOf(const char* content) {
    return [content] {
        auto text = std::make_unique<TextBuffer>();
        text->concat(content);
        text->separator = ",";
        return text;
    };
}

std::string lookAtText(TextBuffer& text) {
    return std::string(text.buffer ? text.buffer : "", text.dataSize) + (text.separator ? text.separator : "none");
}

TEST(Allocation, OfBlocksAndTexts) {
    const struct {
        const char* name;
        std::function<void(TextBuffer&)> act;
    } operations[] = {
        {"concat", [](TextBuffer& t) { t.concat("a longer text than fits"); }},
        {"concat int", [](TextBuffer& t) { t.concat(-123456); }},
        {"concat double", [](TextBuffer& t) { t.concat(0.12345); }},
        {"append", [](TextBuffer& t) { t.append("xy", 2); }},
        {"separate", [](TextBuffer& t) { t.separate(); }},
        {"operator+", [](TextBuffer& t) { t + "text"; }},
        {"operator+=", [](TextBuffer& t) { t += "te\"xt"; }},
        {"concatQuotedString", [](TextBuffer& t) { t.concatQuotedString("\"\"\"\"", '"'); }},
        {"allocBuffer",
         [](TextBuffer& t) {
             const size_t offset = t.allocBuffer(40);
             std::memset(t.buffer + offset, 'x', 40);
         }},
        {"fit", [](TextBuffer& t) { t.fit(100); }},
        {"resize", [](TextBuffer& t) { t.resize(32); }},
    };
    const auto full = textOf("0123456789abcde");  // 16 bytes with its terminator
    for (const auto& operation : operations)
        EXPECT_EQ(failEachAllocation(operation.name, full, operation.act, lookAtText), 1u) << operation.name;
    const auto withRoomForTheSeparator = textOf("0123456789");
    for (void (*add)(TextBuffer&) : {+[](TextBuffer& t) { t + "a long text"; }, +[](TextBuffer& t) { t += "text"; }})
        EXPECT_EQ(failEachAllocation("an item after a separator", withRoomForTheSeparator, add, lookAtText), 1u);
}

TEST(Allocation, OfAlignedBlocks) {
    // Padding to more than a block's own alignment may have to grow twice; how often is up to the addresses.
    size_t most = 0;
    for (size_t size = 15; size < 4096; size += 255) {
        const auto make = [&] {
            auto text = std::make_unique<TextBuffer>();
            text->concat(std::string(size, 'x').c_str());
            return text;
        };
        const auto align = [](TextBuffer& text) { text.align(4096); };
        const auto look = [&](TextBuffer& text) {
            return text.dataSize == size ? lookAtText(text) : std::string("padded");
        };
        most = std::max(most, failEachAllocation("align", make, align, look));
    }
    EXPECT_GE(most, 2u);
}

TEST(Allocation, OfConvertedTexts) {
    const std::wstring wide(40, L'\x20AC');
    const auto make = [] { return std::make_unique<UTF8EncoderBuffer<wchar_t>>(L"short"); };
    const auto act = [&](UTF8EncoderBuffer<wchar_t>& text) { EXPECT_TRUE(text.encode(wide.c_str())); };
    const auto look = [](UTF8EncoderBuffer<wchar_t>& text) {
        return std::string(text.data) + " " + std::to_string(text.capacity);
    };
    EXPECT_EQ(failEachAllocation("encode", make, act, look), 1u);
    EXPECT_EQ(failEachAllocation("UTF8EncoderBuffer", [] { UTF8EncoderBuffer<wchar_t> text(L"text"); }), 1u);
}

// ---- symbols --------------------------------------------------------------------------------------------------------

TEST(Allocation, OfTheTextOfObjects) {
    objectText = std::string(700, 't');
    struct Reader : Writer<CommandTextBuffer> {
        Reader() : Writer(0) { symbol.registerSymbol(); }
        DoubleSymbol symbol{buffer, "x"};
        DynamicBuffer storage;
    };
    const auto read = [](Reader& reader) { EXPECT_EQ(reader.symbol.toString(reader.storage), objectText); };
    const auto look = [](Reader& reader) { return std::to_string(reader.storage.buffer.bufferSize); };
    EXPECT_EQ(failEachAllocation(
                  "toString", [] { return std::make_unique<Reader>(); }, read, look),
              1u);
}

// ---- rays, prototypers, listeners -----------------------------------------------------------------------------------

TEST(Allocation, OfRayTables) {
    Library library(init, nullptr);
    const Instance* instance = library.createInstanceWithListner(nullptr);
    EXPECT_EQ(failEachAllocation("createRaytraceAccess", [&] { delete instance->createRaytraceAccess(); }), 1u);
    EXPECT_EQ(rayContexts, 0);

    const size_t dims[3] = {1, 1, 1};
    const auto setCounts = [](uint64_t blocks) { rayCounts[0] = blocks, rayCounts[1] = rayCounts[2] = 1; };
    const auto make = [&] { return std::unique_ptr<RaytraceAccess>(instance->createRaytraceAccess()); };
    const auto alloc = [&](RaytraceAccess& access) { EXPECT_TRUE(access.allocBuffer(dims)); };
    // Freed tables are the one thing that a failed call does not bring back; then both are gone.
    const auto look = [](RaytraceAccess& access) {
        EXPECT_EQ(access.input.blocks == nullptr, access.output.blocks == nullptr);
        return std::string(access.input.blocks ? "blocks" : "none");
    };
    setCounts(4);
    EXPECT_EQ(failEachAllocation("allocBuffer", make, alloc, look), 2u);
    for (size_t n : {1u, 2u}) {
        const auto access = make();
        setCounts(4);
        alloc(*access);
        setCounts(9);
        EXPECT_TRUE(failsAt(n, [&] { alloc(*access); }));
        EXPECT_EQ(look(*access), "none") << "no table of four blocks may stay where nine are described";
        alloc(*access);
        EXPECT_EQ(access->output.blocks[8], reinterpret_cast<zl_ray_output*>(&received));
    }
}

TEST(Allocation, OfPrototypers) {
    Library library(init, nullptr);
    Instance* instance = library.createInstanceWithListner(nullptr);
    EXPECT_EQ(failEachAllocation("Prototyper", [&] { const Prototyper prototyper(instance); }), 1u);
    EXPECT_EQ(failEachAllocation("DirectPrototyper", [&] { const DirectPrototyper prototyper(instance); }), 2u);
    EXPECT_EQ(failEachAllocation("ZantCreateDirectProto", [&] { ZantReleaseProto(ZantCreateDirectProto(instance)); }),
              3u);
}

TEST(Allocation, OfTextForListeners) {
    struct Asked {
        EventListener listener;
        _ZantEventTextBufferData record{nullptr, 100, nullptr};
        ~Asked() { listener.freeTextBuffer(&record); }
    };
    const auto act = [](Asked& asked) { asked.listener.allocTextBuffer(&asked.record); };
    const auto look = [](Asked& asked) {
        EXPECT_EQ(asked.record.text, asked.record.buffer);
        return std::string(asked.record.buffer ? "storage" : "none");
    };
    EXPECT_EQ(failEachAllocation(
                  "allocTextBuffer", [] { return std::make_unique<Asked>(); }, act, look),
              1u);
}

}  // namespace
