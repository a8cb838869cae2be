#pragma once

#include <QString>

// The launcher's command line, read before any window exists.
struct LauncherArguments {
    int game = 0;      // 1 is the first; 0 when not given
    int language = -1; // -1: the language chosen last
    QString screenshot;
    QString config;
    bool printCommand = false;
    bool play = false;
    // Quit once the window has painted, to time the start.
    bool quitAfterPaint = false;
    // Text to print instead of starting: help, the version, or what is wrong.
    QString output;
    bool error = false;
};

LauncherArguments parseLauncherArguments(int argc, char** argv);
