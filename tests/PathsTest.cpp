#include "platform/Paths.h"
#include "platform/Errors.h"

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
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

} // namespace

TEST(Paths, NormalizeSeparators)
{
    EXPECT_EQ(paths::normalize(u"C:\\Games\\\\Arena\\"_s), u"C:/Games/Arena"_s);
    EXPECT_EQ(paths::normalize(u"/opt//launcher\\/Data/"_s), u"/opt/launcher/Data"_s);
    EXPECT_EQ(paths::normalize(u"\\\\"_s), u"/"_s);
    EXPECT_EQ(paths::normalize(u"/"_s), u"/"_s);
    EXPECT_EQ(paths::normalize(u"a"_s), u"a"_s);
    EXPECT_EQ(paths::normalize(QString()), QString());
}

TEST(Paths, ResolvesWithoutRegardToCase)
{
    QTemporaryDir dir;
    const QString root = dir.path();
    touch(root + u"/Games/Arena/base/pak0.PK3"_s);

    const QString expected = root + u"/Games/Arena/base/pak0.PK3"_s;
    EXPECT_EQ(paths::resolve(root + u"\\GAMES\\arena\\\\BASE\\PAK0.pk3"_s), expected);
    EXPECT_EQ(paths::resolve(expected), expected);
    EXPECT_TRUE(paths::isFile(root + u"/games/ARENA/Base/pak0.pk3"_s));
    EXPECT_FALSE(paths::isDirectory(root + u"/games/ARENA/Base/pak0.pk3"_s));
    EXPECT_TRUE(paths::isDirectory(root + u"\\gAmEs\\arena\\"_s));
    EXPECT_FALSE(paths::isFile(root + u"\\gAmEs\\arena"_s));

    // The first component without a match keeps the rest as written.
    EXPECT_EQ(paths::resolve(root + u"/games/Missing\\PAK0.pk3"_s),
              root + u"/Games/Missing/PAK0.pk3"_s);
    EXPECT_FALSE(paths::isFile(root + u"/games/Missing/PAK0.pk3"_s));

    // A path resolved once is resolved again after its target went away.
    QFile::remove(expected);
    touch(root + u"/Games/Arena/base/PAK0.pk3"_s);
    EXPECT_EQ(paths::resolve(root + u"\\GAMES\\arena\\\\BASE\\pak0.pk3"_s),
              root + u"/Games/Arena/base/PAK0.pk3"_s);
}

TEST(Paths, PrefersExactNameThenFirstInOrder)
{
    QTemporaryDir dir;
    const QString root = dir.path();
    for (const char* name : {"data", "Data", "DATA"})
        QDir(root).mkdir(QString::fromLatin1(name));
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

TEST(Paths, ListFilesMatchesAndOrdersWithoutRegardToCase)
{
    QTemporaryDir dir;
    const QString root = dir.path();
    for (const char* name :
         {"b.PK3", "a.pk3", "A.pk3", ".hidden.pk3", "c.pk3x", "notes.txt", "README"})
        touch(root + u"/Mods/"_s + QString::fromLatin1(name));
    QDir(root).mkpath(u"Mods/folder.pk3"_s);

    const QStringList expected{u".hidden.pk3"_s, u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s};
    EXPECT_EQ(paths::listFiles(root + u"\\MODS"_s, u"*.pk3"_s), expected);
    EXPECT_EQ(paths::listFiles(root + u"/mods/"_s, u"*.PK3"_s), expected);
    EXPECT_EQ(paths::listFiles(root + u"/Mods"_s, u"?.pk3"_s),
              (QStringList{u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s}));
    EXPECT_EQ(paths::listFiles(root + u"/Mods"_s, u"*.*"_s).size(), 7);
    EXPECT_TRUE(paths::listFiles(root + u"/Mods"_s, u"*.cfg"_s).isEmpty());
    EXPECT_THROW(paths::listFiles(root + u"/NoSuchFolder"_s, u"*"_s), PathError);
    EXPECT_THROW(paths::listFiles(root + u"/Mods/notes.txt"_s, u"*"_s), PathError);
}
