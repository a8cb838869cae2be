#pragma once

#include <QString>

namespace qf {

// Starts a program from a command line without waiting for it. Hosts and tests
// may substitute their own implementation.
class ProgramStarter {
public:
    virtual ~ProgramStarter() = default;

    // windowStyle as the control gives it (1: a normal window with the focus).
    // Throws qf::Error when the program cannot be started.
    virtual void start(const QString& commandLine, int windowStyle) = 0;
};

} // namespace qf
