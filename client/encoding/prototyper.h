#ifndef ZANT_CLIENT_ENCODING_PROTOTYPER_H
#define ZANT_CLIENT_ENCODING_PROTOTYPER_H

#include "own/cxx17.h"

namespace Zant {

class CommandBuffer;
class Instance;

/// The word that the typed command functions read: where to write the command.
class ProtoBase {
public:
    CommandBuffer* buffer = nullptr;
};

/// What the typed command functions take as their first argument, as a void pointer.
class Protos : public ProtoBase {};
static_assert(sizeof(Protos) == 8, "typed functions read the word that they are given");

/// Holds the buffer that typed commands are written into.
///
/// The address that typed functions take is not the object's own; protos() gives it:
/// `fg2_gradients(prototyper.protos(), 0.5, 2)`.
///
/// Threads: one at a time, together with every symbol on its buffer. Give each thread a prototyper of its own; on one
/// instance they take turns, on different instances they may overlap.
class Prototyper : public Protos {
public:
    bool ownsBuffer = true;  ///< whether the buffer is deleted with the prototyper

    /// Takes the buffer over; it may be null.
    explicit Prototyper(CommandBuffer* commands);

    /// Writes quick text to the instance, which outlives the prototyper.
    explicit Prototyper(Instance* instance);

    Prototyper(const Prototyper&) = delete;
    Prototyper& operator=(const Prototyper&) = delete;
    virtual ~Prototyper();

    /// @return the first argument of the typed command functions
    Protos* protos() { return this; }
};

/// The first argument of the typed command functions, made from a prototyper and from nothing else:
/// `Proto proto(prototyper); fg2_gradients(proto, 0.5, 2);`. The prototyper outlives it.
class Proto {
public:
    Proto(Prototyper& prototyper) : protos_(prototyper.protos()) {}
    operator void*() const { return protos_; }

private:
    Protos* protos_;
};

/// Writes binary blocks to an instance, and can send ready-made text to it. Threads: as every prototyper.
class DirectPrototyper : public Prototyper {
public:
    explicit DirectPrototyper(Instance* instance);
    ~DirectPrototyper() override;

    /// Sends text, as it is, to the instance's parser, past the block under construction and its error state.
    /// @return the parser's result, 0 for success and without an instance
    int parse(const char* text);
};

}  // namespace Zant

#endif
