#include "GameLog.h"

#include <QFile>
#include <QStandardPaths>

QString gameLogFile(const QString& gameName)
{
    QString name = gameName;
    name.replace(QLatin1Char('/'), QLatin1Char('_')).replace(QLatin1Char('\\'), QLatin1Char('_'));
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
           QStringLiteral("/logs/") + name + QStringLiteral(".log");
}

QString lastLines(const QString& fileName, int count)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // The tail is enough: a game may have printed megabytes.
    constexpr qint64 Tail = 16 * 1024;
    if (file.size() > Tail)
        file.seek(file.size() - Tail);
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.constLast().trimmed().isEmpty())
        lines.removeLast();
    return lines.mid(qMax(0, int(lines.size()) - count)).join(QLatin1Char('\n'));
}
