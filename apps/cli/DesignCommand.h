#pragma once

#include <QLatin1StringView>

// qforms design: the designer window over a game data file. It needs a GUI
// application, so main hands it the command line before making its own.
namespace qf::designer {

inline constexpr QLatin1StringView CommandName("design");
inline constexpr QLatin1StringView
    Synopsis("design FILE.qgd [--app-path DIR] [--language N] [--select N] [--screenshot PNG]");
inline constexpr QLatin1StringView
    Description("Open the game data file in the designer: its page as the sample launcher shows\n"
                "it, with the host's fixed widgets as locked areas; place widgets with the mouse\n"
                "and the arrow keys, add them from the palette, edit their keys, see the lint's\n"
                "findings, try the rules in test mode, undo and save. --app-path and --language\n"
                "as for preview; --select N selects entry N; --screenshot writes the window as\n"
                "an image and quits. Exit 2 when it cannot run.");

int runDesignCommand(int argc, char** argv);

} // namespace qf::designer
