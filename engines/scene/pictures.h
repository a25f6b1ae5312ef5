#ifndef ZANT_ENGINES_SCENE_PICTURES_H
#define ZANT_ENGINES_SCENE_PICTURES_H

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "engines/scene/codes.h"
#include "engines/scene/events.h"
#include "engines/scene/leftthreads.h"
#include "engines/scene/profile.h"
#include "engines/scene/textoutput.h"
#include "engines/scene/window.h"

namespace Zant::Engine {

/// The pictures of one instance: the one in the making, the last one that was made, and the window that stays open.
///
/// One picture is made at a time: while it is, another one is refused with Busy. Any thread may call any operation,
/// also from within an event of the picture; no lock is held during an event. What raises events is to be called
/// without a lock of the engine.
class Pictures : public std::enable_shared_from_this<Pictures> {
public:
    /// @param given stands for every picture of an engine that traces none; may be null
    /// @param left outlives the pictures
    Pictures(std::shared_ptr<Events> events, const Profile& profile, std::shared_ptr<const Picture> given,
             LeftThreads& left)
        : events_(std::move(events)), profile_(profile), given_(std::move(given)), left_(left), window_(*events_) {}

    /// Whether a picture of this size can be begun by the calling thread now.
    Outcome check(int width, int height) const;

    /// Makes a picture, whose size has been checked, and returns at its end. A preview ends before it. A picture that
    /// was ended early is no failure.
    /// @param lines receives a warning when it is not whole
    Outcome render(std::shared_ptr<const Model> model, Lines& lines);
    /// Begins a preview: the same on a thread of the engine's own. While there is one, it goes on.
    Outcome start(std::shared_ptr<const Model> model);
    /// The same, with the preview that there is ended early and not waited for.
    Outcome restart(std::shared_ptr<const Model> model);
    /// Ends the picture in the making early, preview or not, and waits for its last event. From within an event of that
    /// picture it only asks for the end.
    void stop();

    /// Opens the window that stays, unless it is open, and gives it a size.
    Outcome openWindow(int width, int height);
    /// Closes it; a picture that it shows ends early, as with stop().
    void closeWindow();
    /// Shows a picture at once, in the window that stays, which is opened.
    Outcome show(const Picture& picture, const std::string& title);

    /// The last picture, whole or not; null when there is none.
    std::shared_ptr<const Picture> rendered() const;
    void freeRendered();

    /// How many threads make the next picture; 0 for one on each processor, as it is at first.
    void setThreads(int threads) { threads_ = threads; }
    /// The same, counted.
    int threads() const;

    /// The instance ends: as stop(), and no picture is begun any more.
    void end();

private:
    // The right to raise events for pictures, and what has come of it.
    struct Turn {
        std::atomic<std::thread::id> player{std::this_thread::get_id()};
        std::atomic<bool> isToEnd{false};
    };
    using TurnPointer = std::shared_ptr<Turn>;
    using Lock = std::unique_lock<std::mutex>;

    bool isInside() const { return turn_ && turn_->player.load() == std::this_thread::get_id(); }
    Outcome begin(const Lock& lock, TurnPointer& turn);
    Outcome begin(TurnPointer& turn);
    void finish();
    template <class Work>
    Outcome take(const Work& work);
    Outcome play(const Turn& turn, std::shared_ptr<const Model> model, Lines& lines);
    void closeUnlessItStays();
    void endPreview();
    Outcome begin(std::shared_ptr<const Model> model, bool again);
    void preview();
    void askEnd(const Lock& lock);
    void wait(Lock& lock);

    const std::shared_ptr<Events> events_;
    const Profile& profile_;
    const std::shared_ptr<const Picture> given_;
    LeftThreads& left_;
    std::atomic<int> threads_{0};
    Window window_;  // of whoever has the turn

    mutable std::mutex mutex_;  // guards all below
    std::condition_variable ended_;
    TurnPointer turn_;
    std::shared_ptr<const Model> next_;  // for the preview
    bool isPreviewing_ = false;
    bool windowStays_ = false;
    bool isOver_ = false;
    std::thread thread_;  // of the preview, or of the one before
    std::shared_ptr<const Picture> rendered_;
};

}  // namespace Zant::Engine

#endif
