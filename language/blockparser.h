#ifndef ZANT_LANGUAGE_BLOCKPARSER_H
#define ZANT_LANGUAGE_BLOCKPARSER_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "client/encoding/blocklayout.h"
#include "language/command.h"
#include "language/grammar.h"
#include "language/mismatch.h"
#include "language/reader.h"

namespace Zant {

/// Parses one binary block. Offsets count from its start; nothing behind its length is read.
class BlockParser {
public:
    BlockParser(const Grammar& vocabulary, SymbolResolver* resolver) : grammar(vocabulary), symbols(resolver) {}

    /// @param size a multiple of 8, at least 24
    bool parse(const void* block, size_t size, Command& target);

    const Mismatch& mismatch() const { return deepest; }
    /// @return what stands at the mismatch, in words
    std::string found() const;

private:
    /// A length word of 0 stands for a null text, which ends there, and for an empty one, with a zero byte behind it.
    enum class EmptyText { Terminated, Null };

    bool walk(Grammar::Node node, int depth);
    bool walkKeyword(Grammar::Node node, int depth);
    bool walkArgument(Grammar::Node node, int depth, uint32_t step, EmptyText emptyText);
    bool readArgument(ArgumentKind kind);
    bool readList(ArgumentKind kind);
    bool readItem(ArgumentKind kind);
    bool readNumber(ArgumentKind kind);
    bool readString();
    bool readText(uint64_t length);
    bool readVector();
    bool readAxes(ZantAxesCore& axes);
    bool readCoordSys();
    bool readSymbol();
    bool readRegistered();
    bool fail(const char* why);
    void note(Problem problem, Grammar::Node node, int depth, size_t at, ArgumentKind expected = ArgumentKind::Keyword);

    bool has(uint64_t words) const { return words <= (end - here) / BlockLayout::wordSize; }
    uint64_t takeWord();
    void takeDoubles(double* values, size_t count);

    const Grammar& grammar;
    SymbolResolver* symbols;
    Command* command = nullptr;
    const unsigned char* bytes = nullptr;
    size_t here = 0;  // a multiple of 8
    size_t end = 0;   // the end marker of the block, or of the list that is being read
    EmptyText empty = EmptyText::Terminated;
    const char* complaint = nullptr;
    Mismatch deepest;
};

}  // namespace Zant

#endif
