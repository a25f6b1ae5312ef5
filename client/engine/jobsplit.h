#ifndef ZANT_CLIENT_ENGINE_JOBSPLIT_H
#define ZANT_CLIENT_ENGINE_JOBSPLIT_H

#include <cstddef>

#include "client/engine/tables.h"
#include "own/allocator.h"

namespace Zant {

// No virtual destructor: the order of the virtual operations is shared with other builds.
ZANT_BEGIN_UNDELETED

/// A loop over three indices, run on the engine's threads. Derive from it and override run().
///
/// It must not outlive the engine's thread table. Whether start() returns before all work items are done is the
/// engine's contract; start() does not wait by itself. It may be started any number of times.
///
/// Threads: run() is called on several engine threads at once; it protects what it shares. The other operations are
/// for one thread at a time.
class MTJobSplit : public Object {
public:
    const MTFunctionsVtable* mt;
    void* job = nullptr;  ///< the engine's, or null

    /// Opens a job of the engine. A null table, or an engine that gives no job, leaves the work to the calling thread.
    explicit MTJobSplit(const MTFunctionsVtable* table);
    MTJobSplit(const MTJobSplit&) = delete;
    MTJobSplit& operator=(const MTJobSplit&) = delete;
    ~MTJobSplit();

    /// Calls run() once for every index triple below the three counts `dims`, on up to `threads` threads of the
    /// engine, which is given the counts unchanged. With fewer than two threads, or without a job of the engine,
    /// everything runs here as thread 0, the first index fastest, and a count of 0 is taken as 1.
    void start(const size_t* dims, int threads);

    /// What the engine calls: run() of the MTJobSplit that `context` points to.
    static void callback(const size_t* index, int thread, void* context);

    /// One work item: its three indices and the number of the thread that runs it. Does nothing here.
    virtual void run(const size_t* index, int thread);
};

ZANT_END_UNDELETED

}  // namespace Zant

#endif
