#ifndef ZANT_LANGUAGE_TEXTPARSER_H
#define ZANT_LANGUAGE_TEXTPARSER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "language/command.h"
#include "language/grammar.h"
#include "language/mismatch.h"

namespace Zant {

/// Parses the text of one command.
///
/// The text is followed by a ";" in memory, which stops every scan; inside of it, ";" stands in quotes only.
class TextParser {
public:
    explicit TextParser(const Grammar& vocabulary) : grammar(vocabulary) {}

    /// @param first the command word, not white space
    /// @param last the ";" behind the text
    /// @return whether the text is a command; otherwise mismatch() says why not
    bool parse(const char* first, const char* last, Command& target);

    const Mismatch& mismatch() const { return deepest; }

    /// @return what stands at the mismatch, in words, and, when it is a bare word, the word itself
    std::string found() const;
    std::string foundWord() const;

private:
    bool walk(Grammar::Node node, int depth);
    bool walkKeyword(Grammar::Node node, int depth);
    bool walkArgument(Grammar::Node node, int depth, uint32_t step);
    bool separator(Grammar::Node node, int depth);
    Grammar::Node readKeyword(Grammar::Node node);
    bool readArgument(ArgumentKind kind);
    bool readList(ArgumentKind kind);
    bool readItem(ArgumentKind kind);
    bool readNumber(double& number);
    bool readAngle(double& radians);
    bool readCheckedNumber(ArgumentKind kind);
    bool readRow(double* values, int minimum, int maximum, int& count);
    bool readVector();
    bool readAxes(ZantAxesCore& axes);
    bool readAngles(ZantAxesCore& axes);
    bool readScales(ZantAxesCore& axes);
    bool readRows(ZantAxesCore& axes);
    bool readCoordSys();
    bool readQuoted(size_t& length);
    bool readSymbol();
    bool fail(const char* why);
    void note(Problem problem, Grammar::Node node, int depth, const char* at,
              ArgumentKind expected = ArgumentKind::Keyword);
    void skipSpace();
    bool take(char character);

    const Grammar& grammar;
    Command* command = nullptr;
    const char* start = nullptr;
    const char* here = nullptr;
    const char* end = nullptr;
    const char* complaint = nullptr;  // why the argument is damaged; null when it is none at all
    Mismatch deepest;
};

}  // namespace Zant

#endif
