#include "engines/scene/mutexes.h"

namespace Zant::Engine {

bool EngineMutex::lock() {
    if (isMine()) return false;
    mutex_.lock();
    owner_ = std::this_thread::get_id();
    return true;
}

bool EngineMutex::tryLock() {
    if (isMine() || !mutex_.try_lock()) return false;
    owner_ = std::this_thread::get_id();
    return true;
}

bool EngineMutex::unlock() {
    if (!isMine()) return false;
    owner_ = std::thread::id();
    mutex_.unlock();
    return true;
}

}  // namespace Zant::Engine
