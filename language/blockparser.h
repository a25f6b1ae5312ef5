#ifndef ZANT_LANGUAGE_BLOCKPARSER_H
#define ZANT_LANGUAGE_BLOCKPARSER_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "client/encoding/blocklayout.h"
#include "language/formwalk.h"
#include "language/reader.h"

namespace Zant::Language {

/// Parses one binary block; nothing after its length is read.
class BlockParser : public FormWalk<BlockParser> {
public:
    BlockParser(const Grammar& vocabulary, SymbolResolver* resolver) : FormWalk(vocabulary), symbols_(resolver) {}

    /// @param size a multiple of 8, at least 24
    bool parse(const void* block, size_t size, Command& target);

    /// @return what stands at the mismatch, in words
    std::string found() const;

private:
    friend class FormWalk;

    int readings(const PlaceKind& place) const;
    static void skipSpace() {}
    static bool readSeparator(Grammar::Node, int) { return true; }
    Grammar::Node readKeyword(Grammar::Node node) { return grammar.byNumber(node, takeWord()); }
    bool readList(const PlaceKind& place);
    bool readNumber(double& number);
    bool readString();
    bool readVector(ZantVectorCore& vector);
    bool readAxes(ZantAxesCore& axes);
    bool readCoordSys(ZantCoordSysCore& coordSys);
    bool readSymbol();
    static const char* damageIn(const char* item) { return item; }

    bool readText(uint64_t length);
    bool readRegistered();
    size_t left() const { return static_cast<size_t>(end - here); }
    bool has(uint64_t words) const { return words <= left() / BlockLayout::wordSize; }
    uint64_t takeWord();
    void takeDoubles(double* values, size_t count);

    SymbolResolver* symbols_;
};

}  // namespace Zant::Language

#endif
