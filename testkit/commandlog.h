#ifndef ZANT_TESTKIT_COMMANDLOG_H
#define ZANT_TESTKIT_COMMANDLOG_H

#include <cstddef>
#include <string>

#include "testkit/environment.h"
#include "testkit/transcript.h"

/// The test kit: with it a plug-in's own tests say "these commands were sent", without the real engine.
///
///     Zant::Testkit::CommandLog log(LOOPBACK_DIRECTORY);  // before the plug-in loads an engine
///     Plugin plugin(log.engineDirectory());               // loads the loopback engine and sends commands
///     const auto result = log.check(R"(
///         fg gradients,0.5,2;
///         fg render;
///     )");
///     EXPECT_TRUE(result) << result.message();
///
/// LOOPBACK_DIRECTORY is the variable Zant_LOOPBACK_DIR of the CMake package. testkit/loopbackengine.h loads the engine
/// as well, for a plug-in whose code is linked into the test program.
///
/// Threads: the environment of the process is changed when a log or a fault begins and ends. Let that happen while no
/// other thread runs.
namespace Zant::Testkit {

/// Writes down the commands that the loopback engine carries out, from all instances, in the order in which they
/// arrive. A command that the engine refuses is not among them. Numbers stand there as the client's text buffers write
/// them, with at most eight decimals, whichever encoding they came in.
///
/// The engine decides whether to write when it is initialised. So the log must be there before an engine is loaded, and
/// end after the engine was unloaded; at most one log at a time. Loading the engine again while the log is there goes
/// on with the same log. A check without an engine that writes to the log fails, and says so.
class CommandLog {
public:
    /// @param engineDirectory the folder of the loopback engine, with or without its final separator
    /// Throws std::runtime_error when there is no folder of that name, when there is a log already, or when no
    /// temporary folder can be made.
    explicit CommandLog(const std::string& engineDirectory);
    /// Removes what was written down, and sets the environment back.
    ~CommandLog();
    CommandLog(const CommandLog&) = delete;
    CommandLog& operator=(const CommandLog&) = delete;

    /// What to load the engine from: the folder with its final separator.
    const std::string& engineDirectory() const { return directory_; }

    /// Whether an engine has begun to write to this log.
    bool isRecording() const;
    /// The commands so far, without those before the last forget(). Empty when no engine writes to this log.
    Transcript sent() const;
    /// Leaves out of sent() what was sent up to now: for tests with several steps.
    void forget();

    /// Whether exactly these commands were sent, in canonical text; see Transcript::fromText().
    Result check(const std::string& expectedCommands) const;
    /// The same with the commands in a file, which sent().save(file) has written once.
    Result checkFile(const std::string& file) const;

private:
    Result check(const Transcript& expected) const;

    std::string directory_;
    TemporaryFolder folder_;
    std::string file_;  // in it; the engine creates it
    size_t forgotten_ = 0;
    ScopedVariable variable_;
    ScopedVariable numbers_;  // so that the same call gives the same text in every encoding
};

/// Asks the loopback engine for misbehaviour, such as "fail-command=3" or "lookup-nothing, version-0", as long as it
/// lives. Like the log it must be there before an engine is loaded. The engine names what it does not know on the
/// standard error.
class LoopbackFault {
public:
    explicit LoopbackFault(const std::string& faults) : variable_("ZANT_LOOPBACK_FAULT", faults) {}

private:
    ScopedVariable variable_;
};

/// Watches for calls that the contract with the engine forbids (calls after release, on handles that are gone, from two
/// threads at once) as long as it lives. It must be there before an engine is loaded, and end after it was unloaded.
class ContractWatch {
public:
    ContractWatch();

    /// Whether no forbidden call was seen; the message has a line for each. Fails when no engine was watched.
    /// Check after the engine was unloaded: that is where many mistakes show.
    Result check() const;

private:
    TemporaryFolder folder_;
    std::string file_;  // in it; the engine creates it
    ScopedVariable variable_;
};

}  // namespace Zant::Testkit

#endif
