// Looks everything up that the catalogue refers to, and compares all counts with what was promised.

#include <map>
#include <set>

#include "client/protos/generator/vocabulary.h"

namespace Generator {
namespace {

constexpr size_t commandTable = 0;  // index of the command words in keywordTables()

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

size_t findTable(const Place& place, const std::string& name) {
    const Zant::FormRange<Zant::KeywordTable> tables = Zant::keywordTables();
    for (size_t index = 0; index < tables.size(); ++index) {
        if (name == tables[index].name) return index;
    }
    throw Fault(place, "there is no keyword table " + name);
}

int findKeyword(const Place& place, size_t tableIndex, const std::string& word) {
    const Zant::KeywordTable& table = Zant::keywordTables()[tableIndex];
    for (int slot = 0; slot < table.slots; ++slot) {
        if (table.words[slot] != nullptr && word == table.words[slot]) return slot + 1;
    }
    throw Fault(place, quoted(word) + " is not in " + table.name);
}

void requireCount(const Place& place, const std::string& what, size_t promised, size_t found) {
    if (promised == found) return;
    throw Fault(place, what + " has " + std::to_string(found) + " functions, not " + std::to_string(promised));
}

class Checker {
public:
    explicit Checker(const Catalogue& catalogue) : catalogue_(catalogue) {}

    Vocabulary check() {
        checkTails();
        for (const TableName& name : catalogue_.reserved)
            reserved_.insert(findTable(name.place, name.table));
        Vocabulary vocabulary{{}, 0};
        for (const Group& group : catalogue_.groups) {
            vocabulary.groups.push_back(checkGroup(group));
            vocabulary.functions += group.functions;
        }
        if (catalogue_.functions == 0) throw Fault({"catalogue", 0}, "the total is missing");
        requireCount(catalogue_.totalPlace, "the catalogue", catalogue_.functions, vocabulary.functions);
        requireEveryTableUsed();
        return vocabulary;
    }

private:
    void checkTails() const {
        for (const auto& [name, tail] : catalogue_.tails) {
            if (Zant::findKind(name)) throw Fault(tail.place, quoted(name) + " is the letter of an argument");
            for (const Pattern& pattern : tail.patterns)
                expand(catalogue_, pattern);
        }
    }

    CheckedGroup checkGroup(const Group& group) {
        CheckedGroup checked{group.name, 0, {}};
        for (const Command& command : group.commands) {
            checked.commands.push_back(checkCommand(command));
            checked.functions += command.functions;
        }
        requireCount(group.place, "group " + group.name, group.functions, checked.functions);
        return checked;
    }

    CheckedCommand checkCommand(const Command& command) {
        CheckedCommand checked{command.word, findKeyword(command.place, commandTable, command.word), {}};
        const std::map<std::string, size_t> tables = findPaths(command);
        std::set<std::string> usedPaths;
        size_t functions = 0;
        for (const Pattern& pattern : command.patterns) {
            for (const Words& words : expand(catalogue_, pattern)) {
                CheckedForm form = checkForm(command, pattern.place, words, tables, usedPaths);
                nameFunctions(command.word, form);
                functions += claimNames(form);
                checked.forms.push_back(std::move(form));
            }
        }
        requireCount(command.place, command.word, command.functions, functions);
        for (const KeywordPath& path : command.paths) {
            if (usedPaths.count(path.path) == 0) throw Fault(path.place, "no form takes a keyword here");
        }
        nameParameters(checked);
        return checked;
    }

    std::map<std::string, size_t> findPaths(const Command& command) {
        std::map<std::string, size_t> tables;
        for (const KeywordPath& path : command.paths) {
            const size_t table = findTable(path.place, path.table);
            if (reserved_.count(table) != 0) throw Fault(path.place, path.table + " is reserved");
            if (!tables.emplace(path.path, table).second) throw Fault(path.place, "this path stands twice");
        }
        return tables;
    }

    CheckedForm checkForm(const Command& command, const Place& place, const Words& words,
                          const std::map<std::string, size_t>& tables, std::set<std::string>& usedPaths) {
        CheckedForm form{place, command.word, {}, {}, {}};
        for (const std::string& word : words) {
            if (catalogue_.tails.count(word) != 0) throw Fault(place, "tail " + word + " must end the form");
            form.tokens.push_back(checkToken(place, word, form.notation, tables));
            if (form.tokens.back().isKeyword()) usedPaths.insert(form.notation);
            form.notation += " " + word;
        }
        return form;
    }

    Token checkToken(const Place& place, const std::string& word, const std::string& path,
                     const std::map<std::string, size_t>& tables) {
        if (const Zant::KindRow* kind = Zant::findKind(word)) return {word, kind};
        const auto table = tables.find(path);
        if (table == tables.end())
            throw Fault(place, "no table gives the keyword " + quoted(word) + " after " + quoted(path));
        usedTables_.insert(table->second);
        return {word, nullptr, table->second, findKeyword(place, table->second, word)};
    }

    /// @return the number of functions
    size_t claimNames(const CheckedForm& form) {
        claimName(form.place, form.function);
        if (form.wideFunction.empty()) return 1;
        claimName(form.place, form.wideFunction);
        return 2;
    }

    void claimName(const Place& place, const std::string& name) {
        const auto [owner, isNew] = names_.emplace(name, place);
        if (isNew) return;
        throw Fault(place, "function " + name + " exists already, from " + owner->second.file + ":" +
                               std::to_string(owner->second.line));
    }

    void requireEveryTableUsed() const {
        const Zant::FormRange<Zant::KeywordTable> tables = Zant::keywordTables();
        for (size_t index = commandTable + 1; index < tables.size(); ++index) {
            if (usedTables_.count(index) + reserved_.count(index) == 0)
                throw Fault(catalogue_.totalPlace, std::string("no form uses ") + tables[index].name);
        }
    }

    const Catalogue& catalogue_;
    std::set<size_t> reserved_;
    std::set<size_t> usedTables_;
    std::map<std::string, Place> names_;
};

}  // namespace

Vocabulary checkCatalogue(const Catalogue& catalogue) {
    return Checker(catalogue).check();
}

}  // namespace Generator
