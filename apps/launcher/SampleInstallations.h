#pragma once

#include "LauncherConfig.h"

#include <QString>

namespace qf {
class SettingsStore;
}

// Demo installations of the sample games, so that the launcher has something
// to find: a folder per game below the user's data folder, made on first start.
class SampleInstallations {
public:
    // Below $XDG_DATA_HOME/<launcher>/games.
    SampleInstallations();
    explicit SampleInstallations(QString folder) : m_folder(std::move(folder)) {}

    QString folder() const { return m_folder; }
    QString installationOf(const GameEntry& game) const;

    // Creates the installations that do not exist yet; returns false when a
    // file could not be written.
    bool create() const;

    // Stores each game's installation as its folder, unless the user chose one
    // already, so the first start finds the games.
    void offerAsStoredPaths(const QList<GameEntry>& games, qf::SettingsStore& store) const;

private:
    QString m_folder;
};
