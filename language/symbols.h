#ifndef ZANT_LANGUAGE_SYMBOLS_H
#define ZANT_LANGUAGE_SYMBOLS_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "language/command.h"
#include "language/reader.h"

namespace Zant::Language {

/// The symbols that the commands of a scene declare, use and delete, followed in the order of the commands.
///
/// What kind of object a symbol is follows from the command that declared it; words for the same kind, such as var and
/// double, count as one. A place that takes a bitmap, a mesh or a vertex map takes nothing else; every other place
/// takes any kind. A reference is what it leads to. Names that an engine brings along are undeclared here.
///
/// Threads: one at a time. Memory grows with the names, deleted ones included.
class SymbolTable {
public:
    /// One name, from its first declaration on.
    struct Symbol {
        int command = 0;        ///< number of the command word that declared it
        bool isAlive = true;    ///< whether it has not been deleted
        std::string where;      ///< where it was declared or, when it is not alive, deleted: "room.zant, line 3"
        std::string reference;  ///< of a reference, the name that it leads to
    };

    enum class Problem { Undeclared, Deleted, OtherKind, DeclaredAsOtherKind };

    struct Finding {
        Problem problem;
        size_t place;            ///< the value of the command
        std::string message;     ///< one line, with the suggestion
        std::string suggestion;  ///< the nearest name; may be empty

        /// @param command the one that was checked
        Diagnostic in(const Command& command) const { return {placeOf(command, place), message, suggestion}; }
    };

    /// @return what is wrong with the names in a command, by place. Changes nothing.
    std::vector<Finding> check(const Command& command) const;

    /// Takes over what the command declares and deletes, right or wrong.
    /// @param where the command stands, for messages
    void follow(const Command& command, const std::string& where);

    /// All names so far, with the ones that were deleted.
    const std::map<std::string, Symbol, std::less<>>& all() const { return symbols_; }

private:
    void checkName(const Command& command, size_t place, const char* name, std::vector<Finding>& findings) const;
    void checkDeclaration(const Command& command, size_t place, std::vector<Finding>& findings) const;
    const Symbol* target(const Symbol& symbol) const;
    std::string nearest(std::string_view name) const;

    std::map<std::string, Symbol, std::less<>> symbols_;
};

}  // namespace Zant::Language

#endif
