#ifndef ZANT_ENGINES_SCENE_CODES_H
#define ZANT_ENGINES_SCENE_CODES_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Zant::Engine {

/// The answers of the parser, 0 for success. Each failure comes with one line of text that explains it.
enum Code {
    Fine = 0,
    NotUnderstood = 1,  ///< unknown command word, or no form of the command fits
    UnknownObject = 2,  ///< the command acts on an object that does not exist
    WrongKind = 3,      ///< the object exists and is of another kind
    BadValue = 4,       ///< a size, an index or a value outside of what the object can hold
    NoFile = 5,         ///< a command file cannot be read
    TooDeep = 6,        ///< command files include each other without an end
    OutOfMemory = 7,    ///< there is no memory for what the command asks for
    Injected = 8,       ///< the fault that the environment asked for
    DeadContext = 9,    ///< the parser context belongs to no living instance, or the mode is none
    NotRecorded = 10,   ///< the command was carried out and could not be written to the transcript
    Busy = 11           ///< a picture is in the making, and the command is about another one
};

/// What became of a command.
struct Outcome {
    static constexpr size_t wholeCommand = SIZE_MAX;

    int code = Fine;
    std::string message{};        ///< what went wrong, for the reader of the error line
    size_t place = wholeCommand;  ///< the value of the command that it is about
};

}  // namespace Zant::Engine

#endif
