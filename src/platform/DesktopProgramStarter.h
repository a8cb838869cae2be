#pragma once

#include "platform/ProgramStarter.h"

namespace qf {

// Starts programs on the Linux desktop. A command line is a program name, a
// blank, and everything after that blank as its one argument: never split,
// never given to a shell. "Notepad.exe <path>" opens the file in the desktop's
// text editor. The window style is left to the desktop.
class DesktopProgramStarter : public ProgramStarter {
public:
    // editor: the program that opens a text file.
    explicit DesktopProgramStarter(QString editor = QStringLiteral("xdg-open"));

    void start(const QString& commandLine, int windowStyle) override;
    // A program that ends with an error, or is killed, counts as failed;
    // failed is told from the event loop of the host's application object
    // (without one, the program runs detached and nothing is told).
    void startWatched(const QString& commandLine, int windowStyle,
                      const LateFailure& failed) override;

private:
    QString m_editor;
};

} // namespace qf
