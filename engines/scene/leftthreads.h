#ifndef ZANT_ENGINES_SCENE_LEFTTHREADS_H
#define ZANT_ENGINES_SCENE_LEFTTHREADS_H

#include <mutex>
#include <thread>
#include <vector>

namespace Zant::Engine {

/// Threads whose instance has ended within an event that they raised: they end soon, and the engine's exit waits for
/// them. Any thread may call any operation.
class LeftThreads {
public:
    void add(std::thread thread);
    /// Waits for all of them but the calling thread, which is let go.
    void join();

private:
    std::mutex mutex_;
    std::vector<std::thread> threads_;
};

}  // namespace Zant::Engine

#endif
