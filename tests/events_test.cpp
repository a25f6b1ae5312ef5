// The way of an event: engine record, dispatch, listener, and back to the engine.
#include <cstring>
#include <set>

#include "client/engine/instance.h"
#include "client/events/eventlistener.h"
#include "client/listeners/dispatch.h"
#include "client/listeners/linkedlisteners.h"
#include "enginetest.h"
#include "eventrecords.h"

using namespace Zant;

namespace {

// Things to point at.
char window[4], stream[4], created[4];
const char* const text = "a text";
_ZantEventWindow size{1};
_ZantEventPixelTable pixels{2};
_ZantEventPixelRectangle rectangle{3};
_ZantEventMousePosition position{};
_ZantEventKey key{};
_ZantEventTextBufferData buffer{};

std::string nameOf(const void* thing) {
    const struct {
        const void* thing;
        const char* name;
    } names[] = {{nullptr, "null"},       {window, "window"}, {stream, "stream"},  {created, "created"},
                 {text, "text"},          {&size, "size"},    {&pixels, "pixels"}, {&rectangle, "rectangle"},
                 {&position, "position"}, {&key, "key"},      {&buffer, "buffer"}};
    for (const auto& row : names)
        if (row.thing == thing) return row.name;
    return "unknown";
}

// Notes every call with its arguments.
class Noting : public EventListener {
public:
    std::vector<std::string> calls;
    std::vector<int> answers;  // taken from the front

    void* createTextStream() override { return note("createTextStream"), created; }
    void destroyTextStream(void* s) override { note("destroyTextStream", s); }
    void textLine(void* s, const char* t) override { note("textLine", s, t); }
    void textNewLine(void* s) override { note("textNewLine", s); }
    void getTextLine(void* s, const char* t, _ZantEventTextBufferData* b) override { note("getTextLine", s, t, b); }
    int getTextFlags(void* s) override { return note("getTextFlags", s), answer(); }
    void allocTextBuffer(_ZantEventTextBufferData* b) override { note("allocTextBuffer", b); }
    void freeTextBuffer(_ZantEventTextBufferData* b) override { note("freeTextBuffer", b); }
    void* createWindow() override { return note("createWindow"), created; }
    void destroyWindow(void* w) override { note("destroyWindow", w); }
    int setWindowSize(void* w, const _ZantEventWindow& s) override { return note("setWindowSize", w, &s), answer(); }
    void setPixels(void* w, const _ZantEventPixelTable& p) override { note("setPixels", w, &p); }
    void copyPixels(void* w, const _ZantEventPixelRectangle& r) override { note("copyPixels", w, &r); }
    int getWindowFlags(void* w) override { return note("getWindowFlags", w), answer(); }
    void setWindowFlags(void* w, int flags) override {
        note("setWindowFlags", w);
        calls.back() += ' ' + std::to_string(flags);
    }
    void setWindowTitle(void* w, const char* t) override { note("setWindowTitle", w, t); }
    void getWindowMouseRawPosition(void* w, _ZantEventMousePosition& p) override { note("rawPosition", w, &p); }
    void getWindowMousePosition(void* w, _ZantEventMousePosition& p) override { note("position", w, &p); }
    void getWindowKeyEvent(void* w, _ZantEventKey& k) override { note("getWindowKeyEvent", w, &k); }
    int getMouseRawDPI(void* w) override { return note("getMouseRawDPI", w), answer(); }

private:
    template <class... Things>
    void note(const char* operation, Things... things) {
        calls.emplace_back(operation);
        ((calls.back() += ' ' + nameOf(things)), ...);
    }
    int answer() {
        if (answers.empty()) return 0;
        const int first = answers.front();
        answers.erase(answers.begin());
        return first;
    }
};

int64_t address(const void* thing) {
    return reinterpret_cast<int64_t>(thing);
}

// The `text` field of an event with a selector; the bytes above the selector are not to be looked at.
const char* selector(int32_t number) {
    EventData event{};
    event.text = reinterpret_cast<const char*>(uintptr_t{0xDEADBEEF} << 32);
    setEventSelector(event, number);
    return event.text;
}

EventData record(int32_t kind, Instance* instance, void* handle, int64_t value, const char* content) {
    EventData event{};
    event.kind = kind;
    event.padding = 0x11;
    event.instance = instance;
    event.reserved = stream + 1;
    event.handle = handle;
    event.value = value;
    event.text = content;
    return event;
}

class EventTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        library.setLibraryDir(engine("probe").c_str());
        instance = library.createInstanceWithListner(&listener);
        ASSERT_NE(instance, nullptr);
    }
    Noting listener;
    Library library{nullptr};
    Instance* instance = nullptr;
};

