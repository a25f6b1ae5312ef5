#ifndef ZANT_ENGINES_SCENE_JOBS_H
#define ZANT_ENGINES_SCENE_JOBS_H

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

#include "client/engine/tables.h"

namespace Zant::Engine {

/// One run of a loop with three indices, shared by the threads that work on it.
class JobLoop;

/// A job context: a set of threads that is kept from one run to the next, and grows with the threads asked for.
class Job {
public:
    /// @param errorPrefix before what is said on the standard error; it outlives the job.
    explicit Job(const char* errorPrefix) : errorPrefix_(errorPrefix) {}
    ~Job();
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Calls the callback once for every triple of indices and returns when all are done. Counts of 0 count as 1.
    /// The caller's thread works too, as number 0; others are numbered from 1. A run that is started while the context
    /// already runs, for example by a work item, is done by the caller's thread alone.
    /// @param threads at most this many work at the same time; fewer when the system has no more to give.
    void run(const size_t* dims, int threads, JobCallback callback, void* context);

private:
    void grow(size_t workers);
    void work(size_t worker);
    void share(JobLoop& loop, size_t workers);

    const char* const errorPrefix_;
    std::mutex running_;  // held during a run
    std::mutex mutex_;    // guards everything below
    std::condition_variable begin_;
    std::condition_variable done_;
    std::vector<std::thread> threads_;
    JobLoop* loop_ = nullptr;
    size_t wanted_ = 0;      // workers that take part in the current run
    size_t busy_ = 0;        // of these, not yet done
    size_t generation_ = 0;  // counts the runs
    bool stop_ = false;
};

}  // namespace Zant::Engine

#endif
