// The platform layer: paths, INI parsing, the profile reader and text decoding.
#include "platform/Errors.h"
#include "platform/IniDocument.h"
#include "platform/Paths.h"
#include "platform/ProfileReader.h"
#include "platform/TextDecoding.h"
#include "support/TestHost.h"
#include "toolkit/Container.h"
#include "toolkit/FileList.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

QString read(const QString& path, const QString& key, const QString& def = QString(),
             qint32 bufferSize = 1024)
{
    return getPrivateProfileString(u"Sec"_s, key, def, path, bufferSize).value;
}

} // namespace

TEST(Paths, NormalizesSeparatorsAndResolvesWithoutRegardToCase)
{
    EXPECT_EQ(paths::normalize(u"C:\\Games\\\\Arena\\"_s), u"C:/Games/Arena"_s);
    EXPECT_EQ(paths::normalize(u"/opt//launcher\\/Data/"_s), u"/opt/launcher/Data"_s);
    EXPECT_EQ(paths::normalize(u"\\\\"_s), u"/"_s);
    EXPECT_EQ(paths::normalize(QString()), QString());

    TestHost host;
    const QString root = host.path();
    const QString expected = root + u"/Games/Arena/base/pak0.PK3"_s;
    host.write(u"Games/Arena/base/pak0.PK3"_s, {});
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
    host.write(u"Games/Arena/base/PAK0.pk3"_s, {});
    EXPECT_EQ(paths::resolve(root + u"\\GAMES\\arena\\\\BASE\\pak0.pk3"_s),
              root + u"/Games/Arena/base/PAK0.pk3"_s);

    // The exact name wins, else the first in case-sensitive order.
    for (const QString& name : {u"data"_s, u"Data"_s, u"DATA"_s})
        QDir(root).mkdir(name);
    EXPECT_EQ(paths::resolve(root + u"/Data"_s), root + u"/Data"_s);
    EXPECT_EQ(paths::resolve(root + u"/dAtA"_s), root + u"/DATA"_s);

    // Relative paths resolve against the current folder and stay relative.
    host.write(u"Data/Game.QGD"_s, {});
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root));
    EXPECT_EQ(paths::resolve(u"Data\\game.qgd"_s), u"Data/Game.QGD"_s);
    EXPECT_TRUE(paths::isFile(u"./Data/GAME.qgd"_s));
    EXPECT_FALSE(paths::isFile(u"data/game.qgd"_s));
    QDir::setCurrent(previous);
}

TEST(Paths, ACachedResolutionHidesABetterMatchUntil256OtherPathsFollowIt)
{
    TestHost host;
    const QString root = host.path() + u'/';
    int filled = 0;
    const auto fill = [&](int count) {
        for (const int end = filled + count; filled < end; ++filled) {
            host.write(u"f%1"_s.arg(filled), {});
            paths::resolve(root + u"F%1"_s.arg(filled));
        }
    };
    const auto probe = [&] { return paths::resolve(root + u"xA"_s).sliced(root.size()); };
    host.write(u"xa"_s, {});
    probe();
    host.write(u"Xa"_s, {});
    // "Xa" shows once the cache has started over: it then holds the last path and "xA".
    while (probe() == u"xa"_s && filled < 300)
        fill(1);
    ASSERT_EQ(probe(), u"Xa"_s);
    host.write(u"XA"_s, {});
    fill(254);
    EXPECT_EQ(probe(), u"Xa"_s);
    fill(1);
    EXPECT_EQ(probe(), u"XA"_s);
}

TEST(Paths, ListFilesAndTheFileListMatchAndOrderWithoutRegardToCase)
{
    TestHost host;
    const QString mods = host.filePath(u"Mods/"_s);
    for (const QString& name : {u"b.PK3"_s, u"a.pk3"_s, u"A.pk3"_s, u".hidden.pk3"_s, u"c.pk3x"_s,
                                u"notes.txt"_s, u"README"_s})
        host.write(u"Mods/"_s + name, {});
    QDir().mkpath(mods + u"folder.pk3"_s);

    const QStringList expected{u".hidden.pk3"_s, u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s};
    EXPECT_EQ(paths::listFiles(host.path() + u"\\MODS"_s, u"*.pk3"_s), expected);
    EXPECT_EQ(paths::listFiles(mods, u"?.pk3"_s),
              (QStringList{u"A.pk3"_s, u"a.pk3"_s, u"b.PK3"_s}));
    EXPECT_EQ(paths::listFiles(mods, u"*.*"_s).size(), 7);
    EXPECT_THROW(paths::listFiles(host.path() + u"/NoSuchFolder"_s, u"*"_s), PathError);
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
    EXPECT_THROW(list.setPath(host.filePath(u"missing"_s)), PathError);
    EXPECT_EQ(list.path(), mods);
    EXPECT_EQ(list.fileName(), u"b.PK3"_s);
    list.setPath(host.path() + u"\\mods"_s);
    EXPECT_EQ(list.listIndex(), -1) << "a new listing selects nothing";
}

