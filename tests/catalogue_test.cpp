// The generator says what is wrong with a catalogue, and where.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "client/protos/generator/vocabulary.h"

namespace {

using namespace Generator;

/// The names and texts of the files of one catalogue.
using Files = std::vector<std::pair<std::string, std::string>>;

/// @return the message of the fault, or "fine"
std::string check(const Files& files) {
    try {
        Catalogue catalogue;
        for (const auto& [name, text] : files) {
            std::istringstream in(text);
            readCatalogue(name, in, catalogue);
        }
        checkCatalogue(catalogue);
        return "fine";
    } catch (const Fault& fault) {
        return fault.what();
    }
}

/// Reserves every table but the first one, and the given one.
std::string reserveAllBut(const std::string& used) {
    std::string text;
    for (const Zant::KeywordTable& table : Zant::keywordTables()) {
        if (table.name != used && std::string(table.name) != "cmd_strings")
            text += "reserved " + std::string(table.name) + "\n";
    }
    return text;
}

/// A small catalogue around the lines of one command, `lopt` with lightOptions_strings, that start in line 3.
Files around(const std::string& lines, const std::string& counts = "3") {
    return {{"shared", "total " + counts + "\ntail T = d [i]; d i d\n" + reserveAllBut("lightOptions_strings")},
            {"group", "group g " + counts + "\ncommand lopt " + counts + "\n" + lines}};
}

struct Row {
    const char* lines;
    const char* message;
};

TEST(Catalogue, WhatFitsIsFine) {
    EXPECT_EQ(check(around("  after lopt: lightOptions_strings\n presample [d [s]]\n", "4")), "fine");
    EXPECT_EQ(check(around("\t after lopt: lightOptions_strings # comment\r\n\n# other\n  presample T\n")), "fine");
}

// After three lines that are fine.
const Row mistakesInForms[] = {
    {"  presample d]\n", "group:4: '[' and ']' do not match"},
    {"  presample [d\n", "group:4: '[' and ']' do not match"},
    {"  presample [d] i\n", "group:4: 'i' after ']': a bracket ends the form"},
    {"  presample [d [i]]]\n", "group:4: '[' and ']' do not match"},
    {"  presample []\n", "group:4: nothing stands where a form was expected"},
    {"  presample [[d]]\n", "group:4: nothing stands between two '['"},
    {"  ]\n", "group:4: nothing stands where a form was expected"},
    {"  presample (d)\n", "group:4: '(' has no place in a form"},
    {"  presample d, i\n", "group:4: unexpected character"},
    {"  presample \x80\n", "group:4: unexpected character"},
    {"  presample\n\n  presampel d\n", "group:6: 'presampel' is not in lightOptions_strings"},
    {"  presample d presample\n", "group:4: no table gives the keyword 'presample' after 'lopt presample d'"},
    {"  presample Lx\n", "group:4: no table gives the keyword 'Lx' after 'lopt presample'"},
    {"  presample\n  presample\n", "group:5: function lopt0_presample exists already, from group:4"},
    {"  presample T d\n", "group:4: tail T must end the form"},
    {"  presample d\n", "group:2: lopt has 1 functions, not 3"},
    {"  presample [s]\n  after lopt s: light_strings\n", "group:5: light_strings is reserved"},
    {"  presample [s]\n  after lopt s: lights\n", "group:5: there is no keyword table lights"},
    {"  presample [s]\n  after lopt s: cmd_strings\n", "group:5: no form takes a keyword here"},
    {"  presample [s]\n  after lopt: cmd_strings\n", "group:5: this path stands twice"},
    {"  after lopt light_strings:\n", "group:4: expected 'after PATH: TABLE'"},
    {"  presample [s]\ncommand lopt 1\n", "group:5: command lopt stands twice"},
    {"  presample [s]\ncommand loptt 1\n  d\n", "group:5: 'loptt' is not in cmd_strings"},
    {"  presample [s]\ncommand stop 0\n", "group:5: '0' is not a count"},
    {"  presample [s]\ncommand stop 99999999999999999999\n", "group:5: '99999999999999999999' is not a count"},
    {"  presample [s]\ncommand stop 1x\n", "group:5: '1x' is not a count"},
    {"  presample [s]\ncommand stop\n", "group:5: expected 3 words"},
    {"  presample [s]\ncommand stop 1\n  (bare)\n", "group:1: group g has 4 functions, not 3"},
    {"  presample [s]\ngroup h 3\n", "group:5: a second group in this file, or of this name"},
    {"  presample [s]\nnonsense h 3\n", "group:5: 'nonsense' is not a statement"},
    {"  presample [s]\ntotal 3\n", "group:5: the total stands twice"},
    {"  presample [s]\ntail T = d\n", "group:5: tail T stands twice"},
    {"  presample [s]\ntail U d\n", "group:5: expected 'tail NAME = ...'"},
    {"  presample [s]\ntail U = d; [i\n", "group:5: '[' and ']' do not match"},
    {"  presample [s]\ntail U = d;\n", "group:5: nothing stands where a form was expected"},
    {"  presample [s]\ntail V = d\n", "group:5: 'V' is the letter of an argument"},
    {"  presample [s]\ntail U = [U]\n", "group:5: tail U contains itself"},
    {"  presample P\ntail P = forms of lopt\n", "group:4: tail P contains itself"},
    {"  presample P\ntail P = forms of stop\n", "group:5: there is no command stop"},
    {"  presample P\ntail P = keywords of lights\n", "group:5: there is no keyword table lights"},
    {"  presample [s]\nreserved lights\n", "group:5: there is no keyword table lights"},
    {"  presample [s]\nreserved lightOptions_strings\n", "group:3: lightOptions_strings is reserved"},
};

TEST(Catalogue, MistakesInFormsAreFoundWhereTheyStand) {
    const std::string path = "  after lopt: lightOptions_strings\n";
    for (const Row& row : mistakesInForms) {
        const std::string message = check(around(path + row.lines));
        EXPECT_EQ(message.substr(0, std::string(row.message).size()), row.message) << row.lines;
    }
}

TEST(Catalogue, MistakesInTheWholeAreFound) {
    const std::string reserved = reserveAllBut("lightOptions_strings");
    const Files form = {{"g", "group g 1\ncommand lopt 1\n after lopt: lightOptions_strings\n presample\n"}};
    const auto with = [&](const std::string& shared) { return check({{"shared", shared}, form[0]}); };
    EXPECT_EQ(with("total 1\n" + reserved), "fine");
    EXPECT_EQ(with(reserved), "catalogue:0: the total is missing");
    EXPECT_EQ(with("\ntotal 2\n" + reserved), "shared:2: the catalogue has 1 functions, not 2");
    EXPECT_EQ(with("total 1\n"), "shared:1: no form uses groupOps_strings");
    EXPECT_EQ(with("total 1\ncommand stop 1\n"), "shared:2: a command outside a group");
    EXPECT_EQ(with("total 1\n  d\n"), "shared:2: a form outside a command");
}

TEST(Catalogue, LongFormsAndTailsThatMultiplyAreStopped) {
    std::string form = "  after lopt: lightOptions_strings\n presample";
    for (int words = 1; words <= 64; ++words)
        form += " d";
    EXPECT_EQ(check(around(form + "\n")), "group:4: a form of more than 64 words");

    std::string chain = "tail q0 = d; i; b; u\n";
    for (int index = 1; index < 30; ++index) {
        const std::string before = "q" + std::to_string(index - 1);
        chain += "tail q" + std::to_string(index) + " = d " + before + "; i " + before + "\n";
    }
    const std::string message = check({{"shared", "total 1\n" + chain}, {"g", "group g 1\ncommand lopt 1\n q29\n"}});
    EXPECT_NE(message.find("more than 10000 forms"), std::string::npos) << message;
}

// ---- The real catalogue ----

Files realCatalogue() {
    Files files;
    for (const char* name : {"shared", "geometry", "looks", "lights", "rendering", "files"}) {
        std::ifstream in(std::string(ZANT_CATALOGUE) + name + ".txt");
        std::ostringstream text;
        text << in.rdbuf();
        files.emplace_back(name, text.str());
    }
    return files;
}

TEST(Catalogue, EveryPromisedCountIsChecked) {
    const Files files = realCatalogue();
    ASSERT_EQ(check(files), "fine");
    int changed = 0;
    for (size_t file = 0; file < files.size(); ++file) {
        std::istringstream lines(files[file].second);
        int number = 0;
        size_t offset = 0;
        for (std::string line; std::getline(lines, line); offset += line.size() + 1) {
            ++number;
            const bool counted =
                line.rfind("command ", 0) == 0 || line.rfind("group ", 0) == 0 || line.rfind("total ", 0) == 0;
            if (!counted) continue;
            Files wrong = files;
            wrong[file].second.insert(offset + line.size(), "0");
            const std::string place = files[file].first + ":" + std::to_string(number) + ": ";
            EXPECT_EQ(check(wrong).substr(0, place.size()), place) << line;
            ++changed;
        }
    }
    EXPECT_EQ(changed, 98 + 5 + 1);
}

}  // namespace
