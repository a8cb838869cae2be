#include "GameRun.h"

#include <QDir>
#include <QFileInfo>

GameRun::GameRun(GameCommand command, QString runner, QString folder, QString logFile,
                 QObject* parent)
    : QObject(parent), m_command(std::move(command)), m_runner(std::move(runner)),
      m_folder(std::move(folder)), m_logFile(std::move(logFile))
{
    connect(&m_process, &QProcess::finished, this, &GameRun::finish);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart && !m_ended) {
            m_ended = true;
            emit ended(tr("The game could not be started: %1").arg(m_process.errorString()));
        }
    });
}

GameRun::~GameRun()
{
    disconnect(&m_process, nullptr, this, nullptr);
}

void GameRun::start()
{
    QDir().mkpath(QFileInfo(m_logFile).path());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(m_logFile, QIODevice::Truncate);
    m_process.setWorkingDirectory(m_folder);
    if (m_runner.isEmpty())
        m_process.start(m_command.program, m_command.arguments);
    else
        m_process.start(m_runner, QStringList{m_command.program} + m_command.arguments);
}

void GameRun::finish(int exitCode, QProcess::ExitStatus status)
{
    if (m_ended)
        return;
    m_ended = true;
    if (status == QProcess::CrashExit)
        emit ended(tr("The game crashed."));
    else if (exitCode != 0)
        emit ended(tr("The game ended with exit code %1.").arg(exitCode));
    else
        emit ended({});
}
