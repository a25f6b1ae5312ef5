// Every typed command function is called and compared with the catalogue as expand.py spells it out.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <map>
#include <sstream>

#include "client/protos/forms.h"
#include "tests/vocabulary/row.h"

namespace {

using namespace Vocabulary;
using Words = std::vector<std::string>;

Words split(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

/// One place of a row's sequence: a keyword, or the letter of an argument and its parameter.
struct Place {
    int number = 0;  // of a keyword; 0 for an argument
    std::string word = {};
    size_t parameter = 0;
};

std::vector<Place> placesOf(const Row& row) {
    std::vector<Place> places;
    size_t parameter = 0;
    for (const std::string& part : split(row.sequence)) {
        const size_t colon = part.find(':');
        if (colon != std::string::npos) {
            places.push_back({std::stoi(part), part.substr(colon + 1), 0});
        } else {
            places.push_back({0, row.wide && part == "s" ? "W" : part, parameter++});
        }
    }
    return places;
}

/// What a row's function has to do when it is called with the arguments.
std::vector<Event> expectedEvents(const Row& row, const Arguments& arguments) {
    std::vector<Event> events, registrations;
    for (const Place& place : placesOf(row)) {
        if (place.number != 0) {
            events.push_back({"addEnum", static_cast<double>(place.number), place.word, nullptr});
        } else {
            events.push_back(arguments.event(place.word, place.parameter));
        }
        if (place.word == "N") registrations.push_back(arguments.registration(place.parameter));
    }
    events.push_back({"parse"});
    events.insert(events.end(), registrations.begin(), registrations.end());
    return events;
}

TEST(Vocabulary, EveryFunctionSendsItsFormAndRegistersAfterParse) {
    Recorder recorder;
    const Arguments arguments{recorder.events};
    Zant::CommandBuffer* protos = &recorder;
    size_t checked = 0;
    for (const Row& row : rows) {
        recorder.events.clear();
        row.call.invoke(row.call.function, &protos, arguments);
        EXPECT_EQ(recorder.events, expectedEvents(row, arguments)) << row.name;
        ++checked;
    }
    EXPECT_EQ(checked, 2165U);
}

TEST(Vocabulary, NumbersOfEveryKindReachTheBufferAsDoubles) {
    Recorder recorder;
    void* word = &static_cast<Zant::CommandBuffer&>(recorder);
    anim1_renderFrame(&word, -3);
    pm1_kdBalance(&word, (uint64_t{1} << 53) + 1);
    pm1_kdBalance(&word, UINT64_MAX);
    pm1_kdOptimize(&word, true);
    std::vector<double> numbers;
    for (const Event& event : recorder.events) {
        if (event.operation == "addDouble") numbers.push_back(event.number);
    }
    EXPECT_EQ(numbers, (std::vector<double>{-3.0, 9007199254740992.0, 18446744073709551616.0, 1.0}));
}

// ---- What must not change unseen ----
// The tests above follow the catalogue and the tables wherever they go. A committed checksum for each command word and
// each table says that they have not moved. After a deliberate change "scripts/pin_vocabulary" writes them anew.

uint64_t checksum(const std::string& text) {  // FNV-1a
    uint64_t sum = 0xcbf29ce484222325;
    for (const char c : text)
        sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return sum;
}

/// What stands for each command word and each table, in their order.
std::vector<std::pair<std::string, std::string>> vocabulary() {
    std::vector<std::pair<std::string, std::string>> parts;
    for (const Row& row : rows) {
        const std::string part = std::string("command ") + row.command;
        if (parts.empty() || parts.back().first != part) parts.emplace_back(part, "");
        parts.back().second +=
            std::string(row.group) + " " + row.name + (row.wide ? " wide: " : ": ") + row.sequence + "\n";
    }
    for (const Zant::KeywordTable& table : Zant::keywordTables()) {
        std::string text;
        for (int slot = 0; slot < table.slots; ++slot)
            text += (table.words[slot] ? table.words[slot] : "(none)") + std::string("\n");
        parts.emplace_back(std::string("table ") + table.name, text);
    }
    return parts;
}

TEST(Vocabulary, IsPinned) {
    const char* const file = ZANT_SOURCE_DIR "/tests/data/vocabulary_checksums.txt";
    std::vector<std::string> lines;
    for (const auto& [part, text] : vocabulary()) {
        std::ostringstream line;
        line << std::hex << std::setw(16) << std::setfill('0') << checksum(text) << " " << part;
        lines.push_back(line.str());
    }
    if (std::getenv("ZANT_PIN_VOCABULARY")) {
        std::ofstream out(file);
        std::copy(lines.begin(), lines.end(), std::ostream_iterator<std::string>(out, "\n"));
    }
    std::ifstream in(file);
    std::vector<std::string> pinned;
    for (std::string line; std::getline(in, line);)
        pinned.push_back(line);
    EXPECT_EQ(pinned.size(), 98U + 76U);
    EXPECT_EQ(lines, pinned);
}

// ---- The forms ----

std::string sequenceOf(const Zant::Form& form) {
    static const char* const letters[] = {"",  "d", "i", "b", "u", "s",  "V",  "A",  "C",
                                          "S", "N", "B", "M", "X", "Ld", "LV", "LC", "LS"};
    const Zant::FormRange<Zant::KeywordTable> tables = Zant::keywordTables();
    std::string text = std::to_string(form.command) + ":" + tables[0].words[form.command - 1];
    for (int index = 0; index < form.tokenCount; ++index) {
        const Zant::FormToken& token = form.tokens[index];
        text += " ";
        if (token.kind == Zant::ArgumentKind::Keyword) {
            text += std::to_string(token.number) + ":" + tables[token.table].words[token.number - 1];
        } else {
            text += letters[static_cast<size_t>(token.kind)];
        }
    }
    return text;
}

/// A row's sequence without the numbers.
std::string notationOf(const Row& row) {
    std::string text;
    for (const std::string& part : split(row.sequence))
        text += (text.empty() ? "" : " ") + part.substr(part.find(':') + 1);
    return text;
}

size_t countKeywords(const Row& row) {
    const std::string sequence = row.sequence;
    return static_cast<size_t>(std::count(sequence.begin(), sequence.end(), ':'));
}

TEST(Forms, AreThoseOfTheFunctions) {
    const Zant::FormRange<Zant::Form> forms = Zant::allForms();
    size_t index = 0;
    for (const Row& row : rows) {
        if (row.wide) {
            EXPECT_STREQ(forms[index - 1].wideFunction, row.name);
            continue;
        }
        ASSERT_LT(index, forms.size());
        const Zant::Form& form = forms[index++];
        EXPECT_STREQ(form.function, row.name);
        EXPECT_EQ(form.notation, notationOf(row));
        EXPECT_EQ(sequenceOf(form), row.sequence);
        const Words words = split(row.sequence);
        EXPECT_EQ(form.wideFunction != nullptr, std::count(words.begin(), words.end(), "s") > 0) << row.name;
        EXPECT_EQ(form.parameterCount, placesOf(row).size() - countKeywords(row)) << row.name;
    }
    EXPECT_EQ(index, forms.size());
}

TEST(Forms, OfACommandStandTogether) {
    size_t sum = 0;
    for (int command = 1; command <= Zant::keywordTables()[0].slots; ++command) {
        for (const Zant::Form& form : Zant::formsOf(command)) {
            EXPECT_EQ(form.command, command);
            ++sum;
        }
    }
    EXPECT_EQ(sum, Zant::allForms().size());
    for (const int command : {-1, 0, 6, 158, 159, 100000})
        EXPECT_EQ(Zant::formsOf(command).size(), 0U) << command;
}

TEST(Forms, OfACommandBelongToItsGroup) {
    std::map<std::string, size_t> functions;
    for (const Zant::Form& form : Zant::allForms())
        functions[Zant::groupOf(form.command)] += form.wideFunction ? 2 : 1;
    const std::map<std::string, size_t> promised = {
        {"geometry", 353}, {"looks", 381}, {"lights", 378}, {"rendering", 560}, {"files", 493}};
    EXPECT_EQ(functions, promised);
    for (const int command : {-1, 0, 6, 158, 159, 100000})
        EXPECT_EQ(Zant::groupOf(command), nullptr) << command;
}

}  // namespace
