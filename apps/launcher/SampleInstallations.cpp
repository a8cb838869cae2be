#include "SampleInstallations.h"

#include "PeImage.h"
#include "context/SettingsKeys.h"
#include "platform/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

// An empty zip archive: the smallest file a pak reader accepts.
const QByteArray EmptyPak("PK\x05\x06" + QByteArray(18, '\0'));

bool write(const QString& path, const QByteArray& content)
{
    if (!QDir().mkpath(QFileInfo(path).path()))
        return false;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

bool program(const QString& path, quint32 versionMS, quint32 versionLS)
{
    return QDir().mkpath(QFileInfo(path).path()) &&
           qf::PeImage({.fileVersionMS = versionMS, .fileVersionLS = versionLS}).write(path);
}

} // namespace

SampleInstallations::SampleInstallations()
    : m_folder(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
               QStringLiteral("/games"))
{
}

QString SampleInstallations::installationOf(const GameEntry& game) const
{
    return m_folder + QLatin1Char('/') + game.installation;
}

bool SampleInstallations::create() const
{
    const QDir root(m_folder);
    bool ok = true;
    if (!root.exists(QStringLiteral("Emberfall"))) {
        ok &= program(root.filePath(QStringLiteral("Emberfall/emberfall.exe")), 0x00010004,
                      0x00000002);
        ok &= write(root.filePath(QStringLiteral("Emberfall/base/ember0.pk3")), EmptyPak);
    }
    if (!root.exists(QStringLiteral("Stonewake"))) {
        // Version 1.16: pak1.pk3 is there, the pak8.pk3 of 1.32 is not.
        ok &= program(root.filePath(QStringLiteral("Stonewake/stonewake.exe")), 0x00010010, 0);
        ok &= write(root.filePath(QStringLiteral("Stonewake/base/pak0.pk3")), EmptyPak);
        ok &= write(root.filePath(QStringLiteral("Stonewake/base/pak1.pk3")), EmptyPak);
    }
    if (!root.exists(QStringLiteral("Hollow Reach"))) {
        const QString game = root.filePath(QStringLiteral("Hollow Reach/"));
        ok &= program(game + QStringLiteral("reach.exe"), 0x00020000, 0x00000001);
        ok &= write(game + QStringLiteral("core/pak0.pk3"), EmptyPak);
        ok &= write(game + QStringLiteral("ctf/ctf-maps.pk3"), EmptyPak);
        ok &= write(game + QStringLiteral("ctf/description.txt"),
                    "Capture the Flag: two teams, two flags, one winner.");
        ok &= write(game + QStringLiteral("Rally/rally.pk3"), EmptyPak);
        ok &= write(game + QStringLiteral("docs/readme.txt"), "Hollow Reach manual");
    }
    return ok;
}

void SampleInstallations::offerAsStoredPaths(const QList<GameEntry>& games,
                                             qf::SettingsStore& store) const
{
    bool changed = false;
    for (const GameEntry& game : games) {
        const QString stored =
            store.readValue(qf::settings::Application, game.name, qf::settings::Path, QString());
        if (stored.isEmpty() && !game.installation.isEmpty()) {
            store.saveValue(qf::settings::Application, game.name, qf::settings::Path,
                            installationOf(game));
            changed = true;
        }
    }
    if (changed)
        store.sync();
}
