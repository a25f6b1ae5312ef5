#include "app/pathless.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Zant::App {
namespace {

using std::string_view;

constexpr size_t npos = string_view::npos;
constexpr const char* separators = "/\\";
constexpr const char* delimiters = "\t\n:;\"(),";

bool isLetter(string_view text, size_t at) {
    return at < text.size() && std::isalnum(static_cast<unsigned char>(text[at]));
}

/// The last separator with a name after it; a separator at the end belongs to the name.
size_t lastSeparator(string_view path) {
    for (size_t at = path.find_last_of(separators); at != npos; at = at ? path.find_last_of(separators, at - 1) : npos)
        if (path.find_first_not_of("/\\ ", at) == at + 1) return at;
    return npos;
}

std::string shortened(string_view path) {
    const size_t at = lastSeparator(path);
    return at == npos ? std::string(path) : "..." + std::string(path.substr(at));
}

/// Words around one path: it begins with the first word that holds a separator.
std::string shortenedWords(string_view words) {
    const size_t first = words.find_first_of(separators);
    if (first == npos) return std::string(words);
    const size_t blank = words.rfind(' ', first);
    const size_t begin = blank == npos ? 0 : blank + 1;
    return std::string(words.substr(0, begin)) + shortened(words.substr(begin));
}

/// The colon of "C:\".
bool isDriveColon(string_view text, size_t at) {
    return text[at] == ':' && at > 0 && isLetter(text, at - 1) && !(at > 1 && isLetter(text, at - 2)) &&
           at + 1 < text.size() && (text[at + 1] == '\\' || text[at + 1] == '/');
}

bool isApostrophe(string_view text, size_t at) {
    return text[at] == '\'' && at > 0 && isLetter(text, at - 1) && isLetter(text, at + 1);
}

bool isDelimiter(string_view text, size_t at) {
    if (text[at] == '\'') return !isApostrophe(text, at);
    return string_view(delimiters).find(text[at]) != npos && !isDriveColon(text, at);
}

/// The place of the quote that closes the one at a place of the same line; npos when there is none.
size_t closingQuote(string_view text, size_t at) {
    size_t close = at + 1;
    while (close < text.size() && text[close] != '\n' && (text[close] != text[at] || isApostrophe(text, close)))
        ++close;
    return close < text.size() && text[close] == text[at] ? close : npos;
}

size_t endOfWords(string_view text, size_t from) {
    while (from < text.size() && !isDelimiter(text, from))
        ++from;
    return from;
}

void replaceAll(std::string& text, const std::string& what, const std::string& with) {
    for (size_t at = 0; (at = text.find(what, at)) != npos; at += with.size())
        text.replace(at, what.size(), with);
}

}  // namespace

std::string withoutPaths(std::string text, std::vector<std::string> known) {
    std::sort(known.begin(), known.end(),
              [](const auto& left, const auto& right) { return left.size() > right.size(); });
    for (const std::string& path : known)
        if (path.find_first_of(separators) != npos) replaceAll(text, path, shortened(path));
    std::string result;
    for (size_t from = 0; from < text.size();) {
        const bool quote = text[from] == '"' || (text[from] == '\'' && !isApostrophe(text, from));
        const size_t close = quote ? closingQuote(text, from) : npos;
        if (close != npos) {  // the whole of a quoted text is one path
            result += text[from] + shortened(string_view(text).substr(from + 1, close - from - 1)) + text[close];
            from = close + 1;
            continue;
        }
        const size_t end = std::max(endOfWords(text, from), from + 1);
        result += shortenedWords(string_view(text).substr(from, end - from));
        from = end;
    }
    return result;
}

}  // namespace Zant::App
