#pragma once

#include <QString>

// A host folder with Data/game.qgd of `entries` entries that use every widget
// kind with the keys a real file has, and a language file; written once per
// entry count, removed at exit.
const QString& hostFolder(int entries);
