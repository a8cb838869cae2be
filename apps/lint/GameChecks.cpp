#include "LintContext.h"

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
        const auto missing = [&](const QString& key, const QString& effect, Severity severity) {
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
