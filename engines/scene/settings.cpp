#include "engines/scene/settings.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "engines/scene/faultmenu.h"
#include "engines/scene/pixmap.h"

namespace Zant::Engine {
namespace {

/// The variables of one engine.
class Variables {
public:
    Variables(std::string prefix, const char* errorPrefix) : prefix_(std::move(prefix)), errorPrefix_(errorPrefix) {}
    ~Variables() { std::fputs(complaints_.c_str(), stderr); }

    std::string text(const char* name) const {
        const char* value = std::getenv((prefix_ + name).c_str());
        return value ? value : "";
    }

    bool enabled(const char* name) const {
        const std::string value = text(name);
        return !value.empty() && value != "0";
    }

    TextWriter::Numbers numbers(const char* name) {
        const std::string word = text(name);
        if (word == "client") return TextWriter::Numbers::AsClient;
        if (!word.empty() && word != "exact") {
            complaints_ += errorPrefix_ + prefix_ + name + " is \"" + word + "\"; known are exact, client\n";
        }
        return TextWriter::Numbers::Exact;
    }

    std::shared_ptr<const Picture> picture(const char* name) {
        return readPixmap(text(name), errorPrefix_, complaints_);
    }

    Faults faults(const char* name) { return parseFaults(text(name), errorPrefix_, complaints_); }

private:
    std::string prefix_;
    const char* errorPrefix_;
    std::string complaints_;
};

}  // namespace

Settings readSettings(const char* prefix, const char* errorPrefix) {
    Variables variables(prefix, errorPrefix);
    Settings settings;
    settings.doubleVertexMaps = variables.enabled("DOUBLE_VERTEX_MAPS");
    settings.transcript = variables.text("TRANSCRIPT");
    settings.numbers = variables.numbers("NUMBERS");
    settings.symbols = variables.enabled("SYMBOLS");
    settings.summary = variables.text("SUMMARY");
    settings.watch = variables.text("WATCH");
    settings.picture = variables.picture("PICTURE");
    settings.faults = variables.faults("FAULT");
    return settings;
}

}  // namespace Zant::Engine
