#include "tests/vocabulary/expected.h"

#include <sstream>

namespace Vocabulary {

std::vector<Place> placesOf(const Row& row) {
    std::vector<Place> places;
    size_t parameter = 0;
    std::istringstream sequence(row.sequence);
    for (std::string part; sequence >> part;) {
        const size_t colon = part.find(':');
        if (colon != std::string::npos) {
            places.push_back({std::stoi(part), part.substr(colon + 1), 0});
        } else {
            places.push_back({0, row.wide && part == "s" ? "W" : part, parameter++});
        }
    }
    return places;
}

std::vector<Event> Expected::events() const {
    std::vector<Event> events, registrations;
    for (const Place& place : places_) {
        if (place.number != 0) {
            events.push_back({"addEnum", static_cast<double>(place.number), place.word, nullptr});
        } else {
            events.push_back(arguments_.event(place.word, place.parameter));
        }
        if (place.word == "N") registrations.push_back(arguments_.registration(place.parameter));
    }
    events.push_back({"parse"});
    events.insert(events.end(), registrations.begin(), registrations.end());
    return events;
}

std::string Expected::text(bool quick) const {
    std::string text;
    for (const Place& place : places_) {
        if (!text.empty()) text += &place == &places_[1] && !quick ? " " : ",";
        if (place.number == 0) {
            text += arguments_.text(place.word, place.parameter);
        } else {
            text += quick ? "[" + std::to_string(place.number) + "]" : place.word;
        }
    }
    return text + ";";
}

HandmadeBlock Expected::block() const {
    HandmadeBlock block;
    for (const Place& place : places_) {
        if (place.number == 0) {
            arguments_.write(block, place.word, place.parameter);
        } else {
            block.word(static_cast<uint64_t>(place.number));
        }
    }
    return block;
}

void call(const Row& row, Zant::CommandBuffer& buffer, const Arguments& arguments) {
    Zant::CommandBuffer* word = &buffer;
    row.call.invoke(row.call.function, &word, arguments);
}

}  // namespace Vocabulary
