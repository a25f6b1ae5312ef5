#ifndef ZANT_APP_PATHLESS_H
#define ZANT_APP_PATHLESS_H

#include <string>
#include <vector>

namespace Zant::App {

/// Shortens every path in a text, of any platform and with blanks inside, to "..." and its last part: a path says who
/// and where somebody is. In doubt more is left out than would be needed.
/// @param known paths that stand in the text as they are
std::string withoutPaths(std::string text, std::vector<std::string> known);

}  // namespace Zant::App

#endif
