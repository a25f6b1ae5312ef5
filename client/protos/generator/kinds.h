#ifndef ZANT_CLIENT_PROTOS_GENERATOR_KINDS_H
#define ZANT_CLIENT_PROTOS_GENERATOR_KINDS_H

#include <string>

namespace Generator {

/// All that tells the kinds of arguments apart.
struct Kind {
    const char* letter;      // in the catalogue
    const char* enumerator;  // of Zant::ArgumentKind
    const char* type;        // of the parameter, with narrow strings; ready for a name behind it
    const char* operation;   // of the command buffer
    const char* name;        // of a parameter without a better one
    bool keywordNames;       // whether the keyword before it says better what it is
};

/// @return the kind of a letter, or null when the word is none
const Kind* findKind(const std::string& letter);

}  // namespace Generator

#endif
