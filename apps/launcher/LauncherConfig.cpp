#include "LauncherConfig.h"

#include <QSettings>

QList<GameEntry> readLauncherConfig(const QString& hostFolder)
{
    const QSettings file(hostFolder + QStringLiteral("/launcher.ini"), QSettings::IniFormat);
    QList<GameEntry> games;
    const int count = file.value(QStringLiteral("Games/Count"), 0).toInt();
    for (int i = 1; i <= count; ++i) {
        const QString group = QStringLiteral("Game%1/").arg(i);
        const auto text = [&](const char* key) {
            return file.value(group + QLatin1String(key)).toString();
        };
        const auto flag = [&](const char* key) {
            return file.value(group + QLatin1String(key)).toBool();
        };
        GameEntry game{text("Name"),
                       text("GameData"),
                       text("Application"),
                       text("Base"),
                       text("VersionType"),
                       flag("ModSelection"),
                       flag("CommandLineParameters"),
                       flag("Configs"),
                       text("Installation")};
        if (!game.name.isEmpty())
            games.append(game);
    }
    return games;
}
