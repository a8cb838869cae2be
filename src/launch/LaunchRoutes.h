#pragma once

#include "platform/IniDocument.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// What the game receives for each option: the routes that the author of a game
/// data file declares in its section "Launch". The control's own routines never
/// read that section, so a file with routes stays valid for every host.
namespace qf::launch {

/// The game data file's section that holds the routes.
inline const QString RoutesSection = QStringLiteral("Launch");

/// A piece of a word of a template: literal text, or a placeholder by name
/// ("value", "path", "words", or another key's name).
struct Piece {
    QString text;             ///< The literal text or the placeholder's name.
    bool placeholder = false; ///< Whether text names a placeholder.
    /// @return Whether text and kind are equal.
    bool operator==(const Piece&) const = default;
};
/// One argument as written in a template; a placeholder in it is replaced by
/// its value whole, so a value never splits a word. "{words}" alone in a word
/// stands for the value split into words.
using Word = QList<Piece>;

/// Where a route's words go.
enum class ActionKind {
    Arguments,   ///< Words after the game's program.
    Environment, ///< env:NAME=value
    Wrapper,     ///< wrap:words before everything (gamemoderun, gamescope --).
    Wine,        ///< wine:words between Wine and a Windows program.
};

/// One thing a route does.
struct Action {
    ActionKind kind = ActionKind::Arguments; ///< Where the words go.
    QString name;                            ///< Of the environment variable.
    QList<Word> words;                       ///< The variable's value is one word.
};

/// One key line of the section: "Key=..." for every value of the option, or
/// "Key[state]=..." for one item or state, which then wins over "Key=".
struct Route {
    QString key;                    ///< The option's ControlKey or a settings key.
    std::optional<QString> state;   ///< The bracketed state; none for "Key=".
    QList<Action> actions;          ///< In the order written.
    IniDocument::Position position; ///< Of the key name.
};

/// A route line that cannot be used, and why; the lint reports it.
struct RouteProblem {
    IniDocument::Position position; ///< Of the key name.
    QString key;                    ///< The key line as written.
    QString message;                ///< Why, in words.
};

/// The section "Launch" as read.
struct LaunchRoutes {
    QList<Route> routes;          ///< In file order: arguments come in this order.
    QList<RouteProblem> problems; ///< The lines left out.
};

/// The routes of a game data file's text; a line that is not a usable route is
/// left out and named in problems. Later lines for a key and state already
/// routed are problems too: like every profile read, the first one counts.
/// @param document The game data file. @return The routes and the problems.
LaunchRoutes parseLaunchRoutes(const IniDocument& document);

/// @param name A variable's name as written.
/// @return Why the text cannot name an environment variable; empty when it can.
QString environmentNameProblem(const QString& name);

} // namespace qf::launch