// A listener of a test's own, taken off the instance before it goes.
class Serving {
public:
    Serving(Instance* instance, EventListener& listener) : instance_(instance) {
        instance->setEventListener(&listener);
    }
    Serving(const Serving&) = delete;
    Serving& operator=(const Serving&) = delete;
    ~Serving() { instance_->setEventListener(nullptr); }

private:
    Instance* instance_;
};

struct EventRow {
    int32_t kind;
    void* handle;
    int64_t value;
    const char* text;
    std::vector<int> answers;
    std::vector<std::string> calls;
    void* handleAfter;
    int64_t valueAfter;
};

constexpr int64_t unused = 5;  // the value of an event that has none

std::vector<EventRow> everyKind() {
    const int64_t b = address(&buffer);
    const char* const none = nullptr;
    return {
        {0, window, address(&pixels), none, {}, {"setPixels window pixels"}, window, address(&pixels)},
        {1, window, address(&rectangle), none, {}, {"copyPixels window rectangle"}, window, address(&rectangle)},
        {2, window, unused, none, {}, {"createTextStream"}, created, unused},
        {3, stream, unused, none, {}, {"destroyTextStream stream"}, stream, unused},
        {4, stream, unused, text, {}, {"textLine stream text"}, stream, unused},
        {5, stream, unused, none, {}, {"textNewLine stream"}, stream, unused},
        {6, stream, b, text, {}, {"getTextLine stream text buffer"}, stream, b},
        {7, stream, unused, none, {-1}, {"getTextFlags stream"}, stream, -1},
        {7, stream, unused, none, {INT32_MAX}, {"getTextFlags stream"}, stream, INT32_MAX},
        {8, window, unused, none, {}, {"createWindow"}, created, unused},
        {9, window, unused, none, {}, {"destroyWindow window"}, window, unused},
        {10, window, address(&size), none, {0}, {"setWindowSize window size"}, nullptr, address(&size)},
        {10, window, address(&size), none, {-1}, {"setWindowSize window size"}, window, address(&size)},
        {11, window, unused, text, {}, {"setWindowTitle window text"}, window, unused},
        {12, window, 0x7FFFFFFFE, selector(0), {}, {"setWindowFlags window -2"}, window, 0x7FFFFFFFE},
        {12, window, unused, selector(1), {}, {}, window, unused},
        {13, window, unused, selector(0), {7, 7}, {"getWindowFlags window", "getWindowFlags window"}, window, 3},
        {13, window, unused, selector(0), {1, 0}, {"getWindowFlags window", "getWindowFlags window"}, window, 1},
        {13, window, unused, selector(0), {2, 1}, {"getWindowFlags window", "getWindowFlags window"}, window, 0},
        {13, window, unused, selector(0), {0, 2}, {"getWindowFlags window", "getWindowFlags window"}, window, 2},
        {13, window, unused, selector(1), {-800}, {"getMouseRawDPI window"}, window, -800},
        {13, window, unused, selector(2), {}, {}, window, unused},
        {13, window, unused, selector(-1), {}, {}, window, unused},
        {14, window, address(&position), none, {}, {"position window position"}, window, address(&position)},
        {15, window, address(&position), none, {}, {"rawPosition window position"}, window, address(&position)},
        {16, window, address(&key), none, {}, {"getWindowKeyEvent window key"}, window, address(&key)},
        {17, stream, b, none, {}, {"allocTextBuffer buffer"}, stream, b},
        {18, stream, b, none, {}, {"freeTextBuffer buffer"}, stream, b},
        {19, window, unused, text, {}, {}, window, unused},
        {-1, window, unused, text, {}, {}, window, unused},
        {INT32_MIN, window, unused, text, {}, {}, window, unused},
    };
}

TEST_F(EventTest, EveryKindBecomesItsCallAndNothingElseChanges) {
    int32_t kinds = 0;
    for (const EventRow& row : everyKind()) {
        SCOPED_TRACE("kind " + std::to_string(row.kind));
        listener.answers = row.answers;
        EventData event = record(row.kind, instance, row.handle, row.value, row.text);
        const EventData expected = record(row.kind, instance, row.handleAfter, row.valueAfter, row.text);
        instance->eventFunction(&event);
        EXPECT_EQ(std::exchange(listener.calls, {}), row.calls);
        EXPECT_EQ(std::memcmp(&event, &expected, sizeof event), 0) << event.handle << ' ' << event.value;
        kinds |= row.kind >= 0 && row.kind < 19 ? 1 << row.kind : 0;
    }
    EXPECT_EQ(kinds, (1 << 19) - 1) << "all nineteen were there";
}

