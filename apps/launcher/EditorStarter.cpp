#include "EditorStarter.h"

#include "platform/MessageBox.h"
#include "platform/Paths.h"

#include <QProcess>

EditorStarter::EditorStarter(std::shared_ptr<qf::MessageBox> messages, QString editor)
    : m_messages(std::move(messages)), m_editor(std::move(editor))
{
}

void EditorStarter::start(const QString& commandLine, int /*windowStyle*/)
{
    // Everything after the program name is the one file to open.
    const qsizetype blank = commandLine.indexOf(u' ');
    const QString file = qf::paths::resolve(blank < 0 ? QString() : commandLine.sliced(blank + 1));
    auto* process = new QProcess(this);
    connect(process, &QProcess::errorOccurred, this,
            [this, process, file](QProcess::ProcessError error) {
                if (error != QProcess::FailedToStart)
                    return;
                report(file, tr("%1 is not installed.").arg(m_editor));
                process->deleteLater();
            });
    connect(process, &QProcess::finished, this,
            [this, process, file](int exitCode, QProcess::ExitStatus status) {
                if (status != QProcess::NormalExit || exitCode != 0)
                    report(file,
                           tr("%1 could not open it (exit code %2).").arg(m_editor).arg(exitCode));
                process->deleteLater();
            });
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(m_editor, {file});
}

void EditorStarter::report(const QString& file, const QString& reason)
{
    m_messages->show(tr("The config file %1 could not be opened in an editor.\n%2\n"
                        "Install a desktop opener and a text editor (Debian: xdg-utils and "
                        "gedit or kate), then press Edit again.")
                         .arg(file, reason),
                     48, tr("Edit"));
}
