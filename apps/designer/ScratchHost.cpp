#include "ScratchHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qf::designer {

ScratchHost::ScratchHost(const QString& appPath, const QString& gameDataPath)
{
    // The host's Data folder in whatever letter case it has.
    QDir realData(appPath + QStringLiteral("/Data"));
    for (const QFileInfo& entry : QDir(appPath).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (entry.fileName().compare(QLatin1String("Data"), Qt::CaseInsensitive) == 0)
            realData.setPath(entry.absoluteFilePath());
    const QDir data(m_folder.filePath(QStringLiteral("Data")));
    m_gameDataPath =
        data.filePath(realData.relativeFilePath(QFileInfo(gameDataPath).absoluteFilePath()));
    QDir().mkpath(QFileInfo(m_gameDataPath).absolutePath());
    // The texts are read where they are, so a saved language file shows at
    // the next rebuild.
    for (const QFileInfo& entry : realData.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (entry.fileName().compare(QLatin1String("Languages"), Qt::CaseInsensitive) == 0)
            QFile::link(entry.absoluteFilePath(), data.filePath(entry.fileName()));
    for (const QFileInfo& entry : QDir(appPath).entryInfoList(QDir::Files))
        if (entry.fileName().compare(QLatin1String("launcher.ini"), Qt::CaseInsensitive) == 0)
            QFile::copy(entry.absoluteFilePath(), m_folder.filePath(entry.fileName()));
}

bool ScratchHost::write(const QByteArray& bytes)
{
    QFile file(m_gameDataPath);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

} // namespace qf::designer
