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

// The games of <hostFolder>/launcher.ini, in their order; empty when the file
// is missing.
QList<GameEntry> readLauncherConfig(const QString& hostFolder);
