// The window over the text: finds where each command ends, then has it parsed.

#include <algorithm>
#include <cstring>

#include "language/characters.h"
#include "language/grammar.h"
#include "language/lookup.h"
#include "language/mismatch.h"
#include "language/reader.h"
#include "language/textparser.h"

namespace Zant::Language {

namespace {

bool isSpace(char character) {
    return isCharacter(character, Space);
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr size_t longestCommand = UINT32_MAX;  // values note their place in 32 bits

}  // namespace

TextReader::TextReader(std::string_view text) : TextReader(text, Grammar::vocabulary()) {}

TextReader::TextReader(TextSource& source, size_t windowSize) : TextReader(source, windowSize, Grammar::vocabulary()) {}

TextReader::TextReader(std::string_view text, const Grammar& vocabulary) : grammar(vocabulary), ended(true) {
    cursor = scanned = text.data();
    limit = cursor + text.size();
}

TextReader::TextReader(TextSource& source, size_t windowSize, const Grammar& vocabulary)
    : grammar(vocabulary), input(&source), window(std::max<size_t>(windowSize, 16)) {
    cursor = limit = scanned = window.data();
}

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
        if (quote) return failUnclosed();
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
            // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): null is the limit too
            while (scanned != limit && *scanned != ';' && *scanned != '"')
                ++scanned;
            if (scanned == limit) break;
            if (*scanned == ';') return true;
            quote = scanned++;
        }
    } while (refill());
    return false;
}

// Moves the unread rest to the front of the window and reads on after it.
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
    bool understood = false;
    scanned = last + 1;
    if (size > longestCommand) {
        fail(cursor, "the command is longer than 4 GiB");
    } else {
        command.position = positionOf(cursor);
        TextParser parser(grammar);
        understood = parser.parse(cursor, last, command);
        command.source = {cursor, size};
        if (!understood) explainMistake(parser);
    }
    advance(scanned);
    return understood ? ReadResult::Command : ReadResult::Error;
}

// Says what is wrong with the command at the cursor, and where reading goes on if that is before its end.
void TextReader::explainMistake(const TextParser& parser) {
    const Mismatch& mismatch = parser.mismatch();
    const char* const at = cursor + mismatch.offset;
    const auto* zero = static_cast<const char*>(std::memchr(cursor, '\0', static_cast<size_t>(scanned - cursor)));
    if (zero) return fail(zero, "a zero byte: command text cannot hold one");
    const std::string word = parser.foundWord();
    failure.position = positionOf(at);
    explain(grammar, mismatch, parser.found(), word, failure);
    if (mismatch.problem != Problem::NoSeparator) return;
    if (const char* const text = textOverLines(cursor, at)) {
        fail(text, "the text that begins here runs over several lines: is its closing quote missing?");
        goOnAt(behindLine(text));
    } else if (isFirstOfLine(at) && commandNumber(word) != 0) {
        failure.message += ": is there a ';' missing?";
        goOnAt(at);
    }
}

// The input has ended inside of quotes. What stands after the first quote that is under suspicion is read again.
ReadResult TextReader::failUnclosed() {
    const char* const text = textOverLines(cursor, quote);
    const char* const suspect = text ? text : quote;
    fail(suspect, "the text that begins here is not closed");
    goOnAt(behindLine(suspect));
    advance(scanned);
    return ReadResult::Error;
}

void TextReader::fail(const char* at, const char* message) {
    failure.position = positionOf(at);
    failure.message = message;
    failure.suggestion.clear();
}

// Makes reading go on at a place before `scanned`, unless too much of the input has been read again already.
void TextReader::goOnAt(const char* place) {
    quote = nullptr;
    const size_t again = static_cast<size_t>(scanned - place);
    constexpr size_t allowance = size_t{1} << 28;
    if (readAgain + again > allowance + offset) return;
    readAgain += again;
    scanned = place;
}

// The first closed text that runs over lines, or null.
const char* TextReader::textOverLines(const char* from, const char* to) {
    while ((from = std::find(from, to, '"')) != to) {
        const char* const close = std::find(from + 1, to, '"');
        if (close == to) return nullptr;
        if (std::find(from, close, '\n') != close) return from;
        from = close + 1;
    }
    return nullptr;
}

// After the first ";" of the line, or else at its end.
const char* TextReader::behindLine(const char* from) const {
    const char* const end = std::find(from, scanned, '\n');
    const char* const mark = std::find(from, end, ';');
    return mark == end ? end : mark + 1;
}

bool TextReader::isFirstOfLine(const char* at) const {
    while (at != cursor && at[-1] != '\n' && isSpace(at[-1]))
        --at;
    return at != cursor && at[-1] == '\n';
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

}  // namespace Zant::Language
