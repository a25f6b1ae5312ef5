// Spells patterns out: one form for each place where the pattern may end, and for each form of its tail.

#include <algorithm>

#include "client/protos/generator/vocabulary.h"

namespace Generator {
namespace {

// Beyond these a catalogue is a mistake: tails that multiply, or that follow one another without end.
constexpr size_t mostForms = 10000;  // of one pattern
constexpr size_t mostWords = 200;    // of one form

class Expander {
public:
    Expander(const Catalogue& catalogue, const Place& place) : catalogue_(catalogue), place_(place) {}

    void expandPattern(const Pattern& pattern, const Words& before) {
        for (const size_t end : pattern.ends) {
            Words form = before;
            form.insert(form.end(), pattern.words.begin(), pattern.words.begin() + static_cast<std::ptrdiff_t>(end));
            if (end != 0 && catalogue_.tails.count(form.back()) != 0) {
                const std::string tail = form.back();
                form.pop_back();
                expandTail(tail, form);
            } else {
                add(std::move(form));
            }
        }
    }

    std::vector<Words> forms;

private:
    void expandTail(const std::string& name, const Words& before) {
        if (std::find(open_.begin(), open_.end(), name) != open_.end())
            throw Fault(place_, "tail " + name + " contains itself");
        open_.push_back(name);
        const Tail& tail = catalogue_.tails.at(name);
        if (!tail.table.empty()) {
            expandTable(tail, before);
        } else if (!tail.command.empty()) {
            for (const Pattern& pattern : findCommand(tail).patterns)
                expandPattern(pattern, before);
        } else {
            for (const Pattern& pattern : tail.patterns)
                expandPattern(pattern, before);
        }
        open_.pop_back();
    }

    void expandTable(const Tail& tail, const Words& before) {
        for (const Zant::KeywordTable& table : Zant::keywordTables()) {
            if (tail.table != table.name) continue;
            for (int slot = 0; slot < table.slots; ++slot) {
                if (table.words[slot] == nullptr) continue;
                Words form = before;
                form.emplace_back(table.words[slot]);
                add(std::move(form));
            }
            return;
        }
        throw Fault(tail.place, "there is no keyword table " + tail.table);
    }

    const Command& findCommand(const Tail& tail) const {
        for (const Group& group : catalogue_.groups) {
            for (const Command& command : group.commands) {
                if (command.word == tail.command) return command;
            }
        }
        throw Fault(tail.place, "there is no command " + tail.command);
    }

    void add(Words form) {
        if (forms.size() == mostForms) throw Fault(place_, "more than 10000 forms");
        if (form.size() > mostWords) throw Fault(place_, "a form of more than 200 words");
        forms.push_back(std::move(form));
    }

    const Catalogue& catalogue_;
    const Place& place_;
    Words open_;  // tails that are being expanded
};

}  // namespace

std::vector<Words> expand(const Catalogue& catalogue, const Pattern& pattern) {
    Expander expander(catalogue, pattern.place);
    expander.expandPattern(pattern, {});
    return std::move(expander.forms);
}

}  // namespace Generator
