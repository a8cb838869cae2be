#include "LauncherConfig.h"

#include <QSettings>

LauncherConfig readLauncherConfig(const QString& fileName)
{
    const QSettings file(fileName, QSettings::IniFormat);
    LauncherConfig config;
    config.windowsRunner = file.value(QStringLiteral("Launcher/WindowsRunner")).toString();
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
            config.games.append(game);
    }
    return config;
}
