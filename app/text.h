#ifndef ZANT_APP_TEXT_H
#define ZANT_APP_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Zant::App {

/// Bytes of an input as a terminal may be given them: valid UTF-8 without control characters. Every other byte becomes
/// "\x1B".
/// @param kept control characters that stay, "\n\t" where lines are laid out already
std::string shown(std::string_view bytes, std::string_view kept = {});

/// The same while standard output is a terminal; the bytes themselves for files and pipes.
std::string shownOnTerminal(std::string_view bytes);

/// "1 form", "2 forms"
std::string counted(size_t count, const char* noun);

/// Says a line on standard error, whatever bytes the message quotes.
void complain(std::string_view message);

}  // namespace Zant::App

#endif
