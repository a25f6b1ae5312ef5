#ifndef ZANT_CLIENT_ENCODING_COMMANDBINARYBUFFER_H
#define ZANT_CLIENT_ENCODING_COMMANDBINARYBUFFER_H

#include <string_view>

#include "client/commands/commandbuffer.h"
#include "own/resizablebuffer.h"

namespace Zant {

/// Writes each command as one block of words; client/encoding/blocklayout.h says what stands in it.
///
/// A vector with a count above 4 is written with 4, axes with more than 3 rows with 3; negative words are written as
/// they are.
///
/// While there is an error, parse() drops its command. A command abandoned without parse() stays in front of the next,
/// unless discard() drops it. While the parser reads a block, an event may send another command through the same
/// buffer: that one has a block of its own.
///
/// Threads: one at a time.
class CommandBinaryBuffer : public CommandBuffer {
public:
    explicit CommandBinaryBuffer(Instance* owner);
    ~CommandBinaryBuffer() override;

    /// Sends the block, which lives in the buffer and is overwritten by the next command. While there is an error, and
    /// without an instance, it is dropped.
    void parse() override;
    void addEnum(int number, const char* word) override;
    void addDouble(double value) override;
    using CommandBuffer::addString;
    void addString(const char* string) override;
    void addVector(const Vector& vector) override;
    void addAxes(const Axes& axes) override;
    void addCoordSys(const CoordSys& coordSys) override;
    void addSymbol(const Symbol& symbol) override;
    void addVarLenDouble(const VarLenDouble& list) override;
    void addVarLenVector(const VarLenVector& list) override;
    void addVarLenAxes(const VarLenAxes& list) override;
    void addVarLenCoordSys(const VarLenCoordSys& list) override;
    void addVarLenSymbol(const VarLenSymbol& list) override;

    /// Drops the items of a command that has not been parsed. The error, if there is one, stays.
    void discard();

protected:
    /// Finishes the block, for a subclass that takes blocks itself instead of parse(). discard() begins the next one.
    /// @return the bytes of the block, which live in the buffer until the next operation
    std::string_view finish();

    /// @return the place of the next item, which is after the last one and its padding
    char* nextItem() const { return position_; }

private:
    ResizableBuffer block_;
    char* position_ = nullptr;   ///< in the block: where the next item starts, at a multiple of 8
    char* lastPlace_ = nullptr;  ///< up to here there is room for any item of a fixed size

    ZANT_COLD void grow(size_t words);  // inlined, it would cost every item a stack frame
    template <class Item>
    ZANT_COLD void growAndRepeat(size_t words, Item item);
    ZANT_COLD void growBesideParser(size_t words);
    ZANT_COLD void beginAfter(const char* sent);
    bool isBeingParsed() const;
    void continueAt(size_t used);
    void begin();
    /// @return where the words start
    char* take(size_t words);
    char* takeGrowing(size_t words);
    template <class T>
    void addVarLen(const VarLenTemplate<T>& list);
    ZANT_COLD void addCutVector(Vector vector);
    void addAxesCore(const ZantAxesCore& axes);

    void addItem(const Double& item) { addDouble(item.value); }
    void addItem(const Vector& item) { addVector(item); }
    void addItem(const AxesHpb& item) { addAxes(item); }
    void addItem(const CoordSys& item) { addCoordSys(item); }
    void addItem(const Symbol* item) { addSymbol(*item); }
};

}  // namespace Zant

#endif
