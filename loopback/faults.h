#ifndef ZANT_LOOPBACK_FAULTS_H
#define ZANT_LOOPBACK_FAULTS_H

#include <string>

namespace Zant::Loopback {

/// The misbehaviour that a host's own tests can ask for, so that they see what their plug-in does about it.
/// Each member stands for one word of the list in ZANT_LOOPBACK_FAULT.
struct Faults {
    bool initRefused = false;          // "init-refused": the entry point writes no tables
    bool versionZero = false;          // "version-0": the engine reports that it is not usable
    bool nullInstance = false;         // "null-instance": every instance is refused
    bool foreignEvent = false;         // "foreign-event": events come from a thread of the engine's own
    bool eventsAtCreation = false;     // "events-at-creation": a line of text while an instance is created
    bool eventsAtDestruction = false;  // "events-at-destruction": a line of text while it is destroyed
    bool lookupNothing = false;        // "lookup-nothing": no object is found by its name
    bool wrongType = false;            // "wrong-type": values are delivered as another type
    bool bitmapWithoutMemory = false;  // "bitmap-without-memory": bitmaps have sizes and no pixels
    long failCommand = 0;              // "fail-command=N": the N-th command of each instance fails, counted from 1
    long slowCommand = 0;              // "slow-command=MS": every command takes that many milliseconds longer
};

/// Reads a list of faults separated by commas; spaces around them do not matter.
/// @param complaints receives one line for every entry that is no fault; such entries are left out.
Faults parseFaults(const std::string& list, std::string& complaints);

}  // namespace Zant::Loopback

#endif
