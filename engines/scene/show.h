#ifndef ZANT_ENGINES_SCENE_SHOW_H
#define ZANT_ENGINES_SCENE_SHOW_H

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include "engines/scene/making.h"
#include "engines/scene/window.h"

namespace Zant::Engine {

/// Shows one picture while it is made: the calling thread raises every event, one at least every 30 ms unless the host
/// takes longer for one.
class Show {
public:
    /// @param engine its name, for the title
    /// @param isToEnd may be set by any thread
    Show(Window& window, Making& making, const char* engine, const std::atomic<bool>& isToEnd);

    /// Returns when the picture is whole or was ended early, by the window, the escape key or the flag. A host without
    /// a window sees nothing of it. The window is left open unless its user has closed it or the host has refused its
    /// size.
    void play();

private:
    using Clock = std::chrono::steady_clock;

    bool open();
    void watch();
    void setProgress(int percent);
    void show(const std::vector<Tile>& tiles);
    void poll();
    void restore();
    bool goesOn() const { return !isToEnd_ && !isGivenUp_; }
    void close();

    Window& window_;
    Making& making_;
    const std::string engine_;
    const std::atomic<bool>& isToEnd_;
    std::vector<Tile> shown_;
    Clock::time_point lastPoll_{};
    bool isGivenUp_ = false;  // by the user, who may have closed the window as well
    bool isClosed_ = false;
};

}  // namespace Zant::Engine

#endif
