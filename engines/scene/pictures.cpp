#include "engines/scene/pictures.h"

#include <algorithm>
#include <cstdio>
#include <system_error>
#include <utility>

#include "engines/scene/making.h"
#include "engines/scene/pixels.h"
#include "engines/scene/show.h"

namespace Zant::Engine {
namespace {

Outcome busy() {
    return {Busy, "a picture is in the making: it has to end first"};
}

// What is not there for the work is a failure of the command.
template <class Work>
Outcome attempt(const Work& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return {OutOfMemory, "there is no memory for the picture"};
    } catch (const std::system_error&) {
        return {OutOfMemory, "there is no thread for the picture"};
    }
}

}  // namespace

Outcome Pictures::check(int width, int height) const {
    if (!Picture::isSize(width, height)) {
        return {BadValue, "a picture cannot have the size " + std::to_string(width) + " x " + std::to_string(height)};
    }
    const Lock lock(mutex_);
    return turn_ && (isInside() || !isPreviewing_) ? busy() : Outcome{};
}

Outcome Pictures::render(std::shared_ptr<const Model> model, Lines& lines) {
    endPreview();
    return take([&](const Turn& turn) { return play(turn, std::move(model), lines); });
}

Outcome Pictures::start(std::shared_ptr<const Model> model) {
    return begin(std::move(model), false);
}

Outcome Pictures::restart(std::shared_ptr<const Model> model) {
    return begin(std::move(model), true);
}

void Pictures::stop() {
    Lock lock(mutex_);
    askEnd(lock);
    wait(lock);
}

Outcome Pictures::openWindow(int width, int height) {
    return take([=](const Turn& turn) {
        if (window_.open()) window_.resize(width, height);
        const Lock lock(mutex_);
        windowStays_ = !turn.isToEnd;
        return Outcome{};
    });
}

void Pictures::closeWindow() {
    {
        Lock lock(mutex_);
        windowStays_ = false;
        askEnd(lock);
        wait(lock);
    }
    take([](const Turn&) { return Outcome{}; });  // what does not stay is closed at the end of a turn
}

Outcome Pictures::show(const Picture& picture, const std::string& title) {
    return take([&](const Turn& turn) {
        if (!window_.open() || !window_.resize(picture.width, picture.height)) return Outcome{};
        window_.setTitle(title);
        window_.show(picture, {0, 0, picture.width, picture.height});
        window_.present(picture);
        const Lock lock(mutex_);
        windowStays_ = !turn.isToEnd;
        return Outcome{};
    });
}

std::shared_ptr<const Picture> Pictures::rendered() const {
    const Lock lock(mutex_);
    return rendered_;
}

void Pictures::freeRendered() {
    std::shared_ptr<const Picture> freed;  // outside of the lock
    const Lock lock(mutex_);
    freed.swap(rendered_);
}

void Pictures::end() {
    Lock lock(mutex_);
    isOver_ = true;
    askEnd(lock);
    wait(lock);
    std::thread last = std::move(thread_);
    const bool isLeft = isPreviewing_;  // this is an event of it
    lock.unlock();
    if (isLeft)
        left_.add(std::move(last));
    else if (last.joinable())
        last.join();
}

Outcome Pictures::begin(const Lock&, TurnPointer& turn) {
    if (isOver_) return {DeadContext, "the instance has ended"};
    if (turn_) return busy();
    turn = turn_ = std::make_shared<Turn>();
    return {};
}

Outcome Pictures::begin(TurnPointer& turn) {
    const Lock lock(mutex_);
    return isPreviewing_ ? busy() : begin(lock, turn);
}

void Pictures::finish() {
    closeUnlessItStays();
    const Lock lock(mutex_);
    turn_ = nullptr;
    ended_.notify_all();
}

// Does work that raises events, in a turn of its own.
template <class Work>
Outcome Pictures::take(const Work& work) {
    TurnPointer turn;
    Outcome outcome = begin(turn);
    if (outcome.code != Fine) return outcome;
    bool isDone = false;
    Outcome unable = attempt([&] {
        events_->perform([&] {
            turn->player = std::this_thread::get_id();
            outcome = attempt([&] { return work(*turn); });
            finish();
            isDone = true;
        });
        return Outcome{};
    });
    if (isDone) return outcome;
    finish();
    return unable;
}

Outcome Pictures::play(const Turn& turn, std::shared_ptr<const Model> model, Lines& lines) {
    Making making(Painter(profile_, std::move(model), given_), threads(), profile_.errorPrefix);
    Show(window_, making, profile_.name, turn.isToEnd).play();
    if (making.outcome().code != Fine) return making.outcome();
    if (!making.isWhole()) {
        lines.add("Warning: the picture ended early, with " + std::to_string(making.progress()) + " % of it made");
    }
    const std::shared_ptr<const Picture> before = rendered();  // freed outside of the lock
    const Lock lock(mutex_);
    rendered_ = making.picture();
    return {};
}

void Pictures::closeUnlessItStays() {
    {
        const Lock lock(mutex_);
        windowStays_ = windowStays_ && window_.isOpen();
        if (windowStays_) return;
    }
    window_.close();
}

// From within an event of the preview it goes on: what is asked for is refused.
void Pictures::endPreview() {
    Lock lock(mutex_);
    if (!isPreviewing_ || isInside()) return;
    askEnd(lock);
    wait(lock);
}

Outcome Pictures::begin(std::shared_ptr<const Model> model, bool again) {
    Lock lock(mutex_);
    if (isOver_) return {DeadContext, "the instance has ended"};
    if (turn_ && !isPreviewing_) return busy();
    if (isPreviewing_ && !again) return {};
    if (isPreviewing_) askEnd(lock);
    next_ = std::move(model);
    if (isPreviewing_) return {};
    if (thread_.joinable()) thread_.join();  // it has done its work
    Outcome outcome = attempt([&] {
        thread_ = std::thread([self = shared_from_this()] { self->preview(); });
        isPreviewing_ = true;
        return Outcome{};
    });
    if (!isPreviewing_) next_ = nullptr;
    return outcome;
}

// What goes wrong here has no command that could be answered.
void Pictures::preview() {
    Lines unsaid;
    Lock lock(mutex_);
    while (next_) {
        const std::shared_ptr<const Model> model = std::exchange(next_, nullptr);
        TurnPointer turn;
        if (begin(lock, turn).code != Fine) break;
        lock.unlock();
        const Outcome outcome = attempt([&] { return play(*turn, model, unsaid); });
        if (outcome.code != Fine) std::fprintf(stderr, "%s%s\n", profile_.errorPrefix, outcome.message.c_str());
        finish();
        lock.lock();
    }
    isPreviewing_ = false;
    ended_.notify_all();
}

void Pictures::askEnd(const Lock&) {
    next_ = nullptr;
    if (turn_) turn_->isToEnd = true;
}

// For the end of the picture that was in the making, unless this is an event of it.
void Pictures::wait(Lock& lock) {
    if (isInside()) return;
    ended_.wait(lock, [this, turn = turn_] { return !isPreviewing_ && (!turn || turn_ != turn); });
}

int Pictures::threads() const {
    const int asked = threads_;
    return asked > 0 ? asked : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

}  // namespace Zant::Engine
