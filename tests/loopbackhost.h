#ifndef ZANT_TESTS_LOOPBACKHOST_H
#define ZANT_TESTS_LOOPBACKHOST_H

#include <atomic>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <list>
#include <mutex>
#include <sstream>
#include <string>
#include <utility>

#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/listeners/linkedlisteners.h"
#include "testkit/environment.h"

namespace Zant::Tests {

/// Sets environment variables for the life of the object.
class Environment {
public:
    Environment(std::initializer_list<std::pair<const char*, std::string>> variables) {
        for (const auto& [name, value] : variables)
            set_.emplace_back(name, value);
    }

private:
    std::list<Testkit::ScopedVariable> set_;
};

/// A file name of its own for one test; the file goes with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& content = {}) {
        if (!content.empty()) std::ofstream(name_, std::ios::binary) << content;
    }

    const std::string& name() const { return name_; }
    std::string content() const {
        std::ostringstream text;
        text << std::ifstream(name_).rdbuf();
        return text.str();
    }

private:
    const Testkit::TemporaryFolder folder_;
    const std::string name_ = folder_.name() + "/file";
};

/// Collects the text of an instance, and counts its streams.
class TextCollector : public EventListener {
public:
    void* createTextStream() override {
        ++opened;
        return this;
    }
    void destroyTextStream(void*) override { ++closed; }
    void textLine(void*, const char* text) override {
        if (const auto action = taken(atText)) action();
        const std::lock_guard lock(mutex_);
        text_ += text;
    }
    void textNewLine(void*) override {
        const std::lock_guard lock(mutex_);
        text_ += '\n';
    }

    /// What has arrived since the last call.
    std::string take() { return taken(text_); }

    std::atomic<int> opened{0};
    std::atomic<int> closed{0};
    std::function<void()> atText;  ///< called within the next line of text, once

private:
    template <class Thing>
    Thing taken(Thing& from) {
        const std::lock_guard lock(mutex_);
        return std::exchange(from, {});
    }

    std::mutex mutex_;
    std::string text_;
};

/// A host with the loopback engine loaded and one instance, whose text it collects.
class Host {
public:
    TextCollector text;
    Library library{ZANT_LOOPBACK_DIR};
    Instance* instance = library.createInstanceWithListner(&text);

    int parse(const std::string& commands, const char* source = nullptr) {
        return instance->parse(commands.c_str(), source, ParseText);
    }
};

}  // namespace Zant::Tests

#endif
