#pragma once

#include "launch/LaunchRoutes.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class qForms;

/// What the game receives: the launch that the routes of a game data file give.
namespace qf::launch {

/// A variable set in the started program's environment.
struct EnvironmentChange {
    QString name;  ///< The variable.
    QString value; ///< Its value.
    /// @return Whether name and value are equal.
    bool operator==(const EnvironmentChange&) const = default;
};

/// How a game is started with the player's choices. Never meant for a shell:
/// every argument reaches the program as it stands.
struct LaunchDescription {
    /// What is started: a wrapper, the Windows runner, or the game's program.
    QString program;
    /// The program's arguments, each one word.
    QStringList arguments;
    /// Set in the started program's environment, in route order; a later
    /// change of a name replaces an earlier one.
    QList<EnvironmentChange> environment;
    /// The game's folder (qForms::qpGamePath), else the program's.
    QString workingFolder;
    /// The game's own program, as the game check found it; empty while no
    /// folder is chosen.
    QString gameProgram;
    /// The game's program is a Windows program: it runs through the runner. A
    /// program that is not there counts as one when its name ends in ".exe".
    bool windowsProgram = false;
    /// Routes left out of this launch, and why.
    QList<RouteProblem> skipped;

    /// @return The launch as a person would type it: the environment changes,
    ///         then the program and its arguments, each quoted for a POSIX
    ///         shell where it needs it.
    QString text() const;
};

/// What describeLaunch() takes from the host.
struct LaunchOptions {
    /// The program that runs Windows programs (a path or a name); "wine" when empty.
    QString windowsRunner{};
    /// The game's program while no folder is chosen, for tools that show what
    /// the routes give before a game is installed (the game data preview).
    QString programIfNoneChosen{};
};

/// The value of every option the routes can name. Reads the game data file;
/// changes neither the page nor the store.
/// @param control The game's page.
/// @return Each valued option widget by its ControlKey, and the fixed choices
///         under their settings keys ("Mod Name", "Load Mod Always", "Command
///         Line Parameters", "Config Name") while their group is on; the texts
///         qForms::qSaveSettings() would store.
QMap<QString, QString> launchValues(const qForms& control);

/// The launch the control's current state gives with the routes of its game
/// data file (section "Launch"): the routes in file order, each adding its
/// arguments, environment variables, wrapper words or Wine words. A route for a
/// key without a value, or whose state is not the current one, adds nothing;
/// an empty value adds nothing unless the key routes the state "[]". Reads the
/// game data file (an unreadable one gives no routes); changes neither the
/// page nor the store.
/// @param control The game's page.
/// @param options The Windows runner and the program to assume.
/// @return The launch; its gameProgram is empty while no folder is chosen.
LaunchDescription describeLaunch(const qForms& control, const LaunchOptions& options = {});

/// The same, from routes and values already at hand.
/// @param routes The parsed section "Launch".
/// @param values As launchValues() gives them.
/// @param gameProgram The game's program; empty for none.
/// @param gameFolder The working folder; empty for the program's.
/// @param configPath The chosen config file's full path, for "{path}".
/// @param options The Windows runner and the program to assume.
/// @return The launch.
LaunchDescription describeLaunch(const LaunchRoutes& routes, const QMap<QString, QString>& values,
                                 const QString& gameProgram, const QString& gameFolder,
                                 const QString& configPath, const LaunchOptions& options);

/// Tells a Windows program by its header, never by its name.
/// @param path The file.
/// @return True when the file has an MZ header whose e_lfanew points at a PE
///         signature; false too for a file that cannot be read.
bool isWindowsProgram(const QString& path);

/// @param path An absolute path of this system.
/// @return The path as a Windows program under Wine names it (drive Z:).
QString winePath(const QString& path);

} // namespace qf::launch
