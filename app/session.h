#ifndef ZANT_APP_SESSION_H
#define ZANT_APP_SESSION_H

#include <string>

#include "client/listeners/linkedlisteners.h"

namespace Zant::App {

/// The directory of the loopback engine that was built or installed with the program, with its final separator.
std::string loopbackDirectory();

/// Writes an engine's text to standard output. Serves one instance on one thread.
class ConsoleListener : public DispatchLinkedListener {
public:
    TextListener* createTextListner() override;
};

}  // namespace Zant::App

#endif
