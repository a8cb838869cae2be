#pragma once

#include "platform/ProgramStarter.h"

namespace qf {

/// Starts programs on the Linux desktop. A command line is a program name, a
/// blank, and everything after that blank as its one argument: never split,
/// never given to a shell. "Notepad.exe <path>" opens the file in the desktop's
/// text editor. The window style is left to the desktop.
class DesktopProgramStarter : public ProgramStarter {
public:
    /// @param editor The program that opens a text file.
    explicit DesktopProgramStarter(QString editor = QStringLiteral("xdg-open"));

    /// Starts the program detached, without waiting for it.
    /// @param commandLine Program name, a blank, its one argument.
    /// @param windowStyle Ignored.
    /// @throws qf::Error The program cannot be started (not installed, not runnable).
    void start(const QString& commandLine, int windowStyle) override;

private:
    QString m_editor;
};

} // namespace qf
