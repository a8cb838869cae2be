#include "HostFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QString findHostFolder()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    for (const QString& candidate : {programFolder + QStringLiteral("/host"),
                                     programFolder + QStringLiteral("/../share/qforms/host")}) {
        if (QFileInfo(candidate + QStringLiteral("/Data")).isDir())
            return QDir(candidate).canonicalPath();
    }
    return {};
}
