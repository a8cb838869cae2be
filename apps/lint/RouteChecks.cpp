#include "LintContext.h"
#include "Suggest.h"

#include "context/SettingsKeys.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "launch/LaunchRoutes.h"

#include <QHash>
#include <QSet>

namespace qf::lint {

namespace {

namespace gd = gamedata;

QString folded(const QString& text)
{
    return text.trimmed().toCaseFolded();
}

// An option a route can name, and the states it can be in (empty: any text).
struct RoutedOption {
    int entry = 0;
    QString name;
    QString kindWord;
    QStringList states;
};

QStringList statesOf(const LintContext& lint, int entry, gd::Kind kind)
{
    switch (kind) {
    case gd::Kind::CheckBox:
        return {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")};
    case gd::Kind::OptionButton:
        return {QStringLiteral("True"), QStringLiteral("False")};
    case gd::Kind::Combo: {
        QStringList items;
        const QString caption = lint.entryValue(entry, gd::Caption).value_or(QString()).toLower();
        for (const syntax::ItemListStep& step : syntax::parseItemList(caption))
            if (!items.contains(step.text))
                items.append(step.text);
        if (items.isEmpty())
            items.append(QString()); // a combo without items holds only ""
        return items;
    }
    default:
        return {};
    }
}

QHash<QString, RoutedOption> optionsOf(const LintContext& lint)
{
    QHash<QString, RoutedOption> options;
    const QStringList checkStates = {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")};
    for (const QString& fixed :
         {settings::ModName, settings::CommandLineParameters, settings::ConfigName})
        options.insert(folded(fixed), {0, fixed, QStringLiteral("fixed choice"), {}});
    options.insert(folded(settings::LoadModAlways),
                   {0, settings::LoadModAlways, QStringLiteral("mod check box"), checkStates});
    // In entry order: of entries sharing a key the later one is stored.
    for (const auto& [entry, kindWord] : lint.kinds) {
        const gd::Kind kind = gd::kindOf(kindWord);
        if (kind != gd::Kind::CheckBox && kind != gd::Kind::OptionButton &&
            kind != gd::Kind::Combo && kind != gd::Kind::Text)
            continue;
        const QString key = lint.entryValue(entry, gd::ControlKey).value_or(QString());
        if (!key.isEmpty())
            options.insert(folded(key), {entry, key, kindWord, statesOf(lint, entry, kind)});
    }
    return options;
}

QString suggestion(const QString& word, const QHash<QString, RoutedOption>& options)
{
    QStringList names;
    for (const RoutedOption& option : options)
        names.append(option.name);
    const QString close = closest(word, names);
    return close.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(close);
}

} // namespace

void checkRoutes(LintContext& lint)
{
    if (!lint.document->sectionPosition(launch::RoutesSection))
        return; // a file for hosts that start their games themselves
    const launch::LaunchRoutes routes = launch::parseLaunchRoutes(*lint.document);
    for (const launch::RouteProblem& problem : routes.problems)
        lint.addAt(
            Severity::Error, QStringLiteral("routes-syntax"),
            QStringLiteral("%1: %2; the line passes nothing").arg(problem.key, problem.message), 0,
            lint.path, problem.position);

    const QHash<QString, RoutedOption> options = optionsOf(lint);
    QSet<QString> mentioned;
    for (const launch::Route& route : routes.routes) {
        const auto option = options.constFind(folded(route.key));
        const QString written =
            route.state ? QStringLiteral("%1[%2]").arg(route.key, *route.state) : route.key;
        if (option == options.constEnd()) {
            lint.addAt(Severity::Warning, QStringLiteral("routes-unknown-key"),
                       QStringLiteral("%1: no option has the ControlKey \"%2\", so this route "
                                      "never applies%3")
                           .arg(written, route.key, suggestion(route.key, options)),
                       0, lint.path, route.position);
            continue;
        }
        mentioned.insert(folded(route.key));
        if (route.state && !option->states.isEmpty() &&
            !option->states.contains(route.state->trimmed(), Qt::CaseInsensitive))
            lint.addAt(Severity::Warning, QStringLiteral("routes-state"),
                       QStringLiteral("%1: the %2 \"%3\" is never \"%4\"; it is one of %5")
                           .arg(written, option->kindWord, option->name, *route.state,
                                QStringLiteral("\"") +
                                    option->states.join(QStringLiteral("\", \"")) +
                                    QStringLiteral("\"")),
                       option->entry, lint.path, route.position);
        for (const launch::Action& action : route.actions)
            for (const launch::Word& word : action.words)
                for (const launch::Piece& piece : word) {
                    if (!piece.placeholder)
                        continue;
                    const QString name = folded(piece.text);
                    if (name == u"value" || name == u"words")
                        continue;
                    if (name == u"path") {
                        if (folded(route.key) != folded(settings::ConfigName))
                            lint.addAt(Severity::Error, QStringLiteral("routes-placeholder"),
                                       QStringLiteral("%1: {path} is the config file's path, "
                                                      "which only the route of \"Config Name\" "
                                                      "has; the route is skipped")
                                           .arg(written),
                                       option->entry, lint.path, route.position);
                        continue;
                    }
                    if (options.contains(name)) {
                        mentioned.insert(name);
                        continue;
                    }
                    lint.addAt(Severity::Error, QStringLiteral("routes-placeholder"),
                               QStringLiteral("%1: {%2} names no option of this page; the route "
                                              "is skipped%3")
                                   .arg(written, piece.text, suggestion(piece.text, options)),
                               option->entry, lint.path, route.position);
                }
    }

    for (const RoutedOption& option : options) {
        if (!option.entry || mentioned.contains(folded(option.name)) ||
            isDisplayOnly(lint, option.entry))
            continue;
        const QString key = entryKeyName(option.entry, gd::ControlKey);
        lint.add(Severity::Note, QStringLiteral("routes-unrouted"),
                 QStringLiteral("%1: \"%2\" has no route in [Launch]: this option never reaches "
                                "the game")
                     .arg(key, option.name),
                 option.entry, key, true);
    }
}

} // namespace qf::lint