TEST_F(EventTest, AListenerThatOverridesNothingDeclines) {
    EventListener declining;
    const Serving serving(instance, declining);
    const auto raise = [&](int32_t kind, void* handle, const void* value, const char* content) {
        EventData event = record(kind, instance, handle, address(value), content);
        instance->eventFunction(&event);
        return event;
    };
    EXPECT_EQ(raise(EventCreateTextStream, nullptr, nullptr, nullptr).handle, &declining);
    EXPECT_EQ(raise(EventCreateWindow, window, nullptr, nullptr).handle, nullptr);
    EXPECT_EQ(raise(EventSetWindowSize, window, &size, nullptr).handle, nullptr);
    EXPECT_EQ(raise(EventGetTextFlags, stream, &size, nullptr).value, 0);
    EXPECT_EQ(raise(EventGetWindowFlags, window, &size, selector(0)).value, 0);
    EXPECT_EQ(raise(EventGetWindowFlags, window, &size, selector(1)).value, 0);

    _ZantEventTextBufferData line{created, 7, created};
    raise(EventGetTextLine, stream, &line, text);
    EXPECT_EQ(line.text, nullptr);
    EXPECT_EQ(line.buffer, created);

    for (int32_t kind : {EventGetMousePosition, EventGetMouseRawPosition}) {
        _ZantEventMousePosition where{{3, 4}, {5}};
        raise(kind, window, &where, nullptr);
        EXPECT_EQ(where.position[0] | where.position[1], 0);
        EXPECT_EQ(where.reserved[0], 5) << "the engine's record may end after the position";
    }
    struct : EventListener {
        void getWindowMousePosition(void*, _ZantEventMousePosition& p) override { p.position[0] = 7; }
    } positioned;
    _ZantEventMousePosition raw{};
    positioned.getWindowMouseRawPosition(window, raw);
    EXPECT_EQ(raw.position[0], 7) << "who has no raw position answers the other one";
    _ZantEventKey pressed;
    std::memset(&pressed, 0xFF, sizeof pressed);
    raise(EventGetKey, window, &pressed, nullptr);
    EXPECT_EQ(pressed.present, 0);
    EXPECT_EQ(pressed.key[7] & pressed.reserved[0], 0xFF) << "its neighbours are the engine's";
}

TEST_F(EventTest, TextStorageIsTheListeners) {
    EventListener plain;
    const Serving serving(instance, plain);
    _ZantEventTextBufferData storage{nullptr, 256, nullptr};
    EventData event = record(EventAllocTextBuffer, instance, stream, address(&storage), nullptr);
    instance->eventFunction(&event);
    ASSERT_NE(storage.buffer, nullptr);
    EXPECT_EQ(storage.text, storage.buffer);
    std::memset(storage.buffer, 1, 256);
    event.kind = EventFreeTextBuffer;
    const char* const before = storage.text;
    instance->eventFunction(&event);
    EXPECT_EQ(storage.buffer, nullptr);
    EXPECT_EQ(storage.text, before);
    instance->eventFunction(&event);
}

// The event as a listener that bounces it sends it back: what its operation was given, and zeros.
EventData bounced(const EventRow& row) {
    const bool creates = row.kind == EventCreateTextStream || row.kind == EventCreateWindow;
    const bool selects = row.kind == EventSetWindowFlags || row.kind == EventGetWindowFlags;
    EventData event{};
    event.kind = row.kind;
    event.handle = creates ? nullptr : row.handle;
    event.value = selects ? static_cast<int32_t>(row.value) : row.value;
    if (row.value == unused) event.value = 0;
    event.text = row.text;
    if (selects) event.text = reinterpret_cast<const char*>(reinterpret_cast<uintptr_t>(row.text) & UINT32_MAX);
    return event;
}

