#include "WindowsPrograms.h"

#include "platform/PeVersionResource.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QtEndian>

bool isWindowsProgram(const QString& path)
{
    qf::pe::FileSource source(path);
    if (!source.isOpen())
        return false;
    char mz[2];
    char offset[4];
    if (!source.read(0, mz, 2) || mz[0] != 'M' || mz[1] != 'Z' || !source.read(0x3C, offset, 4))
        return false;
    char signature[4];
    return source.read(qFromLittleEndian<quint32>(offset), signature, 4) &&
           QByteArrayView(signature, 4) == QByteArrayView("PE\0\0", 4);
}

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
