#include "platform/Paths.h"
#include "platform/Errors.h"
#include "toolkit/Container.h"
#include "toolkit/FileList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

void touch(const QString& path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
}

} // namespace

TEST(Paths, NormalizesSeparatorsAndResolvesWithoutRegardToCase)
{
    EXPECT_EQ(paths::normalize(u"C:\\Games\\\\Arena\\"_s), u"C:/Games/Arena"_s);
    EXPECT_EQ(paths::normalize(u"/opt//launcher\\/Data/"_s), u"/opt/launcher/Data"_s);
    EXPECT_EQ(paths::normalize(u"\\\\"_s), u"/"_s);
    EXPECT_EQ(paths::normalize(u"/"_s), u"/"_s);
    EXPECT_EQ(paths::normalize(u"a"_s), u"a"_s);
    EXPECT_EQ(paths::normalize(QString()), QString());

    QTemporaryDir dir;
    const QString root = dir.path();
    const QString expected = root + u"/Games/Arena/base/pak0.PK3"_s;
    touch(expected);
    EXPECT_EQ(paths::resolve(root + u"\\GAMES\\arena\\\\BASE\\PAK0.pk3"_s), expected);
    EXPECT_TRUE(paths::isFile(root + u"/games/ARENA/Base/pak0.pk3"_s));
    EXPECT_FALSE(paths::isDirectory(root + u"/games/ARENA/Base/pak0.pk3"_s));
    EXPECT_TRUE(paths::isDirectory(root + u"\\gAmEs\\arena\\"_s));
    EXPECT_FALSE(paths::isFile(root + u"\\gAmEs\\arena"_s));

    // The first component without a match keeps the rest as written.
    EXPECT_EQ(paths::resolve(root + u"/games/Missing\\PAK0.pk3"_s),
              root + u"/Games/Missing/PAK0.pk3"_s);

    // A path resolved once is resolved again after its target went away.
    QFile::remove(expected);
    touch(root + u"/Games/Arena/base/PAK0.pk3"_s);
    EXPECT_EQ(paths::resolve(root + u"\\GAMES\\arena\\\\BASE\\pak0.pk3"_s),
              root + u"/Games/Arena/base/PAK0.pk3"_s);

    // The exact name wins, else the first in case-sensitive order.
    for (const QString& name : {u"data"_s, u"Data"_s, u"DATA"_s})
        QDir(root).mkdir(name);
    EXPECT_EQ(paths::resolve(root + u"/Data"_s), root + u"/Data"_s);
    EXPECT_EQ(paths::resolve(root + u"/dAtA"_s), root + u"/DATA"_s);

    // Relative paths resolve against the current folder and stay relative.
    touch(root + u"/Data/Game.QGD"_s);
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root));
    EXPECT_EQ(paths::resolve(u"Data\\game.qgd"_s), u"Data/Game.QGD"_s);
    EXPECT_TRUE(paths::isFile(u"./Data/GAME.qgd"_s));
    EXPECT_FALSE(paths::isFile(u"data/game.qgd"_s));
    QDir::setCurrent(previous);
}

TEST(Paths, ACachedResolutionHidesABetterMatchUntil256OtherPathsFollowIt)
{
    QTemporaryDir dir;
    const QString root = dir.path() + u'/';
    int filled = 0;
    const auto fill = [&](int count) {
        for (const int end = filled + count; filled < end; ++filled) {
            touch(root + u"f%1"_s.arg(filled));
            paths::resolve(root + u"F%1"_s.arg(filled));
        }
    };
    const auto probe = [&] { return paths::resolve(root + u"xA"_s).sliced(root.size()); };
    touch(root + u"xa"_s);
    probe();
    touch(root + u"Xa"_s);
    // "Xa" shows once the cache has started over: it then holds the last path and "xA".
    while (probe() == u"xa"_s && filled < 300)
        fill(1);
    ASSERT_EQ(probe(), u"Xa"_s);
    touch(root + u"XA"_s);
    fill(254);
    EXPECT_EQ(probe(), u"Xa"_s);
    fill(1);
    EXPECT_EQ(probe(), u"XA"_s);
}

TEST(Paths, ListFilesAndTheFileListMatchAndOrderWithoutRegardToCase)
{
    QTemporaryDir dir;
    const QString mods = dir.path() + u"/Mods/"_s;
    for (const QString& name : {u"b.PK3"_s, u"a.pk3"_s, u"A.pk3"_s, u".hidden.pk3"_s, u"c.pk3x"_s,
                                u"notes.txt"_s, u"README"_s})
        touch(mods + name);
    QDir().mkpath(mods + u"folder.pk3"_s);

    const QStringList expected{u".hidden.pk3"_s, u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s};
    EXPECT_EQ(paths::listFiles(dir.path() + u"\\MODS"_s, u"*.pk3"_s), expected);
    EXPECT_EQ(paths::listFiles(dir.path() + u"/mods/"_s, u"*.PK3"_s), expected);
    EXPECT_EQ(paths::listFiles(mods, u"?.pk3"_s),
              (QStringList{u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s}));
    EXPECT_EQ(paths::listFiles(mods, u"*.*"_s).size(), 7);
    EXPECT_THROW(paths::listFiles(dir.path() + u"/NoSuchFolder"_s, u"*"_s), PathError);
    EXPECT_THROW(paths::listFiles(mods + u"notes.txt"_s, u"*"_s), PathError);

    Container form(u"form"_s);
    FileList list(u"lstPak"_s, &form, u"*.PK3"_s);
    list.setPath(mods);
    EXPECT_EQ(list.files(), expected);
    list.setListIndex(-1);
    EXPECT_EQ(list.fileName(), QString());
    list.setListIndex(3);
    for (const int outside : {-2, 4})
        EXPECT_THROW(list.setListIndex(outside), InvalidValueError);
    // A folder that is missing keeps the old folder, files and selection.
    EXPECT_THROW(list.setPath(dir.filePath(u"missing"_s)), PathError);
    EXPECT_EQ(list.path(), mods);
    EXPECT_EQ(list.fileName(), u"b.PK3"_s);
    list.setPath(dir.path() + u"\\mods"_s);
    EXPECT_EQ(list.listCount(), 4);
    EXPECT_EQ(list.listIndex(), -1) << "a new listing selects nothing";
}
