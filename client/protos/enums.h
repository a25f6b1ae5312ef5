#ifndef ZANT_CLIENT_PROTOS_ENUMS_H
#define ZANT_CLIENT_PROTOS_ENUMS_H

/// The keyword tables, where hosts look for the vocabulary. They live on a floor of their own, below the symbols, which
/// send commands as the typed functions do.
///
/// Threads: constant data, to be read from every thread.
#include "client/keywords/enums.h"

#endif
