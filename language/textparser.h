#ifndef ZANT_LANGUAGE_TEXTPARSER_H
#define ZANT_LANGUAGE_TEXTPARSER_H

#include <string>

#include "language/formwalk.h"

namespace Zant::Language {

/// Parses the text of one command.
///
/// The text is followed by a ";" in memory, which stops every scan; inside of it, ";" stands in quotes only.
class TextParser : public FormWalk<TextParser> {
public:
    using FormWalk::FormWalk;

    /// @param first the command word, not white space
    /// @param last the ";" after the text
    /// @return whether the text is a command; otherwise mismatch() says why not
    bool parse(const char* first, const char* last, Command& target);

    /// @return what stands at the mismatch, in words, and, when it is a bare word, the word itself
    std::string found() const;
    std::string foundWord() const;

private:
    friend class FormWalk;

    static int readings(const PlaceKind&) { return 1; }
    void skipSpace();
    bool readSeparator(Grammar::Node node, int depth);
    Grammar::Node readKeyword(Grammar::Node node);
    bool readList(const PlaceKind& place);
    bool readNumber(double& number);
    bool readString();
    bool readVector(ZantVectorCore& vector);
    bool readAxes(ZantAxesCore& axes);
    bool readCoordSys(ZantCoordSysCore& coordSys);
    bool readSymbol();
    const char* damageIn(const char*) const { return here; }

    bool readLongNumber(double& number);
    bool readAngle(double& radians);
    bool readRow(double* values, int minimum, int maximum, int& count);
    bool readAngles(ZantAxesCore& axes);
    bool readScales(ZantAxesCore& axes);
    bool readRows(ZantAxesCore& axes);
    bool readQuoted(size_t& length);
    bool take(char character);
};

}  // namespace Zant::Language

#endif
