#include "GeneratedGame.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtGlobal>

#include <map>
#include <memory>

namespace {

QByteArray entry(int i)
{
    const QByteArray key = "Control" + QByteArray::number(i);
    const QByteArray n = QByteArray::number(i);
    const QByteArray place = key + "Location=" + QByteArray::number(120 + i % 5000) + "x" +
                             QByteArray::number(840 + i % 2000) + "\n" + key + "Size=255x1455\n";
    switch (i % 7) {
    case 0:
        return key + "Type=checkbox\n" + place + key + "Caption=Option " + n + "\n" + key +
               "VisualFunction=combo1;;ifonthendisable\n" + key + "Index=" + n + "\n" + key +
               "ControlKey=Check " + n + "\n" + key + "ControlDefaultValue=1\n";
    case 1:
        return key + "Type=option button\n" + place + key + "Caption=203\n" + key +
               "VisualFunction=checkbox1;;ifonthenoff\n" + key + "Index=" + n + "\n" + key +
               "ControlKey=Option " + n + "\n";
    case 2:
        return key + "Type=frame\n" + place + key + "Caption=Group " + n + "\n";
    case 3:
        return key + "Type=combo\n" + place + key + "Caption=low;;medium;;high;;(medium);;\n" +
               key + "ControlKey=Combo " + n + "\n";
    case 4:
        return key + "Type=label\n" + place + key + "Caption=Label " + n + "\n";
    case 5:
        return key + "Type=line\n" + key + "X-Location=120x6615\n" + key +
               "Y-Location=2580x2580\n" + key + "Width=2\n";
    default:
        return key + "Type=text\n" + place + key + "Caption=player\n" + key + "Locked=0\n" + key +
               "ControlKey=Text " + n + "\n" + key + "ControlDefaultValue=Player\n";
    }
}

} // namespace

const QString& hostFolder(int entries)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    auto& folder = folders[entries];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        QDir(folder->path()).mkpath(QStringLiteral("Data/Languages"));
        QFile texts(folder->filePath(QStringLiteral("Data/Languages/0.ini")));
        if (!texts.open(QIODevice::WriteOnly))
            qFatal("cannot write the language file");
        texts.write("[Texts]\n203=Low detail\n");
        QFile data(folder->filePath(QStringLiteral("Data/game.qgd")));
        if (!data.open(QIODevice::WriteOnly))
            qFatal("cannot write the game data file");
        data.write("[Custom Controls]\nCount=" + QByteArray::number(entries) + "\n");
        for (int i = 1; i <= entries; ++i)
            data.write(entry(i));
    }
    static QString path;
    path = folder->path();
    return path;
}
