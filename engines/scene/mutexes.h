#ifndef ZANT_ENGINES_SCENE_MUTEXES_H
#define ZANT_ENGINES_SCENE_MUTEXES_H

#include <atomic>
#include <mutex>
#include <thread>

namespace Zant::Engine {

/// A mutex of the thread table. It is not recursive. What would hang a thread for ever or break the lock is refused
/// instead, so that a host's test ends and can say so.
class EngineMutex {
public:
    /// @return false when the calling thread holds it already; then nothing has changed.
    bool lock();
    /// @return whether it was taken.
    bool tryLock();
    /// @return false when the calling thread does not hold it; then nothing has changed.
    bool unlock();

private:
    // In no order with anything else: a thread asks for its own name only, which no other thread writes.
    bool isMine() const { return owner_.load(std::memory_order_relaxed) == std::this_thread::get_id(); }
    void setOwner(std::thread::id owner) { owner_.store(owner, std::memory_order_relaxed); }

    std::mutex mutex_;
    std::atomic<std::thread::id> owner_{std::thread::id()};
};

}  // namespace Zant::Engine

#endif
