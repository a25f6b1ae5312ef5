#ifndef ZANT_LANGUAGE_PLACEKIND_H
#define ZANT_LANGUAGE_PLACEKIND_H

#include "client/protos/argumentkinds.h"

namespace Zant::Language {

/// @return the kind of value that a place of a form takes
inline ValueKind valueKindOf(ArgumentKind place) {
    return kindRow(place).value;
}
/// @return whether a place of a form takes a list
inline bool isListPlace(ArgumentKind place) {
    return kindRow(place).isList;
}

/// What a place of a form takes, with what reading asks about it at every item.
struct PlaceKind {
    ArgumentKind kind;
    ValueKind value;
    bool isList;

    PlaceKind(ArgumentKind place) : PlaceKind(place, valueKindOf(place), isListPlace(place)) {}
    static constexpr PlaceKind keyword() { return {ArgumentKind::Keyword, ValueKind::Keyword, false}; }

private:
    constexpr PlaceKind(ArgumentKind place, ValueKind itsValue, bool takesList)
        : kind(place), value(itsValue), isList(takesList) {}
};

}  // namespace Zant::Language

#endif
