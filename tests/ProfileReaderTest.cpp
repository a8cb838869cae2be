#include "platform/ProfileReader.h"
#include "platform/TextDecoding.h"
#include "support/TestHost.h"

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
    const ProfileString def = getPrivateProfileString(u"Sec"_s, u"no"_s, u"  dflt \t  "_s, file);
    EXPECT_EQ(def.value, u"  dflt \t"_s);
    EXPECT_EQ(def.length, 8);
    EXPECT_EQ(getPrivateProfileString(u"None"_s, u"q"_s, u"d"_s, file).value, u"d"_s);
    EXPECT_EQ(read(host.filePath(u"missing.qgd"_s), u"q"_s, u"*"_s), u"*"_s);
    EXPECT_EQ(read(host.filePath(u"Data"_s), u"q"_s, u"dir "_s), u"dir"_s);
    EXPECT_EQ(read(file, u"missing"_s, u"'quoted' "_s), u"quoted"_s);

    const ProfileString cut = getPrivateProfileString(u"Sec"_s, u"long"_s, {}, file);
    EXPECT_EQ(cut.value, QString(1023, u'x'));
    EXPECT_EQ(cut.length, 1023);
    EXPECT_EQ(read(file, u"long"_s, QString(), 5), u"xxxx"_s);
    EXPECT_EQ(read(file, u"long"_s, QString(), 0), QString());
    EXPECT_EQ(read(file, u"pair"_s), QString(1021, u'a') + QString::fromUtf8(smiley));
    EXPECT_EQ(read(file, u"split"_s), QString(1022, u'a'));
}

TEST(ProfileReader, DecodesEachEncodingAndANulEndsTheNameOrValueItIsIn)
{
    TestHost host;
    const QString file = host.filePath(u"nul.ini"_s);
    const char raw[] = "[Sec\0tion] tail\na=x\0y\nb=\"q\0\"\nke\0y=v\nc=after\n[\0]\nhidden=1\n";
    const QByteArray text(raw, sizeof raw - 1);
    // The same text as UTF-8 with and without BOM, as Windows-1252 (a byte that is not
    // UTF-8) and as UTF-16.
    const QString wide = QString::fromLatin1(text);
    const QByteArray utf16(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
    for (const QByteArray& data :
         {text, "\xEF\xBB\xBF" + text, text + "\xE9=1", "\xFF\xFE" + utf16}) {
        host.write(u"nul.ini"_s, data);
        EXPECT_EQ(read(file, u"a"_s, u"-"_s), u"x"_s);
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
