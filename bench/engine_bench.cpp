// The boundary with the engine: event dispatch, job splitting and the tables of ray blocks, on the loopback engine.
#include <array>
#include <memory>
#include <thread>
#include <vector>

#include "bench/contest.h"
#include "client/engine/instance.h"
#include "client/engine/jobsplit.h"
#include "client/engine/raytrace.h"
#include "client/events/eventlistener.h"

namespace {

using namespace Zant;

/// Does next to nothing, so that the way to it is timed.
class Quick : public EventListener {
public:
    void textLine(void*, const char*) override {}
};

bool dispatch(Instance* instance, Quick& listener) {
    constexpr size_t events = 100000;
    EventData line{};
    line.kind = EventTextLine;
    line.instance = instance;
    line.text = "text";
    EventListener* volatile direct = &listener;

    Contest contest("event: a line of text", events);
    contest.ours("through the instance's event function", [&] {
        for (size_t i = 0; i < events; ++i)
            instance->eventFunction(&line);
    });
    contest.peer("direct virtual call", [&] {
        EventListener* const called = direct;
        for (size_t i = 0; i < events; ++i)
            called->textLine(nullptr, line.text);
    });
    return contest.run();
}

constexpr size_t side = 64;
constexpr size_t items = side * side;

/// One work item: some hundred nanoseconds of arithmetic on a cell of its own.
struct Cells {
    std::vector<double> values = std::vector<double>(items, 1.0);

    void work(size_t x, size_t y) {
        double value = values[y * side + x];
        for (int step = 0; step < 100; ++step)
            value = value * 0.999 + static_cast<double>(x ^ y) * 1e-6;
        values[y * side + x] = value;
    }
    void workRows(size_t first, size_t last) {
        for (size_t y = first; y < last; ++y)
            for (size_t x = 0; x < side; ++x)
                work(x, y);
    }
};

class Split : public MTJobSplit {
public:
    Split(const MTFunctionsVtable* table, Cells& worked) : MTJobSplit(table), cells(worked) {}
    void run(const size_t* index, int) override { cells.work(index[0], index[1]); }
    Cells& cells;
};

bool jobsInPlace() {
    Cells cells;
    Split split(nullptr, cells);
    const size_t dims[3] = {side, side, 1};

    Contest contest("jobs: an item, one thread", items);
    contest.ours("MTJobSplit in place", [&] { split.start(dims, 1); });
    contest.peer("plain loop", [&] { cells.workRows(0, side); });
    return contest.run();
}

bool jobsOnThreads(const MTFunctionsVtable* table) {
    Cells cells;
    Split split(table, cells);
    const size_t dims[3] = {side, side, 1};

    Contest contest("jobs: an item, two threads", items);
    contest.usesThreads();
    contest.ours("MTJobSplit on engine threads", [&] { split.start(dims, 2); });
    contest.peer("std::thread, half of the rows each", [&] {
        std::thread other([&] { cells.workRows(side / 2, side); });
        cells.workRows(0, side / 2);
        other.join();
    });
    contest.peer("plain loop, one thread", [&] { cells.workRows(0, side); });
    return contest.run();
}

/// An engine that lays out nothing, so that only the client's side of the tables is timed.
const RaytraceFunctionsVtable rayTable = {
    [](ZantLibraryInstance*) -> void* { return nullptr; }, [](void*) {},
    [](void*, const size_t*) -> unsigned char { return 1; },
    [](void*, void* buffer) {
        auto* const counts = static_cast<RaytraceInputBuffer*>(buffer)->counts;
        counts[0] = counts[1] = side;
        counts[2] = 1;
    },
    [](void*, size_t index, int which) { return reinterpret_cast<void*>(index * 2 + static_cast<size_t>(which)); }};

bool rays() {
    const RaytraceFunctionsVtable* volatile opaque = &rayTable;
    RaytraceAccess access(opaque, nullptr);
    const size_t dims[3] = {side, side, 1};

    Contest contest("rays: a pair of blocks", items);
    contest.ours("RaytraceAccess::allocBuffer", [&] {
        access.allocBuffer(dims);
        keep(access);
    });
    contest.peer("two vectors, filled by hand", [&] {
        const RaytraceFunctionsVtable* const table = opaque;
        std::vector<void*> inputs(items), outputs(items);
        for (size_t i = 0; i < items; ++i) {
            inputs[i] = table->getBlock(nullptr, i, 0);
            outputs[i] = table->getBlock(nullptr, i, 1);
        }
        keep(inputs);
        keep(outputs);
    });
    return contest.run();
}

}  // namespace

int main() {
    Library library(ZANT_LOOPBACK_DIR);
    Quick listener;
    Instance* const instance = library.createInstanceWithListner(&listener);
    if (!instance) {
        std::fprintf(stderr, "no engine: %s\n", library.getLoadError());
        return 3;
    }
    bool allMet = dispatch(instance, listener);
    allMet &= jobsInPlace();
    allMet &= jobsOnThreads(library.vtables.mt);
    allMet &= rays();
    library.releaseInstance(instance);
    return allMet ? 0 : 1;
}
