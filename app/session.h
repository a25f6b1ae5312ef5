#ifndef ZANT_APP_SESSION_H
#define ZANT_APP_SESSION_H

#include <string>

#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/listeners/linkedlisteners.h"

namespace Zant::App {

/// The directory of the loopback engine that was built or installed with the program, with its final separator.
std::string loopbackDirectory();

/// Writes an engine's text to standard output. Serves one instance on one thread.
class ConsoleListener : public DispatchLinkedListener {
public:
    TextListener* createTextListner() override;
};

/// An engine and one instance of it, for the lifetime of the session.
class Session {
public:
    /// Loads the engine of a directory (empty: the loopback engine).
    explicit Session(const std::string& directory);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The instance, or null when the engine could not be loaded or refused it; reason() then says why.
    Instance* instance() const { return live; }
    const std::string& reason() const { return failure; }
    const Library& library() const { return engine; }

private:
    Library engine;
    ConsoleListener console;
    Instance* live = nullptr;
    std::string failure;
};

}  // namespace Zant::App

#endif
