#ifndef ZANT_TESTKIT_LOOPBACKENGINE_H
#define ZANT_TESTKIT_LOOPBACKENGINE_H

#include <string>

#include "client/engine/library.h"
#include "testkit/commandlog.h"

namespace Zant::Testkit {

/// A command log with the loopback engine loaded, for code that is linked into the test program and reaches the engine
/// through the same copy of the client library (Zant::getLibrary). A plug-in that is a module of its own has a copy of
/// its own: begin a CommandLog, and let the plug-in load the engine.
///
///     Zant::Testkit::LoopbackEngine engine(LOOPBACK_DIRECTORY);
///     exportScene(engine.library().createInstance());
///     const auto result = engine.log().check("fg gradients,0.5,2;");
class LoopbackEngine {
public:
    /// Throws std::runtime_error with the reason when an engine is loaded already, and when this one does not load or
    /// does not write to the log.
    explicit LoopbackEngine(const std::string& engineDirectory);
    /// Releases every instance and unloads the engine.
    ~LoopbackEngine();
    LoopbackEngine(const LoopbackEngine&) = delete;
    LoopbackEngine& operator=(const LoopbackEngine&) = delete;

    Library& library() { return *getLibrary(nullptr); }
    CommandLog& log() { return commandLog_; }

private:
    CommandLog commandLog_;
};

}  // namespace Zant::Testkit

#endif
