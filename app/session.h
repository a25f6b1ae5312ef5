#ifndef ZANT_APP_SESSION_H
#define ZANT_APP_SESSION_H

#include <string>

#include "client/listeners/linkedlisteners.h"

namespace Zant::App {

/// The directory of an engine as the program's options name it, with its final separator: "loopback" (the default) and
/// "preview" are those that were built or installed with the program, anything else is a directory as it stands.
std::string engineDirectory(const std::string& asked);

/// Writes an engine's text to standard output. Serves one instance on one thread.
class ConsoleListener : public DispatchLinkedListener {
public:
    TextListener* createTextListner() override;
};

}  // namespace Zant::App

#endif
