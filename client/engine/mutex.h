#ifndef ZANT_CLIENT_ENGINE_MUTEX_H
#define ZANT_CLIENT_ENGINE_MUTEX_H

#include "client/engine/tables.h"

namespace Zant {

/// A lock of the engine's threading system, for the instance list and for host code that works beside engine threads.
///
/// Without a thread table it does nothing and every operation succeeds. A table whose createMutex() answers null is
/// used all the same, with that null handle. The mutex must be destroyed before the engine is unloaded.
///
/// Threads: lock(), unlock() and trylock() on any thread, init() and destroy() while no other thread uses the mutex.
class Mutex {
public:
    const MTFunctionsVtable* vt = nullptr;
    void* handle = nullptr;

    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;
    ~Mutex() { destroy(); }

    /// Creates the engine's mutex through `table`, null for none. A mutex that has its handle stays as it is.
    void init(const MTFunctionsVtable* table) {
        if (handle) return;
        vt = table;
        if (vt) handle = vt->createMutex(nullptr, nullptr, nullptr);
    }

    void lock() {
        if (vt) vt->mutexOp(handle, 1, 0);
    }

    void unlock() {
        if (vt) vt->mutexOp(handle, -1, 0);
    }

    /// @return non-zero when the lock was taken: the low byte of the engine's answer, with its sign.
    int trylock() { return vt ? static_cast<signed char>(vt->mutexOp(handle, 0, 0)) : 1; }

    /// Gives the engine's mutex back; init() may follow.
    void destroy() {
        if (vt) vt->destroyMutex(handle);
        vt = nullptr;
        handle = nullptr;
    }
};
static_assert(sizeof(Mutex) == 16 && offsetof(Mutex, handle) == 8, "a part of the Library record");

/// Holds a mutex locked while it lives.
class MutexLocker {
public:
    Mutex* mutex;

    explicit MutexLocker(Mutex& lockedMutex) : mutex(&lockedMutex) { mutex->lock(); }
    MutexLocker(const MutexLocker&) = delete;
    MutexLocker& operator=(const MutexLocker&) = delete;
    ~MutexLocker() { mutex->unlock(); }
};

}  // namespace Zant

#endif
