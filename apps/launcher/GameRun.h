#pragma once

#include "launch/Launch.h"

#include <QObject>
#include <QProcess>

// The process of a started game; let go of, rather than killed, when the
// launcher closes.
class GameProcess : public QProcess {
public:
    using QProcess::QProcess;
    // Forgets the process without ending it: QProcess would kill a running one
    // on destruction.
    void release() { setProcessState(QProcess::NotRunning); }
};

// One start of a game: the process in a session of its own, its output going
// to the game's log file, and how it ended.
class GameRun : public QObject {
    Q_OBJECT
public:
    GameRun(qf::launch::LaunchDescription launch, QString logFile, QObject* parent = nullptr);
    // A game still running keeps running, with everything it started, as when
    // the player started it from a menu; only the launcher stops watching it.
    ~GameRun() override;

    // Starts the process; the outcome arrives as ended().
    void start();
    const QString& logFile() const { return m_logFile; }

signals:
    // problem is empty when the game ended normally with code 0.
    void ended(const QString& problem);

private:
    void finish(int exitCode, QProcess::ExitStatus status);

    qf::launch::LaunchDescription m_launch;
    QString m_logFile;
    GameProcess m_process;
    bool m_ended = false;
};
