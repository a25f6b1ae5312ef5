#include "engines/scene/faultmenu.h"

#include <cstdlib>

namespace Zant::Engine {
namespace {

struct Switch {
    const char* word;
    bool Faults::*member;
};
const Switch switches[] = {
    {"init-refused", &Faults::initRefused},
    {"version-0", &Faults::versionZero},
    {"null-instance", &Faults::nullInstance},
    {"foreign-event", &Faults::foreignEvent},
    {"events-at-creation", &Faults::eventsAtCreation},
    {"events-at-destruction", &Faults::eventsAtDestruction},
    {"lookup-nothing", &Faults::lookupNothing},
    {"wrong-type", &Faults::wrongType},
    {"bitmap-without-memory", &Faults::bitmapWithoutMemory},
};

struct Amount {
    const char* word;
    long Faults::*member;
};
const Amount amounts[] = {
    {"fail-command", &Faults::failCommand},
    {"slow-command", &Faults::slowCommand},
};

bool setSwitch(Faults& faults, const std::string& entry) {
    for (const Switch& known : switches) {
        if (entry == known.word) return faults.*known.member = true;
    }
    return false;
}

bool setAmount(Faults& faults, const std::string& entry) {
    const size_t equals = entry.find('=');
    if (equals == std::string::npos || equals + 1 == entry.size()) return false;
    const std::string word = entry.substr(0, equals);
    char* end = nullptr;
    const long value = std::strtol(entry.c_str() + equals + 1, &end, 10);
    if (*end != 0 || value <= 0) return false;
    for (const Amount& known : amounts) {
        if (word != known.word) continue;
        faults.*known.member = value;
        return true;
    }
    return false;
}

std::string menu() {
    std::string text;
    for (const Switch& known : switches)
        text += (text.empty() ? "" : ", ") + std::string(known.word);
    for (const Amount& known : amounts)
        text += ", " + std::string(known.word) + "=NUMBER";
    return text;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace

Faults parseFaults(const std::string& list, const char* errorPrefix, std::string& complaints) {
    Faults faults;
    for (size_t begin = 0; begin <= list.size();) {
        const size_t end = list.find(',', begin);
        const std::string entry = trimmed(list.substr(begin, end - begin));
        if (!entry.empty() && !setSwitch(faults, entry) && !setAmount(faults, entry)) {
            complaints += errorPrefix + ("unknown fault \"" + entry + "\"; known are " + menu() + "\n");
        }
        if (end == std::string::npos) break;
        begin = end + 1;
    }
    return faults;
}

}  // namespace Zant::Engine
