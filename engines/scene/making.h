#ifndef ZANT_ENGINES_SCENE_MAKING_H
#define ZANT_ENGINES_SCENE_MAKING_H

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "engines/scene/codes.h"
#include "engines/scene/painter.h"

namespace Zant::Engine {

/// One picture in the making, on threads of the engine's own, from its construction on. It raises no events.
///
/// One thread takes what is finished.
class Making {
public:
    /// Throws std::bad_alloc, and std::system_error when there is no thread.
    /// @param errorPrefix as in Job
    Making(Painter painter, int threads, const char* errorPrefix);
    /// Stops, and waits until nothing works any more.
    ~Making();
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

    /// Waits until tiles are finished, all is, or the time is over.
    /// @return the tiles that have been finished since the last call; their pixels change no more
    std::vector<Tile> take(std::chrono::milliseconds time);
    /// Whether nothing is left to be taken, and nothing comes any more.
    bool hasEnded() const;
    /// The share of the tiles that are finished, in per cent.
    int progress() const;

    /// Begins no further tile; returns when nothing works any more.
    void stop();
    /// After the end: whether every tile is finished, what went wrong if anything did, and the picture.
    bool isWhole() const { return finished_ == tiles(); }
    const Outcome& outcome() const { return outcome_; }
    const std::shared_ptr<Picture>& picture() const { return picture_; }

private:
    static constexpr int side = 32;  // of a tile

    size_t tiles() const { return columns_ * rows_; }
    void coordinate();
    void work();
    void paint(size_t column, size_t row);
    void handOver(const Tile& tile);

    Painter painter_;
    const int threads_;
    const char* const errorPrefix_;
    const size_t columns_;
    const size_t rows_;
    std::shared_ptr<Picture> picture_;
    Outcome outcome_;  // written by the coordinator, read after it has ended
    std::atomic<bool> isToEnd_{false};

    mutable std::mutex mutex_;  // guards all below
    std::condition_variable changed_;
    std::vector<Tile> ready_;
    size_t finished_ = 0;
    bool hasEnded_ = false;
    std::thread coordinator_;
};

}  // namespace Zant::Engine

#endif
