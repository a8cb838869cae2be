#include "GameRun.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

GameRun::GameRun(qf::launch::LaunchDescription launch, QString logFile, QObject* parent)
    : QObject(parent), m_launch(std::move(launch)), m_logFile(std::move(logFile))
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
    if (m_process.state() != QProcess::NotRunning)
        m_process.release();
}

void GameRun::start()
{
    QDir().mkpath(QFileInfo(m_logFile).path());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(m_logFile, QIODevice::Truncate);
    m_process.setWorkingDirectory(m_launch.workingFolder);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const qf::launch::EnvironmentChange& change : std::as_const(m_launch.environment))
        environment.insert(change.name, change.value);
    m_process.setProcessEnvironment(environment);
    // A session of its own: the game and its children outlive the launcher
    // together, and no signal meant for the launcher's terminal reaches them.
    m_process.setChildProcessModifier([] { ::setsid(); });
    m_process.start(m_launch.program, m_launch.arguments);
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
