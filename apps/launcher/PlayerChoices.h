#pragma once

#include "LauncherConfig.h"

#include <QString>

class qForms;

// What the player chose on a game page, as far as the game's command needs it.
struct PlayerChoices {
    // The program the game check settled on: a typed program path, else the
    // game's program in the game folder.
    QString program;
    QString mod;
    QString config;
    QString parameters;
};

// Reads the choices off the control. The one place that knows where the
// control keeps them.
PlayerChoices readPlayerChoices(const qForms& control, const GameEntry& game);
