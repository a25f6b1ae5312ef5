#ifndef ZANT_OWN_COUNTER_H
#define ZANT_OWN_COUNTER_H

#include "own/cxx17.h"

#ifndef ZANT_GNU_CODE
#include <atomic>
#endif

namespace Zant {

#ifdef ZANT_GNU_CODE

/// A number that several threads count with, or whose bits they set, in a header of few lines: that of the standard
/// library would be a twelfth of what a group of commands costs to include.
class Counter {
public:
    explicit Counter(unsigned start) : count_(start) {}
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

    /// The number, with everything that was done before others counted down to it.
    unsigned get() const { return __atomic_load_n(&count_, __ATOMIC_ACQUIRE); }
    void up() { __atomic_fetch_add(&count_, 1, __ATOMIC_RELAXED); }
    /// @return whether the number is 0 now
    bool down() { return __atomic_fetch_sub(&count_, 1, __ATOMIC_ACQ_REL) == 1; }
    void setBits(unsigned bits) { __atomic_fetch_or(&count_, bits, __ATOMIC_RELAXED); }
    void clearBits(unsigned bits) { __atomic_fetch_and(&count_, ~bits, __ATOMIC_RELAXED); }

private:
    unsigned count_;
};

#else

class Counter {
public:
    explicit Counter(unsigned start) : count_(start) {}

    unsigned get() const { return count_.load(std::memory_order_acquire); }
    void up() { count_.fetch_add(1, std::memory_order_relaxed); }
    bool down() { return count_.fetch_sub(1, std::memory_order_acq_rel) == 1; }
    void setBits(unsigned bits) { count_.fetch_or(bits, std::memory_order_relaxed); }
    void clearBits(unsigned bits) { count_.fetch_and(~bits, std::memory_order_relaxed); }

private:
    std::atomic<unsigned> count_;
};

#endif

}  // namespace Zant

#endif