TEST(IniDocument, LineEndingsBlanksAndNamesWithoutRegardToCase)
{
    const IniDocument doc = IniDocument::parse(
        u"[A]\r\nk1=v1\rk2=v2\nkz=v3\r\n\r\n  \t[ Sec One ]  \n  Key  =  a  b \t\x1a\nk4 =\r"_s);
    EXPECT_EQ(doc.value(u"a", u"K1"), u"v1"_s);
    EXPECT_EQ(doc.value(u"A", u"k2"), u"v2"_s);
    EXPECT_EQ(doc.value(u"A", u"KZ"), u"v3"_s);
    EXPECT_EQ(doc.value(u"sec one", u"key"), u"a  b"_s);
    EXPECT_EQ(doc.value(u"  Sec One\t", u" KEY\r"), u"a  b"_s);
    EXPECT_EQ(doc.value(u"sec one", u"k4"), QString());
    EXPECT_EQ(doc.value(u"secone", u"key"), std::nullopt);

    const IniDocument beyondAscii = IniDocument::parse(u"[ÄRGER Über]\nSCHLÜSSEL=1\nΣΟΦΙΑ=2"_s);
    EXPECT_EQ(beyondAscii.value(u"ärger über", u"schlüssel"), u"1"_s);
    EXPECT_EQ(beyondAscii.value(u"Ärger ÜBER", u"σοφια"), u"2"_s);
}

TEST(IniDocument, SectionHeadersAndTheFirstOfEachNameWins)
{
    // Keys before any header belong to a nameless section; "[" without "]"
    // starts no section.
    const IniDocument doc =
        IniDocument::parse(u"top=1\n[Broken\nk=v\n[Sec] ; note\na=2\n[x]y]\nb=3\n[ ]\nc=4"_s);
    EXPECT_EQ(doc.value(u"", u"top"), u"1"_s);
    EXPECT_EQ(doc.value(u" ", u"k"), u"v"_s);
    EXPECT_EQ(doc.value(u"sec", u"a"), u"2"_s);
    EXPECT_EQ(doc.value(u"sec", u"b"), std::nullopt) << "b, just below, is another section's";
    EXPECT_EQ(doc.value(u"x]y", u"b"), u"3"_s);
    EXPECT_EQ(doc.value(u"", u"c"), std::nullopt);

    // The first section and the first key of a name win.
    const IniDocument repeated = IniDocument::parse(
        u"[s]\na=1\na=2\nflag\nflag=yes\n;c=comment\n=empty\n[t]\n[S]\na=3\nb=4"_s);
    EXPECT_EQ(repeated.value(u"S", u"A"), u"1"_s);
    EXPECT_EQ(repeated.value(u"s", u"a"), u"1"_s);
    EXPECT_EQ(repeated.value(u"s", u"a"), u"1"_s) << "the line below the first is no match";
    EXPECT_EQ(repeated.value(u"s", u"b"), std::nullopt);
    // A line without "=" hides later lines of the same key.
    EXPECT_EQ(repeated.value(u"s", u"flag"), std::nullopt);
    EXPECT_EQ(repeated.value(u"s", u"c"), std::nullopt);
    EXPECT_EQ(repeated.value(u"s", u";c"), u"comment"_s);
    EXPECT_EQ(repeated.value(u"s", u""), u"empty"_s);
}

TEST(IniDocument, SurroundingQuotes)
{
    const IniDocument doc = IniDocument::parse(
        u"[q]\nd=\"  spaced  \"\ns='single'\nmixed=\"a'\nlone=\"\nempty=\"\"\ninner=\"a\"b\"\n"
        "open='a\nplain=a\"b\"\n"_s);
    EXPECT_EQ(doc.rawValue(u"q", u"d"), u"\"  spaced  \""_s);
    const std::pair<QString, QString> values[] = {
        {u"d"_s, u"  spaced  "_s}, {u"s"_s, u"single"_s},    {u"mixed"_s, u"\"a'"_s},
        {u"lone"_s, u"\""_s},      {u"empty"_s, u""_s},      {u"inner"_s, u"a\"b"_s},
        {u"open"_s, u"'a"_s},      {u"plain"_s, u"a\"b\""_s}};
    for (const auto& [key, value] : values)
        EXPECT_EQ(doc.value(u"q", key), value) << key.toStdString();
}

