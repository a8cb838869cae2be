#pragma once

#include "LauncherConfig.h"

#include <memory>

class qForms;

namespace qf {
class SettingsStore;
}

// The status colour of games whose page is not open: one control without a
// view, set up for each game in turn as its page would be, with the stored
// folder, and asked for its own game check. No option widgets are built.
class GameStatusCheck {
public:
    GameStatusCheck(QString hostFolder, std::shared_ptr<qf::SettingsStore> store);
    ~GameStatusCheck();

    // green, yellow or red, as the game's page would show it.
    QString colourOf(const GameEntry& game);

private:
    QString m_hostFolder;
    std::unique_ptr<qForms> m_control;
    int m_statusChanges = 0;
};
