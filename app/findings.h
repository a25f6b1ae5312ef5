#ifndef ZANT_APP_FINDINGS_H
#define ZANT_APP_FINDINGS_H

#include <string>

#include "client/protos/forms.h"
#include "language/reader.h"

namespace Zant::App {

using namespace Language;

/// A finding as a JSON object on one line, for programs; docs/program.md lists the members.
/// @param file as it was named; bytes that are not UTF-8 are replaced
std::string findingAsJson(const std::string& file, const Diagnostic& diagnostic);

/// The same for a file that cannot be read: it has no position.
std::string findingAsJson(const std::string& file, const std::string& message);

/// A form of the vocabulary as a JSON object on one line.
std::string formAsJson(const Form& form);

}  // namespace Zant::App

#endif
