#ifndef ZANT_MODERN_SCENELISTENER_H
#define ZANT_MODERN_SCENELISTENER_H

#include <string>
#include <string_view>

#include "client/engine/instance.h"
#include "client/listeners/linkedlisteners.h"
#include "modern/callback.h"
#include "own/counter.h"

namespace zant::detail {

/// What a host wants to be told of; what is empty, the engine serves itself.
struct scene_callbacks {
    callback<void(std::string_view line)> text;
    callback<bool(std::string_view prompt, std::string& answer)> question;
    callback<bool(const _ZantEventWindow&)> window_size;
    callback<void(std::string_view title)> window_title;
    callback<void(const _ZantEventPixelTable&)> pixels;
    callback<void(const _ZantEventPixelRectangle&)> copied_pixels;
    callback<void(_ZantEventMousePosition&)> mouse;
    callback<void(_ZantEventKey&)> key;

    bool has_window() const { return window_size || window_title || pixels || copied_pixels || mouse || key; }
};

ZANT_BEGIN_UNDELETED

/// Serves the events of a scene's instance, and keeps the lines of text that come during a command, for its failure.
///
/// Threads: as every listener; the kept lines are guarded by a mutex of the engine's.
class scene_listener final : public Zant::BounceBackListener {
public:
    scene_callbacks callbacks;
    Zant::Counter gate{closed};  // what a command looks at first: bits, none of them while nothing is to be done

    static constexpr unsigned closed = 1;   // the scene sends nothing
    static constexpr unsigned written = 2;  // there are lines of an earlier command

    /// @return the lines since this was called last
    ZANT_COLD std::string take_lines() {
        Zant::MutexLocker lock(mutex_);
        gate.clearBits(written);
        return std::exchange(lines_, {});
    }

    /// Forgets the lines that no command has taken.
    void drop_lines() {
        if ((gate.get() & written) != 0) take_lines();
    }

    void activate(Zant::Instance* active) override {
        mutex_.init(active->library->vtables.mt);
        BounceBackListener::activate(active);
    }

    void deactivate(Zant::Instance* active) override {
        BounceBackListener::deactivate(active);
        mutex_.destroy();
    }

    void* createTextStream() override { return new stream{BounceBackListener::createTextStream(), {}, {}}; }

    void destroyTextStream(void* handle) override {
        BounceBackListener::destroyTextStream(of(handle).engine_stream);
        delete &of(handle);
    }

    void textLine(void* handle, const char* text) override {
        if (text) of(handle).line += text;
        if (!callbacks.text) BounceBackListener::textLine(of(handle).engine_stream, text);
    }

    void textNewLine(void* handle) override {
        keep(of(handle).line);
        if (callbacks.text) {
            callbacks.text(of(handle).line);
        } else {
            BounceBackListener::textNewLine(of(handle).engine_stream);
        }
        of(handle).line.clear();
    }

    void getTextLine(void* handle, const char* prompt, _ZantEventTextBufferData* buffer) override {
        if (!callbacks.question) return BounceBackListener::getTextLine(of(handle).engine_stream, prompt, buffer);
        std::string& answer = of(handle).answer;
        answer.clear();
        buffer->text = callbacks.question(prompt ? prompt : "", answer) ? answer.data() : nullptr;
    }

    int getTextFlags(void* handle) override { return BounceBackListener::getTextFlags(of(handle).engine_stream); }

    void* createWindow() override { return callbacks.has_window() ? this : BounceBackListener::createWindow(); }

    void destroyWindow(void* window) override {
        if (window != this) BounceBackListener::destroyWindow(window);
    }

    int setWindowSize(void* window, const _ZantEventWindow& size) override {
        if (window != this) return BounceBackListener::setWindowSize(window, size);
        return !callbacks.window_size || callbacks.window_size(size);
    }

    void setPixels(void* window, const _ZantEventPixelTable& pixels) override {
        if (window != this) return BounceBackListener::setPixels(window, pixels);
        if (callbacks.pixels) callbacks.pixels(pixels);
    }

    void copyPixels(void* window, const _ZantEventPixelRectangle& rectangle) override {
        if (window != this) return BounceBackListener::copyPixels(window, rectangle);
        if (callbacks.copied_pixels) callbacks.copied_pixels(rectangle);
    }

    int getWindowFlags(void* window) override {
        return window != this ? BounceBackListener::getWindowFlags(window) : 0;
    }

    void setWindowFlags(void* window, int flags) override {
        if (window != this) BounceBackListener::setWindowFlags(window, flags);
    }

    void setWindowTitle(void* window, const char* title) override {
        if (window != this) return BounceBackListener::setWindowTitle(window, title);
        if (callbacks.window_title) callbacks.window_title(title ? title : "");
    }

    void getWindowMouseRawPosition(void* window, _ZantEventMousePosition& mouse) override {
        if (window != this) return BounceBackListener::getWindowMouseRawPosition(window, mouse);
        if (callbacks.mouse) callbacks.mouse(mouse);
    }

    void getWindowMousePosition(void* window, _ZantEventMousePosition& mouse) override {
        if (window != this) return BounceBackListener::getWindowMousePosition(window, mouse);
        if (callbacks.mouse) callbacks.mouse(mouse);
    }

    void getWindowKeyEvent(void* window, _ZantEventKey& key) override {
        if (window != this) return BounceBackListener::getWindowKeyEvent(window, key);
        if (callbacks.key) callbacks.key(key);
    }

    int getMouseRawDPI(void* window) override {
        return window != this ? BounceBackListener::getMouseRawDPI(window) : 0;
    }

private:
    struct stream {
        void* engine_stream;
        std::string line;    // the current one
        std::string answer;  // the last one, which the engine reads
    };

    static stream& of(void* handle) { return *static_cast<stream*>(handle); }

    static constexpr std::size_t most_kept = 1 << 16;  // an engine may write while no command takes the lines

    void keep(const std::string& line) {
        Zant::MutexLocker lock(mutex_);
        if (lines_.size() > most_kept) return;
        if ((gate.get() & written) != 0) lines_ += '\n';
        lines_ += line;
        gate.setBits(written);
    }

    std::string lines_;
    Zant::Mutex mutex_;
};

ZANT_END_UNDELETED

}  // namespace zant::detail

#endif