TEST_F(EventTest, ABouncedRecordHasItsFieldsAndZeros) {
    BounceBackListener bouncing;
    const Serving serving(instance, bouncing);
    for (const EventRow& row : everyKind()) {
        SCOPED_TRACE("kind " + std::to_string(row.kind));
        EventData event = record(row.kind, instance, row.handle, row.value, row.text);
        instance->eventFunction(&event);
        const bool staysHere = row.kind == EventAllocTextBuffer || row.kind == EventFreeTextBuffer;
        EXPECT_EQ(probe().sentBack.size(), staysHere ? 0 : row.calls.size());
        const EventData expected = bounced(row);
        for (const EventData& sent : std::exchange(probe().sentBack, {}))
            EXPECT_EQ(std::memcmp(&sent, &expected, sizeof sent), 0);
    }
    EXPECT_EQ(std::set<int>(probe().sentBackOn.begin(), probe().sentBackOn.end()), std::set<int>{1});
    probe().onSendBack = [](ZantEventData& event) {
        event.handle = created;
        event.value = 0x5FFFFFFFD;
    };
    EXPECT_EQ(bouncing.createTextStream(), created);
    EXPECT_EQ(bouncing.createWindow(), created);
    EXPECT_EQ(bouncing.setWindowSize(window, size), 1);
    for (const int answer :
         {bouncing.getTextFlags(stream), bouncing.getWindowFlags(window), bouncing.getMouseRawDPI(window)})
        EXPECT_EQ(answer, -3);
    probe().onSendBack = [](ZantEventData& event) { event.handle = nullptr; };
    EXPECT_EQ(bouncing.setWindowSize(window, size), 0);
}

TEST_F(EventTest, RecognisesTheEnginesStrings) {
    InstanceLinkedListener linked;
    probe().eventStrings[0] = "ab";
    probe().eventStrings[2] = "zz";
    EXPECT_EQ(linked.recognizeEventString(""), -1) << "not active";
    const Serving serving(instance, linked);
    const struct {
        const char* text;
        int id;
    } rows[] = {{"abc", 100}, {"ab", 100}, {"a", 100}, {"", 100}, {"ax", -1}, {"b", -1}, {"zzz", 102}, {nullptr, -1}};
    for (const auto& row : rows)
        EXPECT_EQ(linked.recognizeEventString(row.text), row.id) << row.text;
    EXPECT_FALSE(linked.isEventString(101, "")) << "the engine has no such text";
    EXPECT_TRUE(linked.isEventString(102, "z"));
    const LibraryFunctionsVtable* const table = std::exchange(library.vtables.library, nullptr);
    EXPECT_FALSE(linked.isEventString(100, "ab")) << "no engine";
    library.vtables.library = table;
    linked.deactivate(nullptr);
    EXPECT_EQ(linked.instance, nullptr) << "whichever instance it was taken off";
}

class Lines : public TextListener {
public:
    Lines(std::string& output, int& alive) : output_(output), alive_(alive) { ++alive_; }
    ~Lines() override { --alive_; }
    void textLine(const char* t) override { output_ += t; }
    void textNewLine() override { output_ += '\n'; }
    void getTextLine(const char* t, _ZantEventTextBufferData* b) override {
        output_ += t;
        b->text = created;
    }
    int getTextFlags() override { return 6; }

private:
    std::string& output_;
    int& alive_;
};

class Dispatching : public DispatchLinkedListener {
public:
    TextListener* createTextListner() override { return new Lines(output[streams++], alive); }
    std::string output[2];
    int streams = 0;
    int alive = 0;
};

TEST_F(EventTest, EveryStreamHasItsOwnTextListener) {
    Dispatching dispatching;
    const Serving serving(instance, dispatching);
    void* const first = dispatching.createTextStream();
    void* const second = dispatching.createTextStream();
    dispatching.textLine(first, "one");
    dispatching.textLine(second, "two");
    dispatching.textNewLine(first);
    EXPECT_EQ(dispatching.output[0], "one\n");
    EXPECT_EQ(dispatching.output[1], "two");
    _ZantEventTextBufferData line{};
    dispatching.getTextLine(second, "?", &line);
    EXPECT_EQ(line.text, created);
    EXPECT_EQ(dispatching.getTextFlags(first), 6);
    dispatching.destroyTextStream(first);
    EXPECT_EQ(dispatching.alive, 1);
    dispatching.destroyTextStream(second);
    EXPECT_EQ(dispatching.alive, 0);
}

TEST_F(EventTest, StreamsWithoutATextListenerAreIgnored) {
    DispatchLinkedListener dropping;
    EXPECT_EQ(dropping.createTextStream(), nullptr);
    _ZantEventTextBufferData line{created, 0, nullptr};
    dropping.textLine(nullptr, text);
    dropping.textNewLine(nullptr);
    dropping.getTextLine(nullptr, text, &line);
    dropping.destroyTextStream(nullptr);
    EXPECT_EQ(dropping.getTextFlags(nullptr), 0);
    EXPECT_EQ(line.text, created);
}

}  // namespace
