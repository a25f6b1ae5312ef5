#include "app/textpieces.h"

#include <algorithm>

namespace Zant::App {
namespace {

constexpr size_t usualSize = 4 << 20;
constexpr size_t readSize = 1 << 20;

}  // namespace

bool TextPieces::next(std::string& piece) {
    zeros_.clear();
    const std::string front = std::string(end_.line - 1, '\n') + std::string(end_.column - 1, ' ');
    // Pieces grow with what stands in front of them, so that all fronts together stay a fraction of the file.
    const size_t wanted = std::max(usualSize, 4 * front.size());
    bool more = true;
    while ((lastEnd_ == 0 || text_.size() < wanted) && (more = readMore())) {
    }
    if (!more) endCommand(text_.size());
    if (lastEnd_ == 0) return false;
    piece.assign(front).append(text_, 0, lastEnd_);
    text_.erase(0, lastEnd_);
    scanned_ -= lastEnd_;
    if (zero_ != npos) zero_ -= lastEnd_;
    lastEnd_ = 0;
    return true;
}

bool TextPieces::readMore() {
    const size_t old = text_.size();
    text_.resize(old + readSize);
    text_.resize(old + input_.read(text_.data() + old, readSize));
    findEnds();
    return text_.size() > old;
}

void TextPieces::findEnds() {
    for (; scanned_ < text_.size(); ++scanned_) {
        const char letter = text_[scanned_];
        if (letter == '"') quoted_ = !quoted_;
        if (letter == '\0' && zero_ == npos) zero_ = scanned_;
        if (letter == ';' && !quoted_) endCommand(scanned_ + 1);
    }
}

void TextPieces::endCommand(size_t after) {
    if (zero_ != npos) {
        zeros_.push_back({positionOf(zero_), "a zero byte: the command that holds it is left out", ""});
        std::replace_if(
            text_.begin() + static_cast<std::ptrdiff_t>(lastEnd_), text_.begin() + static_cast<std::ptrdiff_t>(after),
            [](char letter) { return letter != '\n'; }, ' ');
        zero_ = npos;
    }
    end_ = positionOf(after);
    lastEnd_ = after;
}

// Counted from the end of the last command, so that all of them together look at each byte once or twice.
Position TextPieces::positionOf(size_t at) const {
    Position position = end_;
    for (size_t place = lastEnd_; place < at; ++place) {
        ++position.column;
        if (text_[place] != '\n') continue;
        ++position.line;
        position.column = 1;
    }
    position.offset += at - lastEnd_;
    return position;
}

}  // namespace Zant::App
