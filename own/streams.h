#ifndef ZANT_OWN_STREAMS_H
#define ZANT_OWN_STREAMS_H

#include <cstdint>
#include <cstdio>
#include <string>

#include "own/cxx17.h"

/// What the platform knows of open streams and of itself. Internal.
namespace Zant {
namespace Platform {

/// To be called first in a program: on every platform the standard streams then carry the bytes that are written, and a
/// file at its largest size is an error like a full disk.
void prepareStandardStreams();

/// Whether a stream is a terminal that understands the usual escapes.
bool isTerminal(std::FILE* stream);

/// @return the size of a regular file in bytes, 0 for everything else
uint64_t regularSize(std::FILE* stream);

/// Whether a name stands for what standard output is, such as /dev/stdout.
bool isStandardOutput(const std::string& name);

/// "Linux 6.1.0 x86_64"
std::string systemName();

}  // namespace Platform
}  // namespace Zant

#endif