TEST(IniDocument, PositionsOfSectionsAndKeysIncludingThoseLookupsNeverFind)
{
    using P = IniDocument::Position;
    const IniDocument doc =
        IniDocument::parse(u"top=0\r\n[ A ]\r\n  k = v\r\n\r\nk=dup\rflag\n[a]\nx=1\n[😀B]\n😀y=2"_s);
    EXPECT_EQ(doc.sectionPosition(u"a"), (P{2, 3}));
    EXPECT_EQ(doc.keyPosition(u"A", u"K"), (P{3, 3}));
    EXPECT_EQ(doc.valuePosition(u"A", u"k"), (P{3, 7}));
    EXPECT_EQ(doc.valuePosition(u"A", u"flag"), std::nullopt);
    EXPECT_EQ(doc.keyPosition(u"A", u"x"), std::nullopt);
    EXPECT_EQ(doc.sectionPosition(u""), std::nullopt);
    EXPECT_EQ(doc.valuePosition(u"😀b", u"😀Y"), (P{10, 4}));

    QStringList listed;
    for (const IniDocument::SectionLines& section : doc.lines()) {
        const P at = section.namePosition.value_or(P{});
        listed << u"[%1]@%2:%3"_s.arg(section.name).arg(at.line).arg(at.column);
        for (const IniDocument::KeyLine& key : section.keys)
            listed << u"%1=%2@%3:%4"_s.arg(key.name, key.value.value_or(u"<none>"_s))
                          .arg(key.namePosition.line)
                          .arg(key.namePosition.column);
    }
    EXPECT_EQ(listed, (QStringList{u"[]@0:0"_s, u"top=0@1:1"_s, u"[A]@2:3"_s, u"k=v@3:3"_s,
                                   u"k=dup@5:1"_s, u"flag=<none>@6:1"_s, u"[a]@7:2"_s, u"x=1@8:1"_s,
                                   u"[😀B]@9:2"_s, u"😀y=2@10:1"_s}));
}

TEST(ProfileReader, ValuesDefaultsAndCutsThatNeverSplitASurrogatePair)
{
    TestHost host;
    const QString file = host.filePath(u"Data/Game.qgd"_s);
    const QByteArray smiley = "\xF0\x9F\x98\x80";
    host.write(u"Data/Game.qgd"_s,
               "[SEC]\ncount =  5 \nq=\"quoted \"\nlong=" + QByteArray(2000, 'x') +
                   "\npair=" + QByteArray(1021, 'a') + smiley +
                   "b\nsplit=" + QByteArray(1022, 'a') + smiley + "\n");

    EXPECT_EQ(read(host.path() + u"\\DATA\\\\game.QGD"_s, u"COUNT"_s), u"5"_s);
    EXPECT_EQ(read(file, u"q"_s), u"quoted "_s);

    // The default loses its trailing spaces, not its leading ones.
    EXPECT_EQ(read(file, u"no"_s, u"  dflt \t  "_s), u"  dflt \t"_s);
    EXPECT_EQ(getPrivateProfileString(u"None"_s, u"q"_s, u"d"_s, file).value, u"d"_s);
    EXPECT_EQ(read(host.filePath(u"missing.qgd"_s), u"q"_s, u"*"_s), u"*"_s);
    EXPECT_EQ(read(host.filePath(u"Data"_s), u"q"_s, u"dir "_s), u"dir"_s);
    EXPECT_EQ(read(file, u"missing"_s, u"'quoted' "_s), u"quoted"_s);

    EXPECT_EQ(read(file, u"long"_s), QString(1023, u'x'));
    EXPECT_EQ(read(file, u"long"_s, QString(), 5), u"xxxx"_s);
    EXPECT_EQ(read(file, u"long"_s, QString(), 0), QString());
    EXPECT_EQ(read(file, u"pair"_s), QString(1021, u'a') + QString::fromUtf8(smiley));
    EXPECT_EQ(read(file, u"split"_s), QString(1022, u'a'));
}

