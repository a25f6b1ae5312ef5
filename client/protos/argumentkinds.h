#ifndef ZANT_CLIENT_PROTOS_ARGUMENTKINDS_H
#define ZANT_CLIENT_PROTOS_ARGUMENTKINDS_H

#include <cstddef>
#include <string>

#include "client/protos/forms.h"

namespace Zant {

/// What a value is. A list has the kind of its items.
enum class ValueKind : uint8_t { Keyword, Number, String, Vector, Axes, CoordSys, Symbol };

/// All that tells the kinds of arguments apart. Threads: any, at any time.
struct KindRow {
    ArgumentKind kind;
    const char* enumerator;  ///< of ArgumentKind
    const char* letter;      ///< in the catalogue and in notations; empty for a keyword
    ValueKind value;
    bool isList;

    const char* name;      ///< "coordinate system"
    const char* expected;  ///< in messages: "a coordinate system"
    const char* text;      ///< how text shows it
    const char* block;     ///< how blocks hold it

    const char* type;       ///< of the typed functions' parameter, with narrow strings
    const char* argument;   ///< type of the scene members' parameter, with narrow strings
    const char* operation;  ///< of the command buffer
    const char* parameter;  ///< name of a parameter without a better one
    bool isNamedByKeyword;  ///< whether the keyword before it is a better one
};

constexpr size_t kindCount = static_cast<size_t>(ArgumentKind::SymbolList) + 1;

const KindRow& kindRow(ArgumentKind kind);

/// @return the kind of a letter, or null when there is none
const KindRow* findKind(const std::string& letter);

/// @return every letter with its name, "d number, i integer", on three lines
std::string letterLegend(const char* lineBreak);

}  // namespace Zant

#endif
