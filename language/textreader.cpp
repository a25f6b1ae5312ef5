// The window over the text: finds where each command ends, then has it parsed.

#include <algorithm>
#include <cstring>

#include "language/characters.h"
#include "language/grammar.h"
#include "language/mismatch.h"
#include "language/reader.h"
#include "language/textparser.h"

namespace Zant {

namespace {

bool isSpace(char character) {
    return isCharacter(character, Space);
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr size_t longestCommand = UINT32_MAX;  // values note their place in 32 bits

}  // namespace

TextReader::TextReader(std::string_view text) : TextReader(text, Grammar::vocabulary()) {}

TextReader::TextReader(TextSource& source, size_t windowSize) : TextReader(source, windowSize, Grammar::vocabulary()) {}

TextReader::TextReader(std::string_view text, const Grammar& vocabulary)
    : parser(std::make_unique<TextParser>(vocabulary)), grammar(vocabulary), ended(true) {
    cursor = scanned = text.data();
    limit = cursor + text.size();
}

TextReader::TextReader(TextSource& source, size_t windowSize, const Grammar& vocabulary)
    : parser(std::make_unique<TextParser>(vocabulary)),
      grammar(vocabulary),
      input(&source),
      window(std::max<size_t>(windowSize, 16)) {
    cursor = limit = scanned = window.data();
}

TextReader::~TextReader() = default;

ReadResult TextReader::next(Command& command) {
    while (true) {
        const bool found = findEnd();
        if (offset == 0 &&
            std::string_view(cursor, static_cast<size_t>(limit - cursor)).substr(0, byteOrderMark.size()) ==
                byteOrderMark) {
            advance(cursor + byteOrderMark.size());
        }
        const char* const first = std::find_if_not(cursor, found ? scanned : limit, isSpace);
        advance(first);
        if (found && first == scanned) {  // an empty command
            advance(++scanned);
            continue;
        }
        if (found) return readCommand(command, scanned);
        if (first == limit) return ReadResult::End;
        if (quote) return failAt(quote, "the text that begins here is not closed");
        closeRest();
    }
}

// Moves scanned on to the next ";" outside of quotes.
bool TextReader::findEnd() {
    do {
        while (scanned != limit) {
            if (quote) {
                const auto* close =
                    static_cast<const char*>(std::memchr(scanned, '"', static_cast<size_t>(limit - scanned)));
                scanned = close ? close + 1 : limit;
                if (close) quote = nullptr;
                continue;
            }
            while (scanned != limit && *scanned != ';' && *scanned != '"')
                ++scanned;
            if (scanned == limit) break;
            if (*scanned == ';') return true;
            quote = scanned++;
        }
    } while (refill());
    return false;
}

// Moves the unread rest to the front of the window and reads on behind it.
bool TextReader::refill() {
    if (ended) return false;
    const size_t rest = static_cast<size_t>(limit - cursor);
    const size_t quoteAt = quote ? static_cast<size_t>(quote - cursor) : 0;
    if (cursor == window.data() && rest == window.size()) {
        window.resize(2 * rest);
    } else {
        std::memmove(window.data(), cursor, rest);
    }
    const size_t added = input->read(window.data() + rest, window.size() - rest);
    ended = added == 0;
    cursor = window.data();
    scanned = cursor + rest;
    limit = scanned + added;
    if (quote) quote = cursor + quoteAt;
    return !ended;
}

// Gives the last command its ";", in memory of our own.
void TextReader::closeRest() {
    std::vector<char> rest(cursor, limit);
    rest.push_back(';');
    window.swap(rest);
    cursor = window.data();
    limit = cursor + window.size();
    scanned = limit - 1;
}

ReadResult TextReader::readCommand(Command& command, const char* last) {
    const size_t size = static_cast<size_t>(last - cursor);
    if (size > longestCommand) return failAt(cursor, "the command is longer than 4 GiB");
    command.position = positionOf(cursor);
    const char* const first = cursor;
    const bool understood = parser->parse(first, last, command);
    command.source = {first, size};
    if (!understood) {
        failure.position = positionOf(first + parser->mismatch().offset);
        explain(grammar, parser->mismatch(), parser->found(), parser->foundWord(), failure);
    }
    scanned = last + 1;
    advance(scanned);
    return understood ? ReadResult::Command : ReadResult::Error;
}

// Gives up what is there up to the end of the command, or of the input.
ReadResult TextReader::failAt(const char* at, const char* message) {
    failure.position = positionOf(at);
    failure.message = message;
    failure.suggestion.clear();
    const bool closed = scanned != limit;
    if (closed) ++scanned;
    quote = nullptr;
    advance(scanned);
    return ReadResult::Error;
}

Position TextReader::positionOf(const char* at) const {
    Position position{offset + static_cast<size_t>(at - cursor), line, 0};
    size_t start = lineStart;
    for (const char* text = cursor; text != at;) {
        const auto* newline = static_cast<const char*>(std::memchr(text, '\n', static_cast<size_t>(at - text)));
        if (!newline) break;
        text = newline + 1;
        ++position.line;
        start = offset + static_cast<size_t>(text - cursor);
    }
    position.column = position.offset - start + 1;
    return position;
}

void TextReader::advance(const char* to) {
    if (to == cursor) return;
    const Position position = positionOf(to);
    offset = position.offset;
    line = position.line;
    lineStart = position.offset - position.column + 1;
    cursor = to;
}

}  // namespace Zant
