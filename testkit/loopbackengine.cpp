#include "testkit/loopbackengine.h"

#include <stdexcept>
#include <string>

namespace Zant::Testkit {

LoopbackEngine::LoopbackEngine(const std::string& engineDirectory) : commandLog_(engineDirectory) {
    if (library().isLoaded()) throw std::runtime_error("an engine is loaded already: it would not write to this log");
    std::string reason;
    if (!library().loadExplicitly(commandLog_.engineDirectory().c_str())) {
        reason = library().getLoadError();
    } else if (!commandLog_.isRecording()) {
        reason = "what is in " + commandLog_.engineDirectory() + " writes no log";
    } else {
        return;
    }
    library().unloadExplicitly();
    throw std::runtime_error("the loopback engine does not start: " + reason);
}

LoopbackEngine::~LoopbackEngine() {
    library().unloadExplicitly();
}

}  // namespace Zant::Testkit
