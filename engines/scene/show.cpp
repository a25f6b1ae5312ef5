#include "engines/scene/show.h"

#include "engines/records/eventrecords.h"

namespace Zant::Engine {
namespace {

// Well below the 30 ms that are promised.
constexpr std::chrono::milliseconds pause{10};

}  // namespace

Show::Show(Window& window, Making& making, const char* engine, const std::atomic<bool>& isToEnd)
    : window_(window), making_(making), engine_(engine), isToEnd_(isToEnd) {}

void Show::play() {
    if (open()) watch();
    making_.stop();
    close();
}

// False when the host has refused the size.
bool Show::open() {
    const Picture& picture = *making_.picture();
    if (!window_.open()) return true;
    if (!window_.resize(picture.width, picture.height)) return false;
    window_.setFlags(PictureIsMade);
    window_.askMouseResolution();
    setProgress(0);
    return true;
}

void Show::watch() {
    while (goesOn() && !making_.hasEnded()) {
        setProgress(making_.progress());
        show(making_.take(pause));
        poll();
    }
}

void Show::setProgress(int percent) {
    window_.setTitle(engine_ + ": " + std::to_string(percent) + " %");
}

void Show::show(const std::vector<Tile>& tiles) {
    if (!window_.isOpen()) return;
    for (const Tile& tile : tiles) {
        if (!goesOn()) return;
        window_.show(*making_.picture(), tile);
        shown_.push_back(tile);
        poll();
    }
}

void Show::poll() {
    if (!window_.isOpen() || Clock::now() - lastPoll_ < pause) return;
    const int flags = window_.flags();
    window_.askMouse();
    isClosed_ = (flags & WindowIsClosed) != 0;
    isGivenUp_ = window_.key() == KeyEscape || isClosed_;
    lastPoll_ = Clock::now();
    if (flags & WindowIsLost) restore();
}

void Show::restore() {
    for (const Tile& tile : shown_) {
        if (goesOn()) window_.show(*making_.picture(), tile);
    }
}

void Show::close() {
    if (goesOn() && making_.isWhole()) {
        setProgress(100);
        window_.present(*making_.picture());
    }
    window_.setFlags(0);
    if (isClosed_) window_.close();
}

}  // namespace Zant::Engine
