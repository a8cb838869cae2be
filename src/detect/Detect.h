#pragma once

#include <QString>

#include <optional>

namespace qf {
class ControlContext;
}

// The game check: is the game's program where txtPath says, which version is
// it, and what the status line shows.
namespace qf::detect {

// The complete check, run on every change of txtPath. Failing steps are
// skipped; nothing reaches the caller.
void qCheckGame(ControlContext& context);

// Where the check looks: strGamePath (the folder) and the program's name,
// taken from txtPath, and the base folder of the game's pak files.
struct GameLocation {
    QString applicationName;
    QString base;
};
GameLocation deriveLocation(ControlContext& context);

// The status text of a found program, empty for a version type that shows
// none; nullopt when the program, or for pak versions a known pak file, is
// missing.
std::optional<QString> detectVersion(ControlContext& context, const GameLocation& location);

// The version a game list file names for the pak file found; empty when none.
QString detectPakVersion(ControlContext& context, const QString& strBase);

// A trace message of the game check, to the language text provider.
void trace(ControlContext& context, const QString& message);

} // namespace qf::detect
