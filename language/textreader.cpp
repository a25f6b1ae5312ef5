// The window over the text: finds where each command ends, then has it parsed.

#include <algorithm>
#include <cstring>

#include "language/characters.h"
#include "language/grammar.h"
#include "language/lookup.h"
#include "language/mismatch.h"
#include "language/reader.h"
#include "language/textparser.h"

#ifdef ZANT_SSE2_CODE
#include <emmintrin.h>
#endif

namespace Zant::Language {

namespace {

bool isSpace(char character) {
    return isCharacter(character, Space);
}

bool isMark(char character) {
    return character == ';' || character == '"';
}

// Whether one of eight bytes is a mark. Taking one from each byte borrows from its top bit only where it was 0.
bool holdsMark(const char* bytes) {
    constexpr uint64_t ones = 0x0101010101010101, tops = ones << 7;
    uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    const uint64_t ends = word ^ (ones * ';'), quotes = word ^ (ones * '"');
    return ((((ends - ones) & ~ends) | ((quotes - ones) & ~quotes)) & tops) != 0;
}

const char* findMark(const char* from, const char* limit) {
#ifdef ZANT_SSE2_CODE  // twice as many bytes at a time
    const __m128i ends = _mm_set1_epi8(';'), quotes = _mm_set1_epi8('"');
    for (; limit - from >= 16; from += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(bytes, ends), _mm_cmpeq_epi8(bytes, quotes));
        if (const int found = _mm_movemask_epi8(marks)) return from + __builtin_ctz(static_cast<unsigned>(found));
    }
#endif
    while (limit - from >= 8 && !holdsMark(from))
        from += 8;
    return std::find_if(from, limit, isMark);
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr size_t longestCommand = UINT32_MAX;  // values note their place in 32 bits

}  // namespace

TextReader::TextReader(std::string_view text) : TextReader(text, Grammar::vocabulary()) {}

TextReader::TextReader(TextSource& source, size_t windowSize) : TextReader(source, windowSize, Grammar::vocabulary()) {}

TextReader::TextReader(std::string_view text, const Grammar& vocabulary) : grammar_(vocabulary), ended_(true) {
    cursor_ = scanned_ = text.data();
    limit_ = cursor_ + text.size();
}

TextReader::TextReader(TextSource& source, size_t windowSize, const Grammar& vocabulary)
    : grammar_(vocabulary), input_(&source), window_(std::max<size_t>(windowSize, 16)) {
    cursor_ = limit_ = scanned_ = window_.data();
}

ReadResult TextReader::next(Command& command) {
    while (true) {
        if (!quote_) scanned_ = findMark(scanned_, limit_);
        const bool found = (scanned_ != limit_ && !quote_ && *scanned_ == ';') || findEnd();
        if (offset_ == 0 &&
            std::string_view(cursor_, static_cast<size_t>(limit_ - cursor_)).substr(0, byteOrderMark.size()) ==
                byteOrderMark) {
            advance(cursor_ + byteOrderMark.size());
        }
        skipSpace(found ? scanned_ : limit_);
        if (found && cursor_ == scanned_) {  // an empty command
            advance(++scanned_);
            continue;
        }
        if (found) return readCommand(command, scanned_);
        if (cursor_ == limit_) return ReadResult::End;
        if (quote_) return failUnclosed();
        closeRest();
    }
}

// Moves scanned on to the next ";" outside of quotes.
bool TextReader::findEnd() {
    do {
        while (scanned_ != limit_) {
            if (quote_) {
                const auto* close =
                    static_cast<const char*>(std::memchr(scanned_, '"', static_cast<size_t>(limit_ - scanned_)));
                scanned_ = close ? close + 1 : limit_;
                if (close) quote_ = nullptr;
                continue;
            }
            scanned_ = findMark(scanned_, limit_);
            if (scanned_ == limit_) break;
            if (*scanned_ == ';') return true;
            quote_ = scanned_++;
        }
    } while (refill());
    return false;
}

// Moves the unread rest to the front of the window and reads on after it.
bool TextReader::refill() {
    if (ended_) return false;
    const size_t rest = static_cast<size_t>(limit_ - cursor_);
    const size_t quoteAt = quote_ ? static_cast<size_t>(quote_ - cursor_) : 0;
    if (cursor_ == window_.data() && rest == window_.size()) {
        window_.resize(2 * rest);
    } else {
        std::memmove(window_.data(), cursor_, rest);
    }
    const size_t added = input_->read(window_.data() + rest, window_.size() - rest);
    ended_ = added == 0;
    cursor_ = window_.data();
    scanned_ = cursor_ + rest;
    limit_ = scanned_ + added;
    if (quote_) quote_ = cursor_ + quoteAt;
    return !ended_;
}

// Gives the last command its ";", in memory of our own.
void TextReader::closeRest() {
    std::vector<char> rest(cursor_, limit_);
    rest.push_back(';');
    window_.swap(rest);
    cursor_ = window_.data();
    limit_ = cursor_ + window_.size();
    scanned_ = limit_ - 1;
}

ReadResult TextReader::readCommand(Command& command, const char* last) {
    const size_t size = static_cast<size_t>(last - cursor_);
    bool understood = false;
    scanned_ = last + 1;
    if (size > longestCommand) {
        fail(cursor_, "the command is longer than 4 GiB");
    } else {
        command.position = positionOf(cursor_);
        TextParser parser(grammar_);
        understood = parser.parse(cursor_, last, command);
        command.source = {cursor_, size};
        if (!understood) explainMistake(parser);
    }
    advance(scanned_);
    return understood ? ReadResult::Command : ReadResult::Error;
}

// Says what is wrong with the command at the cursor, and where reading goes on if that is before its end.
void TextReader::explainMistake(const TextParser& parser) {
    const Mismatch& mismatch = parser.mismatch();
    const char* const at = cursor_ + mismatch.offset;
    const auto* zero = static_cast<const char*>(std::memchr(cursor_, '\0', static_cast<size_t>(scanned_ - cursor_)));
    if (zero) return fail(zero, "a zero byte: command text cannot hold one");
    const std::string word = parser.foundWord();
    failure_.position = positionOf(at);
    explain(grammar_, mismatch, parser.found(), word, failure_);
    if (mismatch.problem != Problem::NoSeparator) return;
    if (const char* const text = textOverLines(cursor_, at)) {
        fail(text, "the text that begins here runs over several lines: is its closing quote missing?");
        goOnAt(behindLine(text));
    } else if (isFirstOfLine(at) && commandNumber(word) != 0) {
        failure_.message += ": is there a ';' missing?";
        goOnAt(at);
    }
}

// The input has ended inside of quotes. What stands after the first quote that is under suspicion is read again.
ReadResult TextReader::failUnclosed() {
    const char* const text = textOverLines(cursor_, quote_);
    const char* const suspect = text ? text : quote_;
    fail(suspect, "the text that begins here is not closed");
    goOnAt(behindLine(suspect));
    advance(scanned_);
    return ReadResult::Error;
}

void TextReader::fail(const char* at, const char* message) {
    failure_.position = positionOf(at);
    failure_.message = message;
    failure_.suggestion.clear();
}

// Makes reading go on at a place before `scanned`, unless too much of the input has been read again already.
void TextReader::goOnAt(const char* place) {
    quote_ = nullptr;
    const size_t again = static_cast<size_t>(scanned_ - place);
    constexpr size_t allowance = size_t{1} << 28;
    if (readAgain_ + again > allowance + offset_) return;
    readAgain_ += again;
    scanned_ = place;
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
    const char* const end = std::find(from, scanned_, '\n');
    const char* const mark = std::find(from, end, ';');
    return mark == end ? end : mark + 1;
}

bool TextReader::isFirstOfLine(const char* at) const {
    while (at != cursor_ && at[-1] != '\n' && isSpace(at[-1]))
        --at;
    return at != cursor_ && at[-1] == '\n';
}

Position TextReader::positionOf(const char* at) const {
    Position position{offset_ + static_cast<size_t>(at - cursor_), line_, 0};
    size_t start = lineStart_;
    for (const char* text = cursor_; text != at;) {
        const auto* newline = static_cast<const char*>(std::memchr(text, '\n', static_cast<size_t>(at - text)));
        if (!newline) break;
        text = newline + 1;
        ++position.line;
        start = offset_ + static_cast<size_t>(text - cursor_);
    }
    position.column = position.offset - start + 1;
    return position;
}

void TextReader::advance(const char* to) {
    if (to == cursor_) return;
    const Position position = positionOf(to);
    offset_ = position.offset;
    line_ = position.line;
    lineStart_ = position.offset - position.column + 1;
    cursor_ = to;
}

// Advances to the first that is not white space, of which there is not much as a rule.
void TextReader::skipSpace(const char* limit) {
    while (cursor_ != limit && isSpace(*cursor_)) {
        const bool endsLine = *cursor_++ == '\n';
        ++offset_;
        if (!endsLine) continue;
        ++line_;
        lineStart_ = offset_;
    }
}

}  // namespace Zant::Language
