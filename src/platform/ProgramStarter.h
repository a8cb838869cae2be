#pragma once

#include <QString>

#include <functional>

namespace qf {

/// Starts a program from a command line without waiting for it. Hosts and tests
/// may substitute their own implementation.
class ProgramStarter {
public:
    /// Told why a program that was started failed after all.
    using LateFailure = std::function<void(const QString& reason)>;

    /// Destroys the starter; programs it started run on.
    virtual ~ProgramStarter() = default;

    /// Starts the program of a command line.
    /// @param commandLine Program name and arguments.
    /// @param windowStyle As the control gives it (1: a normal window with the focus).
    /// @throws qf::Error The program cannot be started.
    virtual void start(const QString& commandLine, int windowStyle) = 0;

    /// start(), and failed is told of a failure found only after the call has
    /// returned, such as an editor that gave up on the file. A starter that
    /// cannot tell keeps this default, which calls start() alone.
    /// @param commandLine As for start().
    /// @param windowStyle As for start().
    /// @param failed Told the reason, for a person; may be empty.
    /// @throws qf::Error The program cannot be started.
    virtual void startWatched(const QString& commandLine, int windowStyle,
                              const LateFailure& failed)
    {
        (void)failed;
        start(commandLine, windowStyle);
    }
};

} // namespace qf
