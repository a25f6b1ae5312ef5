#ifndef ZANT_OWN_LENTBLOCK_H
#define ZANT_OWN_LENTBLOCK_H

#include <utility>

#include "own/resizablebuffer.h"

namespace Zant {

/// Takes a buffer's block out while somebody else reads it: what is written into the buffer meanwhile gets a block of
/// its own. When it ends, the larger block goes back; the new one stays where there is data in it.
class LentBlock {
public:
    explicit LentBlock(ResizableBuffer& lender)
        : owner(lender), data(std::exchange(lender.buffer, nullptr)), size(std::exchange(lender.bufferSize, 0)) {
        lender.dataSize = 0;
    }
    LentBlock(const LentBlock&) = delete;
    LentBlock& operator=(const LentBlock&) = delete;
    ~LentBlock() {
        if (!owner.buffer) {
            giveBack();
        } else {
            endAfterUse();
        }
    }

private:
    void giveBack() {
        owner.buffer = data;
        owner.bufferSize = size;
    }

    void endAfterUse() {
        char* unused = data;
        if (owner.dataSize == 0 && owner.bufferSize < size) {
            unused = owner.buffer;
            giveBack();
        }
        delete[] unused;
    }

    ResizableBuffer& owner;
    char* const data;
    const size_t size;
};

}  // namespace Zant

#endif
