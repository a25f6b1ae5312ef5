#include "engines/scene/making.h"

#include <algorithm>
#include <new>
#include <utility>

#include "engines/scene/jobs.h"

namespace Zant::Engine {
namespace {

size_t tilesAlong(int length, int side) {
    return static_cast<size_t>((length + side - 1) / side);
}

}  // namespace

Making::Making(Painter painter, int threads, const char* errorPrefix)
    : painter_(std::move(painter)),
      threads_(threads),
      errorPrefix_(errorPrefix),
      columns_(tilesAlong(painter_.width(), side)),
      rows_(tilesAlong(painter_.height(), side)),
      picture_(std::make_shared<Picture>(painter_.width(), painter_.height())),
      coordinator_(&Making::coordinate, this) {}

Making::~Making() {
    stop();
}

std::vector<Tile> Making::take(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, time, [this] { return hasEnded_ || !ready_.empty(); });
    return std::exchange(ready_, {});
}

bool Making::hasEnded() const {
    const std::lock_guard lock(mutex_);
    return hasEnded_ && ready_.empty();
}

int Making::progress() const {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(finished_ * 100 / tiles());
}

void Making::stop() {
    isToEnd_ = true;
    if (coordinator_.joinable()) coordinator_.join();
}

void Making::coordinate() {
    try {
        if (painter_.prepare(threads_, [this] { return !isToEnd_; }))
            work();
        else if (!isToEnd_)
            outcome_ = {BadValue, "the scene cannot be made ready for a picture"};
    } catch (const std::bad_alloc&) {
        outcome_ = {OutOfMemory, "there is no memory for the picture"};
    } catch (const std::exception& error) {
        outcome_ = {OutOfMemory, std::string("the picture cannot be made: ") + error.what()};
    }
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
    changed_.notify_all();
}

// The coordinator is one of the threads.
void Making::work() {
    const size_t dims[3] = {columns_, rows_, 1};
    Job job(errorPrefix_);
    job.run(
        dims, threads_,
        [](const size_t* index, int, void* making) { static_cast<Making*>(making)->paint(index[0], index[1]); }, this);
    if (!isToEnd_ && !isWhole()) outcome_ = {OutOfMemory, "parts of the picture could not be made"};
}

void Making::paint(size_t column, size_t row) {
    if (isToEnd_) return;
    const int left = static_cast<int>(column) * side;
    const int top = static_cast<int>(row) * side;
    const Tile tile{left, top, std::min(left + side, picture_->width), std::min(top + side, picture_->height)};
    painter_.paint(tile, *picture_);
    handOver(tile);
}

void Making::handOver(const Tile& tile) {
    const std::lock_guard lock(mutex_);
    ready_.push_back(tile);
    ++finished_;
    changed_.notify_all();
}

}  // namespace Zant::Engine
