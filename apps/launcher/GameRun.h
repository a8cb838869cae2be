#pragma once

#include "GameCommand.h"

#include <QObject>
#include <QProcess>

// One start of a game: the process, its output going to the game's log file,
// and how it ended.
class GameRun : public QObject {
    Q_OBJECT
public:
    // runner: empty to start the program itself, else the program that runs it.
    GameRun(GameCommand command, QString runner, QString folder, QString logFile,
            QObject* parent = nullptr);
    // A game still running ends with it.
    ~GameRun() override;

    // Starts the process; the outcome arrives as ended().
    void start();
    const QString& logFile() const { return m_logFile; }

signals:
    // problem is empty when the game ended normally with code 0.
    void ended(const QString& problem);

private:
    void finish(int exitCode, QProcess::ExitStatus status);

    GameCommand m_command;
    QString m_runner;
    QString m_folder;
    QString m_logFile;
    QProcess m_process;
    bool m_ended = false;
};
