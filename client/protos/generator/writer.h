#ifndef ZANT_CLIENT_PROTOS_GENERATOR_WRITER_H
#define ZANT_CLIENT_PROTOS_GENERATOR_WRITER_H

#include <string>

#include "client/protos/generator/vocabulary.h"

namespace Generator {

/// Adds items with commas between them and a bracket at the end, on lines of at most 120 columns.
/// @param indent of the lines after the first one
std::string listed(std::string text, const std::vector<std::string>& items, size_t indent);

/// The declaration of a form's function, without the final semicolon.
std::string signature(const CheckedForm& form, bool wide);

/// The public header.
std::string headerText(const Vocabulary& vocabulary);

/// The header of the keywords' numbers, `cmd_delete` for "delete" of cmd_strings, for the library's own use.
std::string numbersText();

/// The functions of one group.
std::string sourceText(const CheckedGroup& group);

/// The same functions as members of a scene, for the face <zant/zant.hpp>.
std::string membersText(const CheckedGroup& group);

/// The tables of allForms() and formsOf().
std::string formsText(const Vocabulary& vocabulary);

}  // namespace Generator

#endif
