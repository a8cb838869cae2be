#include "WindowsPrograms.h"

#include <QFileInfo>
#include <QStandardPaths>

QString wantedWindowsRunner(const QString& configured)
{
    const QString environment = qEnvironmentVariable("QFORMS_WINE");
    if (!environment.isEmpty())
        return environment;
    return configured.isEmpty() ? QStringLiteral("wine") : configured;
}

QString findWindowsRunner(const QString& configured)
{
    const QString wanted = wantedWindowsRunner(configured);
    if (!wanted.contains(QLatin1Char('/')))
        return QStandardPaths::findExecutable(wanted);
    const QFileInfo file(wanted);
    return file.isFile() && file.isExecutable() ? file.absoluteFilePath() : QString();
}
