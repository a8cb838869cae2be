#pragma once

#include <QString>

namespace qf {

/// Starts a program from a command line without waiting for it. Hosts and tests
/// may substitute their own implementation.
class ProgramStarter {
public:
    virtual ~ProgramStarter() = default;

    /// Starts the program of a command line.
    /// @param commandLine Program name and arguments.
    /// @param windowStyle As the control gives it (1: a normal window with the focus).
    /// @throws qf::Error The program cannot be started.
    virtual void start(const QString& commandLine, int windowStyle) = 0;
};

} // namespace qf
