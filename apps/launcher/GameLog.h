#pragma once

#include <QString>

// The file a game's output goes to while it runs, one per game, below the
// user's cache folder; the last run replaces the one before.
QString gameLogFile(const QString& gameName);

// The last lines of a text file; fewer when it has fewer, none when it is missing.
QString lastLines(const QString& file, int count);
