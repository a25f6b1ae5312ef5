#include "engines/scene/jobs.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <system_error>

namespace Zant::Engine {
namespace {

constexpr size_t mostThreads = 256;

// Clamps at the largest number: so many items never end anyway.
size_t product(size_t a, size_t b) {
    return b != 0 && a > SIZE_MAX / b ? SIZE_MAX : a * b;
}

}  // namespace

class JobLoop {
public:
    JobLoop(const size_t* dims, JobCallback callback, void* context, const char* errorPrefix)
        : callback_(callback), context_(context), errorPrefix_(errorPrefix) {
        for (int axis = 0; axis < 3; ++axis)
            dims_[axis] = std::max<size_t>(dims[axis], 1);
        items_ = product(product(dims_[0], dims_[1]), dims_[2]);
    }

    size_t items() const { return items_; }

    // Short enough that no thread is left alone with the last one, long enough to hide the cost of sharing.
    void divide(size_t threads) { chunk_ = std::clamp<size_t>(items_ / (threads * 16), 1, 1024); }

    // Takes chunks until none are left.
    void work(int thread) {
        for (;;) {
            size_t first = next_.load(std::memory_order_relaxed);
            do {
                if (first >= items_) return;
            } while (!next_.compare_exchange_weak(first, first + std::min(chunk_, items_ - first)));
            workChunk(first, std::min(chunk_, items_ - first), thread);
        }
    }

private:
    void workChunk(size_t first, size_t count, int thread) {
        size_t index[3] = {first % dims_[0], first / dims_[0] % dims_[1], first / dims_[0] / dims_[1]};
        for (; count > 0; --count) {
            const size_t item[3] = {index[0], index[1], index[2]};
            call(item, thread);
            if (++index[0] < dims_[0]) continue;
            index[0] = 0;
            if (++index[1] < dims_[1]) continue;
            index[1] = 0;
            ++index[2];
        }
    }

    void call(const size_t* index, int thread) noexcept {
        try {
            callback_(index, thread, context_);
        } catch (...) {
            std::fprintf(stderr, "%sa work item ended with an exception\n", errorPrefix_);
        }
    }

    JobCallback callback_;
    void* context_;
    const char* errorPrefix_;
    size_t dims_[3];
    size_t items_;
    size_t chunk_ = 1;
    std::atomic<size_t> next_{0};
};

Job::~Job() {
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
    }
    begin_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void Job::run(const size_t* dims, int threads, JobCallback callback, void* context) {
    JobLoop loop(dims, callback, context, errorPrefix_);
    const size_t wanted = std::min({static_cast<size_t>(std::max(threads, 1)), loop.items(), mostThreads});
    const std::unique_lock lock(running_, std::try_to_lock);
    if (lock.owns_lock() && wanted > 1) {
        grow(wanted - 1);
        share(loop, std::min(wanted - 1, threads_.size()));
    } else {
        loop.work(0);
    }
}

void Job::grow(size_t workers) {
    try {
        while (threads_.size() < workers) {
            threads_.reserve(workers);
            threads_.emplace_back(&Job::work, this, threads_.size());
        }
    } catch (const std::system_error&) {
        // No more threads: those that there are do all the work.
    }
}

void Job::share(JobLoop& loop, size_t workers) {
    loop.divide(workers + 1);
    {
        const std::lock_guard lock(mutex_);
        loop_ = &loop;
        wanted_ = busy_ = workers;
        ++generation_;
    }
    begin_.notify_all();
    loop.work(0);
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return busy_ == 0; });
    loop_ = nullptr;
}

void Job::work(size_t worker) {
    size_t seen = 0;
    std::unique_lock lock(mutex_);
    for (;;) {
        begin_.wait(lock, [&] { return stop_ || generation_ != seen; });
        if (stop_) return;
        seen = generation_;
        if (worker >= wanted_) continue;
        JobLoop& loop = *loop_;
        lock.unlock();
        loop.work(static_cast<int>(worker) + 1);
        lock.lock();
        if (--busy_ == 0) done_.notify_one();
    }
}

}  // namespace Zant::Engine
