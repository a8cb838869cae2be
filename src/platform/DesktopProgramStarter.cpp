#include "platform/DesktopProgramStarter.h"

#include "platform/Errors.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QProcess>

namespace qf {

DesktopProgramStarter::DesktopProgramStarter(QString editor) : m_editor(std::move(editor)) {}

void DesktopProgramStarter::start(const QString& commandLine, int windowStyle)
{
    startWatched(commandLine, windowStyle, {});
}

void DesktopProgramStarter::startWatched(const QString& commandLine, int /*windowStyle*/,
                                         const LateFailure& failed)
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
    // Without an event loop nothing could watch the program: it runs detached.
    if (!QCoreApplication::instance()) {
        if (!QProcess::startDetached(program, arguments))
            throw Error(QStringLiteral("%1 is not installed or cannot be run.").arg(program));
        return;
    }
    // Otherwise a process of ours, which tells how it ended. It has no parent,
    // so a host that quits first does not take the editor and a person's unsaved text with it.
    auto* process = new QProcess;
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(program, arguments);
    if (!process->waitForStarted()) {
        const QString reason = process->errorString();
        delete process;
        throw Error(
            QStringLiteral("%1 is not installed or cannot be run (%2).").arg(program, reason));
    }
    QObject::connect(
        process, &QProcess::finished, process,
        [process, program, failed](int exitCode, QProcess::ExitStatus status) {
            if (failed && status != QProcess::NormalExit)
                failed(QStringLiteral("%1 stopped unexpectedly.").arg(program));
            else if (failed && exitCode != 0)
                failed(QStringLiteral("%1 ended with exit code %2.").arg(program).arg(exitCode));
            process->deleteLater();
        });
}

} // namespace qf
