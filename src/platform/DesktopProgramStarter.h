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

    /// Starts the program without waiting for it; startWatched() with no one told.
    /// @param commandLine Program name, a blank, its one argument.
    /// @param windowStyle Ignored.
    /// @throws qf::Error The program cannot be started (not installed, not runnable).
    void start(const QString& commandLine, int windowStyle) override;
    /// A program that ends with an error, or is killed, counts as failed;
    /// failed is told from the event loop of the host's application object
    /// (without one, the program runs detached and nothing is told).
    /// @param commandLine Program name, a blank, its one argument.
    /// @param windowStyle Ignored.
    /// @param failed Told the reason, for a person; may be empty.
    /// @throws qf::Error The program cannot be started (not installed, not runnable).
    void startWatched(const QString& commandLine, int windowStyle,
                      const LateFailure& failed) override;

private:
    QString m_editor;
};

} // namespace qf