TEST(ProfileReader, DecodesEachEncodingAndANulEndsTheNameOrValueItIsIn)
{
    TestHost host;
    const QString file = host.filePath(u"nul.ini"_s);
    const char raw[] = "[Sec\0tion] tail\na=\0y\nb=\"q\0\"\nke\0y=v\nc=after\n[\0]\nhidden=1\n";
    const QByteArray text(raw, sizeof raw - 1);
    // The same text as UTF-8 with and without BOM, as Windows-1252 (a byte that is not
    // UTF-8) and as UTF-16.
    const QString wide = QString::fromLatin1(text);
    const QByteArray utf16(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
    for (const QByteArray& data :
         {text, "\xEF\xBB\xBF" + text, text + "\xE9=1", "\xFF\xFE" + utf16}) {
        host.write(u"nul.ini"_s, data);
        EXPECT_EQ(read(file, u"a"_s, u"-"_s), QString());
        EXPECT_EQ(read(file, u"b"_s, u"-"_s), u"\"q"_s);
        EXPECT_EQ(read(file, u"ke"_s, u"-"_s), u"v"_s);
        EXPECT_EQ(read(file, u"c"_s, u"-"_s), u"after"_s);
        EXPECT_EQ(getPrivateProfileString(u"section"_s, u"a"_s, u"-"_s, file).value, u"-"_s);
        // "[\0]" names the section before any header, so its keys are never found.
        EXPECT_EQ(getPrivateProfileString({}, u"hidden"_s, u"-"_s, file).value, u"-"_s);
    }

    EXPECT_EQ(decodeText("caf\xE9 \x80 \x81\x9F"), u"café € \u0081Ÿ"_s);
    EXPECT_EQ(decodeText("caf\xC3\xA9"), u"café"_s);
    EXPECT_EQ(decodeText("\xC3\x28"), u"Ã("_s);
    EXPECT_EQ(decodeText("\xFF\xFE"), QString());
    EXPECT_EQ(decodeText(QByteArray::fromHex("feff006120ac")), u"a€"_s);
    EXPECT_EQ(decodeWindows1252("\xC3\xA9"), u"Ã©"_s);
}

TEST(ProfileReader, ReparsesOnlyChangedFilesAndCachesThe64MostRecentlyUsed)
{
    TestHost host;
    const QString file = host.filePath(u"game.qgd"_s);
    host.write(u"game.qgd"_s, "[Sec]\nk=one\n");
    const auto first = loadProfile(file);
    ASSERT_TRUE(first);
    EXPECT_EQ(loadProfile(host.path() + u"//GAME.qgd"_s), first);

    host.write(u"game.qgd"_s, "[Sec]\nk=three\n");
    const auto second = loadProfile(file);
    EXPECT_NE(second, first);
    EXPECT_EQ(read(file, u"k"_s), u"three"_s);

    // Same inode and size: only the modification time tells the versions
    // apart, to the nanosecond.
    const QByteArray native = QFile::encodeName(file);
    struct stat st {};
    ASSERT_EQ(::stat(native.constData(), &st), 0);
    decltype(st.st_mtim) times[2] = {{0, UTIME_OMIT}, st.st_mtim};
    {
        QFile inPlace(file);
        ASSERT_TRUE(inPlace.open(QIODevice::ReadWrite));
        inPlace.write("[Sec]\nk=seven\n");
    }
    ASSERT_EQ(::utimensat(AT_FDCWD, native.constData(), times, 0), 0);
    EXPECT_EQ(loadProfile(file), second);
    times[1].tv_nsec = (times[1].tv_nsec + 1) % 1'000'000'000;
    ASSERT_EQ(::utimensat(AT_FDCWD, native.constData(), times, 0), 0);
    EXPECT_NE(loadProfile(file), second);
    EXPECT_EQ(read(file, u"k"_s), u"seven"_s);

    // The cache keeps 64 files and drops the least recently used.
    const auto numbered = [&](int i) { return host.filePath(u"f%1.ini"_s.arg(i)); };
    for (int i = 0; i <= 64; ++i)
        host.write(u"f%1.ini"_s.arg(i), "[Sec]\nk=1\n");
    const auto used = loadProfile(numbered(0));
    const auto oldest = loadProfile(numbered(1));
    for (int i = 2; i < 64; ++i)
        loadProfile(numbered(i));
    EXPECT_EQ(loadProfile(numbered(0)), used);
    loadProfile(numbered(64));
    EXPECT_EQ(loadProfile(numbered(0)), used);
    EXPECT_NE(loadProfile(numbered(1)), oldest);
}
