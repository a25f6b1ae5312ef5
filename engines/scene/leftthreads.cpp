#include "engines/scene/leftthreads.h"

#include <utility>

namespace Zant::Engine {

void LeftThreads::add(std::thread thread) {
    const std::lock_guard lock(mutex_);
    threads_.push_back(std::move(thread));
}

void LeftThreads::join() {
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(mutex_);
        threads.swap(threads_);
    }
    for (std::thread& thread : threads) {
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }
}

}  // namespace Zant::Engine
