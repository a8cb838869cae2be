#pragma once

#include "platform/IniDocument.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What the game receives for each option: the routes that the author of a game
// data file declares in its section "Launch". The control's own routines never
// read that section, so a file with routes stays valid for every host.
namespace qf::launch {

inline const QString RoutesSection = QStringLiteral("Launch");

// A piece of a word of a template: literal text, or a placeholder by name
// ("value", "path", "words", or another key's name).
struct Piece {
    QString text;
    bool placeholder = false;
    bool operator==(const Piece&) const = default;
};
// One argument as written in a template; a placeholder in it is replaced by
// its value whole, so a value never splits a word. "{words}" alone in a word
// stands for the value split into words.
using Word = QList<Piece>;

enum class ActionKind {
    Arguments,   // words after the game's program
    Environment, // env:NAME=value
    Wrapper,     // wrap:words before everything (gamemoderun, gamescope --)
    Wine,        // wine:words between Wine and a Windows program
};

struct Action {
    ActionKind kind = ActionKind::Arguments;
    QString name;      // of the environment variable
    QList<Word> words; // the variable's value is one word
};

// One key line of the section: "Key=..." for every value of the option, or
// "Key[state]=..." for one item or state, which then wins over "Key=".
struct Route {
    QString key;
    std::optional<QString> state;
    QList<Action> actions;
    IniDocument::Position position; // of the key name
};

// A route line that cannot be used, and why; the lint reports it.
struct RouteProblem {
    IniDocument::Position position;
    QString key; // the key line as written
    QString message;
};

struct LaunchRoutes {
    QList<Route> routes; // in file order: arguments come in this order
    QList<RouteProblem> problems;
};

// The routes of a game data file's text; a line that is not a usable route is
// left out and named in problems. Later lines for a key and state already
// routed are problems too: like every profile read, the first one counts.
LaunchRoutes parseLaunchRoutes(const IniDocument& document);

// Why a text cannot name an environment variable; empty when it can.
QString environmentNameProblem(const QString& name);

} // namespace qf::launch
