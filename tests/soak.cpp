// zant_soak [COMMANDS [ENGINE_COMMANDS]]: sends commands in all three encodings, to a parser that does nothing and to
// the loopback engine, and demands that the process needs no more memory at the end than after the first thousand.
// Both numbers are per encoding; by default ten million and one million.

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "allocationcount.h"
#include "client/zant.h"
#include "residentmemory.h"
#include "silentengine.h"

namespace {

using namespace Zant;
using Tests::judgesResidence, Tests::residentKilobytes;

constexpr long warmUp = 1000;
/// What the C library may still move about.
constexpr long allowedKilobytes = 512;

/// Commands with items of every kind, in turn.
class Sender {
public:
    explicit Sender(CommandBuffer* buffer) : prototyper(buffer) {}

    void send(long count) {
        for (long i = 0; i < count; ++i)
            sendOne(i);
    }

    int errorCode() const { return prototyper.buffer->errorCode; }

private:
    void sendOne(long i) {
        const double changing = static_cast<double>(i % 100000) / 7;
        switch (i % 7) {
            case 0:
                return fg2_gradients(prototyper.protos(), changing, 2);
            case 1:
                points[0].values[0] = changing;
                return objectAdd3_polygon(prototyper.protos(), points, first, second);
            case 2:
                return objectAdd3_ellipsoid(prototyper.protos(), place, first, second);
            case 3:
                return view1_postProcess_filter(prototyper.protos(), numbers);
            case 4:
                return lightAdd1_group(prototyper.protos(), symbols);
            case 5:
                return animOb3_addAxesKey(prototyper.protos(), "a \"name\"", changing, place.axes);
            default:
                return about1u(prototyper.protos(), L"sch\x00F6n \x20AC \"quoted\"");
        }
    }

    Prototyper prototyper;
    const CoordSys place{Vector(1, 2, 3), AxesHpb(0.1, 0.2, 0.3)};
    Vector points[12] = {Vector(1, 2, 3), Vector(0.5, -1e-9, 1e12)};
    const Double numbers[12] = {1.5, -1e-100};
    Symbol first{*prototyper.buffer, "first"};
    Symbol second{*prototyper.buffer, "second"};
    const Symbol* symbols[2] = {&first, &second};
};

struct Encoding {
    const char* name;
    CommandBuffer* (*make)(Instance*);
};

const Encoding encodings[] = {
    {"text", [](Instance* instance) -> CommandBuffer* { return new CommandTextBuffer(instance); }},
    {"quick text", [](Instance* instance) -> CommandBuffer* { return new CommandQuickTextBuffer(instance); }},
    {"binary", [](Instance* instance) -> CommandBuffer* { return new CommandBinaryBuffer(instance); }},
};

struct Measure {
    size_t allocations = allocationCount();
    long kilobytes = residentKilobytes();
    std::chrono::steady_clock::time_point time = std::chrono::steady_clock::now();
};

/// @param allocationsMatter whether all of them are the client's
bool soak(const Encoding& encoding, const char* engine, Instance* instance, long commands, bool allocationsMatter) {
    Sender sender(encoding.make(instance));
    sender.send(warmUp);
    const Measure before;
    sender.send(commands);
    const Measure after;
    const double seconds = std::chrono::duration<double>(after.time - before.time).count();
    const size_t allocations = after.allocations - before.allocations;
    std::printf("%-10s %-8s %10ld commands %7.2f s %6.0f ns each, allocations %zu, resident %ld -> %ld KiB\n",
                encoding.name, engine, commands, seconds, seconds * 1e9 / static_cast<double>(commands), allocations,
                before.kilobytes, after.kilobytes);
    const bool flat = !judgesResidence || after.kilobytes - before.kilobytes <= allowedKilobytes;
    const bool silent = !allocationsMatter || allocations == 0;
    if (!flat) std::printf("  memory has grown\n");
    if (!silent) std::printf("  the client has allocated\n");
    if (sender.errorCode() != 0) std::printf("  error %d\n", sender.errorCode());
    return flat && silent && sender.errorCode() == 0;
}

bool soakSilentEngine(long commands) {
    Library library(SilentEngine::init, nullptr);
    Instance* instance = library.createInstanceWithListner(nullptr);
    bool fine = true;
    for (const Encoding& encoding : encodings) {
        SilentEngine::parsed = 0;
        fine &= soak(encoding, "silent", instance, commands, true);
        if (SilentEngine::parsed == static_cast<size_t>(warmUp + commands)) continue;
        std::printf("  only %zu commands have arrived\n", SilentEngine::parsed);
        fine = false;
    }
    return fine;
}

bool soakLoopbackEngine(long commands) {
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstanceWithListner(nullptr);
    if (!instance) {
        std::printf("%s\n", library.getLoadError());
        return false;
    }
    bool fine = true;
    for (const Encoding& encoding : encodings)
        fine &= soak(encoding, "loopback", instance, commands, false);
    return fine;
}

}  // namespace

int main(int count, char** arguments) {
    const long commands = count > 1 ? std::atol(arguments[1]) : 10'000'000;
    const long engineCommands = count > 2 ? std::atol(arguments[2]) : 1'000'000;
    const bool alone = soakSilentEngine(commands);
    const bool withEngine = soakLoopbackEngine(engineCommands);
    return alone && withEngine ? 0 : 1;
}
