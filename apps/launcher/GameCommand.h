#pragma once

#include "PlayerChoices.h"

#include <QStringList>

// The command that starts a game: never given to a shell, so every argument
// reaches the game as it is.
struct GameCommand {
    QString program;
    QStringList arguments;

    // The command as one line for people to read; arguments with blanks or
    // quotes are quoted.
    QString text() const;
};

GameCommand gameCommand(const PlayerChoices& choices);
