#ifndef ZANT_CLIENT_PROTOS_FORMS_H
#define ZANT_CLIENT_PROTOS_FORMS_H

#include <cstddef>
#include <cstdint>

#include "own/cxx17.h"

namespace Zant {

/// The vocabulary as data: every form of every command, in the order of the catalogue.
///
/// A form is the sequence of keywords and arguments after the command word. The functions with narrow and with wide
/// strings share one form. The tables are generated from the catalogue and live as long as the process.
///
/// Threads: read them on any thread, at any time.

/// What one place of a form takes; client/protos/argumentkinds.h has the letters, types and names of the kinds.
enum class ArgumentKind : uint8_t {
    Keyword,
    Double,
    Int,
    Bool,
    Unsigned,
    String,
    Vector,
    Axes,
    CoordSys,
    Symbol,
    NewSymbol,  // that the command declares
    BitmapSymbol,
    MeshSymbol,
    VertexMapSymbol,
    DoubleList,
    VectorList,
    CoordSysList,
    SymbolList
};

/// A keyword table: `slots` pointers, null where a number has no keyword. Keyword number n stands in slot n - 1.
struct KeywordTable {
    const char* name;  // as in Zant::Enums, for example "light_strings"
    const char* const* words;
    int slots;
};

/// One place of a form.
struct FormToken {
    ArgumentKind kind;
    uint8_t table;    // index into keywordTables(), for a keyword
    uint16_t number;  // keyword number, for a keyword; otherwise 0
};

/// One form of a command.
struct Form {
    const char* function;     // name of the typed function, narrow strings: "fg2_gradients"
    const char* notation;     // "fg gradients d d", as the catalogue writes it
    const FormToken* tokens;  // after the command word
    uint16_t tokenCount;
    uint16_t command;          // number of the command word
    uint8_t parameterCount;    // arguments of the typed function after the first void*
    const char* wideFunction;  // name of the twin with wide strings: "about1u"; null without strings
};

/// A contiguous range, for range-based loops.
template <class T>
struct FormRange {
    const T* first;
    size_t count;
    const T* begin() const { return first; }
    const T* end() const { return first + count; }
    size_t size() const { return count; }
    const T& operator[](size_t index) const { return first[index]; }
};

/// Every form, those of one command word next to each other.
FormRange<Form> allForms();
/// The forms of one command word, by its number in cmd_strings; empty when it has none.
FormRange<Form> formsOf(int command);
/// @return the group that the catalogue lists a command word in: "looks"; null when it has no forms
const char* groupOf(int command);
/// All keyword tables; the table of command words is at index 0.
FormRange<KeywordTable> keywordTables();

}  // namespace Zant

#endif
