#pragma once

#include <QLatin1StringView>

// qforms preview: the page of a game data file as an image, or in a window
// that follows the file. It needs a GUI application, so main hands it the
// command line before making its own.
namespace qf::preview {

inline constexpr QLatin1StringView CommandName("preview");
inline constexpr QLatin1StringView
    Synopsis("preview FILE.qgd [--app-path DIR] [--language N] [--scale F] -o PAGE.png\n"
             "  qforms preview --watch FILE.qgd [--app-path DIR] [--language N]");
inline constexpr QLatin1StringView
    Description("Draw the page of the game data file as the sample launcher shows it, with the\n"
                "default values of its options, into PAGE.png (--scale F: F times the size).\n"
                "--app-path is the host folder (default: the folder above the file's Data\n"
                "folder), --language the index of the language texts (default 0). With --watch,\n"
                "show the page beside the lint's findings in a window, and build it again\n"
                "whenever the file or a language file is saved. Exit 2 when it cannot run.");

int runPreviewCommand(int argc, char** argv);

} // namespace qf::preview
