// Following the names of a scene.

#include "language/symbols.h"

#include "language/lookup.h"

namespace Zant::Language {

namespace {

constexpr int longestChain = 64;        // of references
constexpr size_t mostSuggested = 5000;  // names that a misspelt one is compared with

struct Words {
    int number = commandNumber("double");
    int variable = commandNumber("variable");
    int var = commandNumber("var");
    int vector = commandNumber("vector");
    int color = commandNumber("color");
    int reference = commandNumber("reference");
    int erase = commandNumber("delete");
    int eraseAll = commandNumber("symbolsDelete");
    int bitmap = commandNumber("bitmap");
    int mesh = commandNumber("mesh");
    int vertexMap = commandNumber("vertexMap");
};

const Words& words() {
    static const Words known;
    return known;
}

// One number for all command words that declare the same kind of object.
int kindOf(int command) {
    if (command == words().var || command == words().variable) return words().number;
    return command == words().color ? words().vector : command;
}

/// @return the command word whose objects a place takes, or 0 for any
int wantedAt(ArgumentKind place) {
    switch (place) {
        case ArgumentKind::BitmapSymbol:
            return words().bitmap;
        case ArgumentKind::MeshSymbol:
            return words().mesh;
        case ArgumentKind::VertexMapSymbol:
            return words().vertexMap;
        default:
            return 0;
    }
}

std::string quoted(std::string_view name) {
    return "'" + std::string(name) + "'";
}

std::string declared(const SymbolTable::Symbol& symbol) {
    return std::string("declared by '") + commandWord(symbol.command) + "' in " + symbol.where;
}

}  // namespace

std::vector<SymbolTable::Finding> SymbolTable::check(const Command& command) const {
    std::vector<Finding> findings;
    for (size_t place = 0; place < command.values().size(); ++place) {
        const Value& value = command.values()[place];
        if (value.kind != ValueKind::Symbol) continue;
        if (command.form->tokens[place].kind == ArgumentKind::NewSymbol) {
            checkDeclaration(command, place, findings);
            continue;
        }
        for (size_t item = 0; item < value.count; ++item)
            checkName(command, place, command.text(value, item), findings);
    }
    return findings;
}

void SymbolTable::checkName(const Command& command, size_t place, const char* name,
                            std::vector<Finding>& findings) const {
    const auto found = symbols_.find(std::string_view(name));
    if (found == symbols_.end()) {
        const std::string near = nearest(name);
        const std::string hint = near.empty() ? "" : ", did you mean " + quoted(near) + "?";
        findings.push_back({Problem::Undeclared, place, quoted(name) + " is not declared" + hint, near});
        return;
    }
    const Symbol& symbol = found->second;
    if (!symbol.isAlive) {
        findings.push_back({Problem::Deleted, place, quoted(name) + " was deleted in " + symbol.where, {}});
        return;
    }
    const int wanted = wantedAt(command.form->tokens[place].kind);
    const Symbol* const object = target(symbol);
    if (wanted == 0 || !object || object->command == wanted) return;
    const std::string kind = commandWord(wanted);
    findings.push_back(
        {Problem::OtherKind, place, quoted(name) + " is not a " + kind + ", it was " + declared(*object), {}});
}

void SymbolTable::checkDeclaration(const Command& command, size_t place, std::vector<Finding>& findings) const {
    const char* const name = command.text(command.values()[place]);
    const auto found = symbols_.find(std::string_view(name));
    if (found == symbols_.end() || !found->second.isAlive) return;
    if (kindOf(found->second.command) == kindOf(command.form->command)) return;
    findings.push_back({Problem::DeclaredAsOtherKind,
                        place,
                        quoted(name) + " is another kind of object already, " + declared(found->second),
                        {}});
}

// What a reference leads to; null for a dead end.
const SymbolTable::Symbol* SymbolTable::target(const Symbol& symbol) const {
    const Symbol* at = &symbol;
    for (int step = 0; step < longestChain; ++step) {
        if (at->command != words().reference) return at;
        const auto next = symbols_.find(at->reference);
        if (next == symbols_.end() || !next->second.isAlive) return nullptr;
        at = &next->second;
    }
    return nullptr;
}

std::string SymbolTable::nearest(std::string_view name) const {
    if (symbols_.size() > mostSuggested) return {};
    NearestWord search(name);
    for (const auto& [known, symbol] : symbols_) {
        if (symbol.isAlive) search.offer(known.c_str());
    }
    return search.best() ? search.best() : "";
}

void SymbolTable::follow(const Command& command, const std::string& where) {
    const auto end = [&](Symbol& symbol) {
        if (symbol.isAlive) symbol.where = where;
        symbol.isAlive = false;
    };
    const int word = command.form->command;
    if (word == words().eraseAll) {
        for (auto& [name, symbol] : symbols_)
            end(symbol);
    } else if (word == words().erase) {
        const auto found = symbols_.find(std::string_view(command.text(command.values()[0])));
        if (found != symbols_.end()) end(found->second);
    }
    for (size_t place = 0; place < command.values().size(); ++place) {
        if (command.form->tokens[place].kind != ArgumentKind::NewSymbol) continue;
        const char* const leadsTo = word == words().reference ? command.text(command.values()[1]) : "";
        symbols_[command.text(command.values()[place])] = {word, true, where, leadsTo};
    }
}

}  // namespace Zant::Language
