#pragma once

#include "LauncherConfig.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <functional>

#include <memory>

class GamePage;
class QWidget;

namespace qf {
class ControlView;
}

namespace qf::preview {

// What a preview shows: a game data file, the host folder above its Data
// folder, and the language of the texts.
struct PageSource {
    QString gameDataPath;
    QString appPath;
    int language = 0;
};

// The folder above the nearest folder named "Data" (in any letter case) that
// holds the file; empty when there is none.
QString defaultAppPath(const QString& gameDataPath);

// The arguments of a command that shows a page: one game data file,
// --app-path DIR and --language N. Any other argument is offered to `other`
// first, which returns whether it took it and may read the value after it
// with `value`. Throws the message for stderr when they name no page.
using OtherArgument =
    std::function<bool(const QString& argument, const std::function<QString()>& value)>;
PageSource parsePageArguments(const QString& command, const QStringList& args,
                              const OtherArgument& other);

// The files and folders a window showing the page watches: the file, its
// folder and the language files with their folder, so that a file saved by
// renaming a new one over it is noticed.
QStringList watchedPaths(const PageSource& source);

// The game the page is built for: the game of the host's launcher.ini that
// names the file, so the page shows what that launcher shows; else a game
// named after the file with no mods, parameters or configs.
GameEntry previewGame(const PageSource& source);

// Why the page cannot be built (file unreadable, language texts missing), or
// an empty text when it can.
QString checkSource(const PageSource& source);

// The page as the sample launcher sets it up: built, with the default values
// restored from an empty scratch settings store. Call checkSource first.
std::unique_ptr<GamePage> buildPage(const PageSource& source, QWidget* parent = nullptr);

ControlView* controlView(const GamePage& page);

// What the game would receive from the page as it is now, through the routes
// of its game data file, as a person would type it; the game's program is
// named as the file names it while no folder is chosen.
QString launchLine(const GamePage& page);

// The page's view drawn at `scale` times its size.
QImage renderPage(const GamePage& page, qreal scale = 1);

} // namespace qf::preview
