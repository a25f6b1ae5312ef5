#include "engines/loopback/settings.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "engines/loopback/faultmenu.h"

namespace Zant::Loopback {
namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool enabled(const char* name) {
    const std::string value = environment(name);
    return !value.empty() && value != "0";
}

Language::TextWriter::Numbers numbersOf(const std::string& word, std::string& complaints) {
    if (word == "client") return Language::TextWriter::Numbers::AsClient;
    if (!word.empty() && word != "exact") {
        complaints += std::string(errorPrefix) + "ZANT_LOOPBACK_NUMBERS is \"" + word + "\"; known are exact, client\n";
    }
    return Language::TextWriter::Numbers::Exact;
}

}  // namespace

Engine::Settings readSettings() {
    Engine::Settings settings;
    std::string complaints;
    settings.doubleVertexMaps = enabled("ZANT_LOOPBACK_DOUBLE_VERTEX_MAPS");
    settings.transcript = environment("ZANT_LOOPBACK_TRANSCRIPT");
    settings.numbers = numbersOf(environment("ZANT_LOOPBACK_NUMBERS"), complaints);
    settings.symbols = enabled("ZANT_LOOPBACK_SYMBOLS");
    settings.summary = environment("ZANT_LOOPBACK_SUMMARY");
    settings.watch = environment("ZANT_LOOPBACK_WATCH");
    settings.faults = parseFaults(environment(faultVariable), complaints);
    std::fputs(complaints.c_str(), stderr);
    return settings;
}

}  // namespace Zant::Loopback
