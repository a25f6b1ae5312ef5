#include "engines/scene/mutexes.h"

namespace Zant::Engine {

bool EngineMutex::lock() {
    if (isMine()) return false;
    mutex_.lock();
    setOwner(std::this_thread::get_id());
    return true;
}

bool EngineMutex::tryLock() {
    if (isMine() || !mutex_.try_lock()) return false;
    setOwner(std::this_thread::get_id());
    return true;
}

bool EngineMutex::unlock() {
    if (!isMine()) return false;
    setOwner({});
    mutex_.unlock();
    return true;
}

}  // namespace Zant::Engine
