#ifndef ZANT_APP_TEXTPIECES_H
#define ZANT_APP_TEXTPIECES_H

#include <string>
#include <vector>

#include "app/inputfile.h"

namespace Zant::App {

/// Cuts command text of any size into pieces that an engine can be given one after the other, in a few megabytes.
///
/// A piece ends after a command. It begins with as many empty lines and blanks as stand in front of it in the file, so
/// that engines count lines and columns from the start of the file. A command that holds a zero byte is blanked out.
class TextPieces {
public:
    explicit TextPieces(InputFile& openInput) : input_(openInput) {}

    /// @return false at the end
    bool next(std::string& piece);

    /// The zero bytes of the last piece.
    const std::vector<Diagnostic>& zeroBytes() const { return zeros_; }

private:
    bool readMore();
    void findEnds();
    void endCommand(size_t after);
    Position positionOf(size_t at) const;

    InputFile& input_;
    std::string text_;       // not yet given out
    size_t scanned_ = 0;     // of it
    size_t lastEnd_ = 0;     // after the last whole command of it
    bool quoted_ = false;    // whether scanned stands inside of quotes
    size_t zero_ = npos;     // the first zero byte after lastEnd in it
    Position end_{0, 1, 1};  // in the file, of lastEnd
    std::vector<Diagnostic> zeros_;

    static constexpr size_t npos = std::string::npos;
};

}  // namespace Zant::App

#endif
