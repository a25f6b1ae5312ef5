#ifndef ZANT_APP_KINDS_H
#define ZANT_APP_KINDS_H

#include "client/protos/forms.h"

namespace Zant::App {

/// What a reader has to know of a kind of argument.
struct KindRow {
    const char* letter;     ///< in notations; empty for a keyword
    const char* name;       ///< "coordinate system"
    const char* parameter;  ///< of the typed functions
    const char* text;       ///< how text shows it
    const char* words;      ///< how blocks hold it
};

const KindRow& kindRow(ArgumentKind kind);

}  // namespace Zant::App

#endif
