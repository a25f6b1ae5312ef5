#ifndef ZANT_CLIENT_LISTENERS_DISPATCH_H
#define ZANT_CLIENT_LISTENERS_DISPATCH_H

#include "client/records/zant_records.h"
#include "own/cxx17.h"

/// The event functions that an instance installs by itself. They keep no state and take no lock.
///
/// Threads: they run on whatever thread the engine raises the event on, on several at once.

/// Turns an event into one call of the listener of the event's instance, and writes the answer into the record.
/// Kinds above 18 and unknown selectors are ignored. The instance must have a listener.
void zant_cpp_handler(ZantEventData* event);

/// Does nothing: for an instance whose events nobody serves.
void zant_null_handler(ZantEventData* event);

#endif
