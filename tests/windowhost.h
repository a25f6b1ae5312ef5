#ifndef ZANT_TESTS_WINDOWHOST_H
#define ZANT_TESTS_WINDOWHOST_H

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "engines/records/eventrecords.h"
#include "loopbackhost.h"

namespace Zant::Tests {

/// A listener with a screen: it notes every operation, on which thread it came and after what time without one, keeps
/// the pixels, and answers what a test sets.
class Screen : public InstanceLinkedListener {
public:
    using Clock = std::chrono::steady_clock;

    // What the user of the screen does.
    std::atomic<bool> hasWindows{true};
    std::atomic<bool> takesSizes{true};
    std::atomic<int> flags{0};
    std::atomic<int> key{0};
    std::deque<std::string> input;

    /// Runs within the operation, once.
    void within(const std::string& operation, std::function<void()> work) {
        const std::lock_guard lock(mutex_);
        within_[operation] = std::move(work);
    }

    /// The operations so far, in their order.
    std::vector<std::string> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    /// Their names.
    std::set<std::string> operations() const {
        std::set<std::string> names;
        for (const std::string& call : calls())
            names.insert(call.substr(0, call.find(' ')));
        return names;
    }
    /// What is done to windows, without pixels, questions, and the progress between 0 and 100.
    std::vector<std::string> steps() const {
        std::vector<std::string> steps;
        for (const std::string& call : calls()) {
            const std::string title = "setWindowTitle ";
            const bool isProgress = call.rfind(title, 0) == 0 && call != title + "0" && call != title + "100";
            const bool isOfWindow = call.find("Window") != std::string::npos || call == "copyPixels";
            if (isOfWindow && !isProgress && call.rfind("get", 0) != 0) steps.push_back(call);
        }
        return steps;
    }
    size_t count(const std::string& operation) const {
        const std::vector<std::string> all = calls();
        return static_cast<size_t>(std::count(all.begin(), all.end(), operation));
    }
    bool waitFor(const std::string& operation, size_t times = 1) const {
        for (const auto end = Clock::now() + std::chrono::seconds(20); Clock::now() < end;) {
            if (count(operation) >= times) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }
    /// As it was at first.
    void renew() {
        const std::lock_guard lock(mutex_);
        calls_.clear();
        text.clear();
        takesSizes = true;
        flags = 0;
    }
    void forgetPixels() { std::fill(timesGiven.begin(), timesGiven.end(), 0); }

    std::string text;
    std::set<std::thread::id> threads;
    Clock::duration longestGap{};  ///< between two operations on a window
    Engine::WindowSize size{};
    Engine::PixelRectangle rectangle{};
    std::vector<float> rgba;      ///< of the last picture
    std::vector<int> timesGiven;  ///< how often each pixel came

    void* createTextStream() override { return note("createTextStream"), this; }
    void destroyTextStream(void*) override { note("destroyTextStream"); }
    void textLine(void*, const char* line) override {
        note("textLine");
        text += line;
    }
    void textNewLine(void*) override {
        note("textNewLine");
        text += '\n';
    }
    void getTextLine(void*, const char*, _ZantEventTextBufferData* answer) override {
        note("getTextLine");
        if (input.empty()) {
            answer->text = nullptr;
            return;
        }
        const std::string line = input.front();
        input.pop_front();
        line.copy(answer->buffer, answer->size);
        answer->buffer[line.size()] = 0;
    }
    int getTextFlags(void*) override { return note("getTextFlags"), 0; }
    void allocTextBuffer(_ZantEventTextBufferData* data) override {
        note("allocTextBuffer");
        InstanceLinkedListener::allocTextBuffer(data);
    }
    void freeTextBuffer(_ZantEventTextBufferData* data) override {
        note("freeTextBuffer");
        InstanceLinkedListener::freeTextBuffer(data);
    }
    void* createWindow() override {
        note("createWindow");
        return hasWindows ? this : nullptr;
    }
    void destroyWindow(void*) override { note("destroyWindow"); }
    int setWindowSize(void*, const _ZantEventWindow& record) override {
        note("setWindowSize");
        if (const Engine::WindowSize* given = Engine::windowSize(instance, record)) size = *given;
        const size_t pixels = static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
        rgba.assign(4 * pixels, -1);
        timesGiven.assign(pixels, 0);
        rest("setWindowSize");
        return takesSizes;
    }
    void setPixels(void*, const _ZantEventPixelTable& record) override {
        note("setPixels");
        if (const Engine::PixelTable* table = Engine::pixelTable(instance, record)) keep(*table);
        rest("setPixels");
    }
    void copyPixels(void*, const _ZantEventPixelRectangle& record) override {
        note("copyPixels");
        if (const Engine::PixelRectangle* given = Engine::pixelRectangle(instance, record)) rectangle = *given;
    }
    int getWindowFlags(void*) override { return note("getWindowFlags"), flags.load(); }
    void setWindowFlags(void*, int given) override { note("setWindowFlags " + std::to_string(given)); }
    void setWindowTitle(void*, const char* title) override {
        const std::string words = title;  // "Zant loopback engine: 45 %"
        const size_t number = words.find(": ") + 2;
        note("setWindowTitle " + words.substr(number, words.find(' ', number) - number));
    }
    void getWindowMouseRawPosition(void* window, _ZantEventMousePosition& position) override {
        note("getWindowMouseRawPosition");
        InstanceLinkedListener::getWindowMouseRawPosition(window, position);
    }
    void getWindowMousePosition(void*, _ZantEventMousePosition& position) override {
        note("getWindowMousePosition");
        position.position[0] = 3;
    }
    void getWindowKeyEvent(void*, _ZantEventKey& event) override {
        note("getWindowKeyEvent");
        if (const int code = key.exchange(0)) Engine::setKeyCode(event, code);
    }
    int getMouseRawDPI(void*) override { return note("getMouseRawDPI"), 0; }

private:
    void note(const std::string& call) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            calls_.push_back(call);
            threads.insert(std::this_thread::get_id());
            if (last_ != Clock::time_point()) longestGap = std::max(longestGap, Clock::now() - last_);
            const auto found = within_.find(call.substr(0, call.find(' ')));
            if (found != within_.end()) {
                work = std::move(found->second);
                within_.erase(found);
            }
        }
        if (work) work();
        rest(call);
    }
    void rest(const std::string& call) {
        const std::lock_guard lock(mutex_);
        last_ = call == "destroyWindow" ? Clock::time_point() : Clock::now();
    }
    void keep(const Engine::PixelTable& table) {
        for (int y = 0; y < table.height; ++y) {
            for (int x = 0; x < table.width; ++x) {
                const auto place = static_cast<size_t>((table.top + y) * table.pictureWidth + table.left + x);
                std::copy_n(table.pixel(x, y), 4, &rgba.at(4 * place));
                ++timesGiven.at(place);
            }
        }
    }

    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
    std::map<std::string, std::function<void()>> within_;
    Clock::time_point last_{};
};

/// An engine with one instance that has a screen.
class WindowHost {
public:
    explicit WindowHost(const char* engine) : library(engine) { instance = library.createInstanceWithListner(&screen); }

    int parse(const std::string& commands) { return instance->parse(commands.c_str(), "test", ParseText); }

    Screen screen;
    Library library;
    Instance* instance;
};

}  // namespace Zant::Tests

#endif
