#pragma once

#include <QList>
#include <QString>

// One game page of the sample launcher, as its host configuration gives it.
struct GameEntry {
    QString name;
    QString gameData;
    QString application;
    QString base;
    QString versionType;
    bool modSelection = false;
    bool commandLineParameters = false;
    bool configs = false;
    // Folder name of the demo installation the launcher creates for the game.
    QString installation;
};

struct LauncherConfig {
    QList<GameEntry> games;
    // [Launcher] WindowsRunner: the program that runs Windows games instead of
    // wine; empty for the default.
    QString windowsRunner;
};

// The games of a launcher configuration file (launcher.ini), in their order;
// no games when the file is missing.
LauncherConfig readLauncherConfig(const QString& file);
