#include "LintContext.h"
#include "Suggest.h"

#include "context/DataPaths.h"
#include "gamedata/GameDataKeys.h"
#include "platform/Errors.h"
#include "platform/Paths.h"
#include "platform/ProfileReader.h"

#include <QHash>

namespace qf::lint {

namespace {

const QString AvaSection = QStringLiteral("AVA Game");

} // namespace

// The browse dialog offers the names closed by ";;" (or the one name) and
// takes only a chosen file that ends in ".exe".
void checkGameApplication(LintContext& lint)
{
    const QString key = gamedata::GameApplication;
    const std::optional<QString> value = lint.document->value(gamedata::GameSection, key);
    if (!value)
        return;
    const auto position = [&] {
        auto at = lint.document->valuePosition(gamedata::GameSection, key);
        return at ? at : lint.document->keyPosition(gamedata::GameSection, key);
    };
    const QLatin1String separator(";;");
    QStringList names = value->split(separator);
    if (value->contains(separator)) {
        const QString tail = names.takeLast();
        if (!tail.trimmed().isEmpty())
            lint.addAt(Severity::Warning, QStringLiteral("game-application-tail"),
                       QStringLiteral("%1: \"%2\" after the last \";;\" is ignored; close every "
                                      "name with \";;\"")
                           .arg(key, tail),
                       0, lint.path, position());
    }
    for (const QString& name : names) {
        if (!name.isEmpty() && !datapaths::namesProgram(name))
            lint.addAt(Severity::Warning, QStringLiteral("game-application"),
                       QStringLiteral("%1: \"%2\" does not end in \".exe\"; the browse dialog "
                                      "never accepts it")
                           .arg(key, name),
                       0, lint.path, position());
    }
}

// The game list files the pak version detection reads, with the defaults a
// missing key gets there.
void checkGameLists(LintContext& lint)
{
    if (lint.gameName.isEmpty())
        return;
    const QString folder = datapaths::gameListFolder(lint.appPath, lint.gameName);
    QStringList files;
    try {
        files = paths::listFiles(folder, QStringLiteral("*.AVA"));
    } catch (const Error&) {
        // A name launcher.ini does not know is said there already.
        const bool said = std::any_of(lint.findings.begin(), lint.findings.end(),
                                      [](const Finding& f) { return f.check == u"ava-game"; });
        if (!said && !paths::isDirectory(lint.appPath + QStringLiteral("/Data/") + lint.gameName))
            lint.addAt(Severity::Warning, QStringLiteral("ava-game"),
                       QStringLiteral("--game %1: there is no folder Data/%1, so no game list "
                                      "file was checked")
                           .arg(lint.gameName),
                       0, lint.path, std::nullopt);
        return;
    }
    const QString resolved = paths::resolve(folder);
    QHash<QString, QString> pakOwners;
    for (const QString& name : files) {
        const QString file = resolved + u'/' + name;
        const auto document = loadProfile(file);
        if (!document)
            continue;
        const auto read = [&](const QString& key) { return document->value(AvaSection, key); };
        // A misspelled key is said at its line, as the key it was meant to be.
        static const QStringList known = {QStringLiteral("PakName"),
                                          QStringLiteral("PakForVersion"),
                                          QStringLiteral("PakExtension"), QStringLiteral("Version")};
        QStringList meant;
        for (const IniDocument::SectionLines& section : document->lines()) {
            if (section.name.compare(AvaSection, Qt::CaseInsensitive) != 0)
                continue;
            for (const IniDocument::KeyLine& line : section.keys) {
                const QString name = line.name.toString();
                if (name.startsWith(u';') || known.contains(name, Qt::CaseInsensitive))
                    continue;
                const QString suggestion = closest(name, known);
                if (!suggestion.isEmpty() && !read(suggestion))
                    meant.append(suggestion);
                lint.addAt(Severity::Warning, QStringLiteral("ava-unknown-key"),
                           QStringLiteral("[%1] %2: unknown key%3")
                               .arg(AvaSection, name,
                                    suggestion.isEmpty()
                                        ? QStringLiteral("; it is never read")
                                        : QStringLiteral("; did you mean %1?").arg(suggestion)),
                           0, file, line.namePosition);
            }
        }
        const auto missing = [&](const QString& key, const QString& effect, Severity severity) {
            if (meant.contains(key))
                return;
            lint.addAt(severity, QStringLiteral("ava-missing-key"),
                       QStringLiteral("[%1] %2: missing; %3").arg(AvaSection, key, effect), 0, file,
                       document->sectionPosition(AvaSection));
        };
        if (!read(QStringLiteral("PakName")))
            missing(QStringLiteral("PakName"), QStringLiteral("read as empty"), Severity::Warning);
        if (!read(QStringLiteral("PakForVersion")))
            missing(QStringLiteral("PakForVersion"), QStringLiteral("read as empty"),
                    Severity::Warning);
        if (!read(QStringLiteral("PakExtension")))
            missing(QStringLiteral("PakExtension"), QStringLiteral("\".pk3\" applies"),
                    Severity::Note);
        if (!read(QStringLiteral("Version")))
            missing(QStringLiteral("Version"),
                    QStringLiteral("a game with this pak file shows the version \"Error\""),
                    Severity::Warning);
        const QString pak = (read(QStringLiteral("PakName")).value_or(QString()) +
                             read(QStringLiteral("PakForVersion")).value_or(QString()) +
                             read(QStringLiteral("PakExtension")).value_or(QStringLiteral(".pk3")))
                                .toLower();
        if (pakOwners.contains(pak))
            lint.addAt(Severity::Warning, QStringLiteral("ava-duplicate-pak"),
                       QStringLiteral("names the pak file \"%1\" as %2 does; when it exists, the "
                                      "file listed last decides the version")
                           .arg(pak, pakOwners.value(pak)),
                       0, file, document->sectionPosition(AvaSection));
        else
            pakOwners.insert(pak, name);
    }
}

} // namespace qf::lint
