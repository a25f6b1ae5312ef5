#include "app/textpieces.h"

#include <algorithm>

namespace Zant::App {
namespace {

constexpr size_t usualSize = 4 << 20;
constexpr size_t readSize = 1 << 20;

}  // namespace

bool TextPieces::next(std::string& piece) {
    zeros.clear();
    const std::string front = std::string(end.line - 1, '\n') + std::string(end.column - 1, ' ');
    // Pieces grow with what stands in front of them, so that all fronts together stay a fraction of the file.
    const size_t wanted = std::max(usualSize, 4 * front.size());
    bool more = true;
    while ((lastEnd == 0 || text.size() < wanted) && (more = readMore())) {
    }
    if (!more) endCommand(text.size());
    if (lastEnd == 0) return false;
    piece.assign(front).append(text, 0, lastEnd);
    text.erase(0, lastEnd);
    scanned -= lastEnd;
    if (zero != npos) zero -= lastEnd;
    lastEnd = 0;
    return true;
}

bool TextPieces::readMore() {
    const size_t old = text.size();
    text.resize(old + readSize);
    text.resize(old + input.read(text.data() + old, readSize));
    findEnds();
    return text.size() > old;
}

void TextPieces::findEnds() {
    for (; scanned < text.size(); ++scanned) {
        const char letter = text[scanned];
        if (letter == '"') quoted = !quoted;
        if (letter == '\0' && zero == npos) zero = scanned;
        if (letter == ';' && !quoted) endCommand(scanned + 1);
    }
}

void TextPieces::endCommand(size_t after) {
    if (zero != npos) {
        zeros.push_back({positionOf(zero), "a zero byte: the command that holds it is left out", ""});
        std::replace_if(
            text.begin() + static_cast<std::ptrdiff_t>(lastEnd), text.begin() + static_cast<std::ptrdiff_t>(after),
            [](char letter) { return letter != '\n'; }, ' ');
        zero = npos;
    }
    end = positionOf(after);
    lastEnd = after;
}

// Counted from the end of the last command, so that all of them together look at each byte once or twice.
Position TextPieces::positionOf(size_t at) const {
    Position position = end;
    for (size_t place = lastEnd; place < at; ++place) {
        ++position.column;
        if (text[place] != '\n') continue;
        ++position.line;
        position.column = 1;
    }
    position.offset += at - lastEnd;
    return position;
}

}  // namespace Zant::App
