#ifndef ZANT_ENGINES_SCENE_FAULTS_H
#define ZANT_ENGINES_SCENE_FAULTS_H

namespace Zant::Engine {

/// The misbehaviour that a host's own tests can ask for, so that they see what their plug-in does about it.
struct Faults {
    bool initRefused = false;          ///< the entry point writes no tables
    bool versionZero = false;          ///< the engine reports that it is not usable
    bool nullInstance = false;         ///< every instance is refused
    bool foreignEvent = false;         ///< events come from a thread of the engine's own
    bool eventsAtCreation = false;     ///< a line of text while an instance is created
    bool eventsAtDestruction = false;  ///< a line of text while it is destroyed
    bool lookupNothing = false;        ///< no object is found by its name
    bool wrongType = false;            ///< values are delivered as another type
    bool bitmapWithoutMemory = false;  ///< bitmaps have sizes and no pixels
    long failCommand = 0;  ///< the command of this number fails, counted from 1 in each instance; 0 for none
    long slowCommand = 0;  ///< every command takes that many milliseconds longer
};

}  // namespace Zant::Engine

#endif
