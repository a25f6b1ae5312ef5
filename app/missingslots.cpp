#include "app/missingslots.h"

#include <fmt/core.h>

namespace Zant::App {
namespace {

struct Slot {
    size_t place;
    const char* name;
    const char* who;
};

struct Table {
    const char* name;
    const char* who;  // meets it when the whole table is missing
    std::vector<Slot> slots;
};

const Table tableDescriptions[] = {
    {"library",
     "no host can load it",
     {{0, "exit", "unloading the engine will crash"},
      {1, "createInstance", "creating an instance will crash"},
      {2, "destroyInstance", "releasing an instance will crash"},
      {3, "getInfoInt", "loading it will crash"},
      {4, "getInfoString", "hosts that ask for its name, and linked listeners, will crash"},
      {5, "sendBackEvent", "instances without a listener of the host's will crash at their first event"},
      {9, "setPlatformOption", "hosts that pass platform options on will crash"}}},
    {"mt",
     "jobs run on the calling thread, and mutexes hold nobody back",
     {{1, "runJob", "jobs on two or more threads will crash"},
      {2, "createJob", "every job will crash"},
      {3, "destroyJob", "every job will crash at its end"},
      {4, "createMutex", "hosts that set up the instance mutex will crash"},
      {5, "mutexOp", "hosts that set up the instance mutex will crash at their next instance"},
      {6, "destroyMutex", "hosts that set up the instance mutex will crash when they unload"}}},
    {"bitmap",
     "Bitmap symbols will crash",
     {{0, "linkBitmap", "Bitmap symbols will crash"},
      {1, "setSharedMemory", "Bitmap symbols that share the host's memory will crash"}}},
    {"raytrace",
     "RaytraceAccess will crash",
     {{0, "createContext", "RaytraceAccess will crash"},
      {1, "destroyContext", "RaytraceAccess will crash at its end"},
      {2, "setupBuffers", "RaytraceAccess::allocBuffer will crash"},
      {3, "describeBuffer", "RaytraceAccess::allocBuffer will crash"},
      {4, "getBlock", "RaytraceAccess::allocBuffer will crash"}}},
    {"parser",
     "the first command of any host will crash",
     {{0, "findObject", "symbols, and hosts that find objects by name, will crash"},
      {1, "parse", "the first command of any host will crash"},
      {4, "getValue", "hosts that read values of symbols directly will crash"},
      {5, "setValue", "hosts that write values of symbols directly will crash"}}},
};

}  // namespace

std::vector<MissingSlot> findMissingSlots(const Vtables& tables) {
    const void* const written[] = {tables.library, tables.mt, tables.bitmap, tables.raytrace, tables.parser};
    std::vector<MissingSlot> missing;
    for (size_t i = 0; i < std::size(written); ++i) {
        const Table& table = tableDescriptions[i];
        if (!written[i]) {
            missing.push_back({fmt::format("no {} table", table.name), table.who});
            continue;
        }
        for (const Slot& slot : table.slots)
            if (!static_cast<const UnusedSlot*>(written[i])[slot.place])
                missing.push_back(
                    {fmt::format("{} table: slot {}, {}, is null", table.name, slot.place, slot.name), slot.who});
    }
    return missing;
}

}  // namespace Zant::App
