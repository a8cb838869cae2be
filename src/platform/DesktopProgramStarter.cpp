#include "platform/DesktopProgramStarter.h"

#include "platform/Errors.h"
#include "platform/Paths.h"

#include <QProcess>

namespace qf {

DesktopProgramStarter::DesktopProgramStarter(QString editor) : m_editor(std::move(editor)) {}

void DesktopProgramStarter::start(const QString& commandLine, int /*windowStyle*/)
{
    const qsizetype blank = commandLine.indexOf(u' ');
    QString program = blank < 0 ? commandLine : commandLine.first(blank);
    QStringList arguments;
    if (blank >= 0)
        arguments.append(commandLine.sliced(blank + 1));
    // The editor's file is a path written the Windows way.
    if (program.compare(u"Notepad.exe", Qt::CaseInsensitive) == 0) {
        program = m_editor;
        if (!arguments.isEmpty())
            arguments.first() = paths::resolve(arguments.first());
    }
    if (!QProcess::startDetached(program, arguments))
        throw Error(QStringLiteral("Cannot start \"%1\"").arg(commandLine));
}

} // namespace qf
