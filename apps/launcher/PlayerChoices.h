#pragma once

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

// The choices as the control's read-only properties give them.
PlayerChoices readPlayerChoices(const qForms& control);
