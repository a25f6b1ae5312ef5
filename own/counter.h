#ifndef ZANT_OWN_COUNTER_H
#define ZANT_OWN_COUNTER_H

#include "own/cxx17.h"

#ifndef ZANT_GNU_CODE
#include <atomic>
#endif

namespace Zant {

/// A number that several threads count with, in a header of few lines: that of the standard library is a tenth of what
/// including the face costs.
class Counter {
public:
    explicit Counter(unsigned start) : count_(start) {}
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

#ifdef ZANT_GNU_CODE
    /// The number, with everything that was done before others counted down to it.
    unsigned get() const {
        return __atomic_load_n(&count_, __ATOMIC_ACQUIRE);
    }
    void set(unsigned count) {
        __atomic_store_n(&count_, count, __ATOMIC_RELAXED);
    }
    void up() {
        __atomic_fetch_add(&count_, 1, __ATOMIC_RELAXED);
    }
    /// @return whether the number is 0 now
    bool down() {
        return __atomic_fetch_sub(&count_, 1, __ATOMIC_ACQ_REL) == 1;
    }

private:
    unsigned count_;
#else
    unsigned get() const {
        return count_.load(std::memory_order_acquire);
    }
    void set(unsigned count) {
        count_.store(count, std::memory_order_relaxed);
    }
    void up() {
        count_.fetch_add(1, std::memory_order_relaxed);
    }
    bool down() {
        return count_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }

private:
    std::atomic<unsigned> count_;
#endif
};

}  // namespace Zant

#endif
