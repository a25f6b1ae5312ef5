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
        : owner_(lender), data_(std::exchange(lender.buffer, nullptr)), size_(std::exchange(lender.bufferSize, 0)) {
        lender.dataSize = 0;
    }
    LentBlock(const LentBlock&) = delete;
    LentBlock& operator=(const LentBlock&) = delete;
    ~LentBlock() {
        if (!owner_.buffer) {
            giveBack();
        } else {
            endAfterUse();
        }
    }

private:
    void giveBack() {
        owner_.buffer = data_;
        owner_.bufferSize = size_;
    }

    void endAfterUse() {
        char* unused = data_;
        if (owner_.dataSize == 0 && owner_.bufferSize < size_) {
            unused = owner_.buffer;
            giveBack();
        }
        delete[] unused;
    }

    ResizableBuffer& owner_;
    char* const data_;
    const size_t size_;
};

}  // namespace Zant

#endif
