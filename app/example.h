#ifndef ZANT_APP_EXAMPLE_H
#define ZANT_APP_EXAMPLE_H

#include <string>
#include <vector>

#include "language/command.h"

namespace Zant::App {

using namespace Language;

/// Chooses the form that shows best how its neighbours are used: one whose example is written down, otherwise the one
/// with the most arguments that are still read at a glance.
/// @param forms at least one
const Form& mostTelling(const std::vector<const Form*>& forms);

/// Fills a command with an example of a form. Where none is written down, every value follows from its kind and place,
/// so that the same form always gives the same example.
void makeExample(const Form& form, Command& example);

/// @return the C++ statements that send the command through a prototyper of the name `proto`: what its symbols and
///         lists have to be declared as, and the call
std::string statementsFor(const Command& command);

/// @return the command's binary block, one 64-bit word on a line with what it means
std::string blockWords(const Command& command);

}  // namespace Zant::App

#endif
