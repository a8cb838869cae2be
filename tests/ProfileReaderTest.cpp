#include "platform/ProfileReader.h"
#include "platform/TextDecoding.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

// Rewrites the bytes without replacing the file, so its inode stays.
void overwriteInPlace(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

struct timespec modificationTime(const QString& path)
{
    struct stat st {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &st), 0);
    return st.st_mtim;
}

void setModificationTime(const QString& path, struct timespec time)
{
    const struct timespec times[2] = {{0, UTIME_OMIT}, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

ProfileString read(const QString& path, const QString& key, const QString& def = QString(),
                   qint32 bufferSize = 1024)
{
    return getPrivateProfileString(u"Sec"_s, key, def, path, bufferSize);
}

} // namespace

TEST(ProfileReader, ValuesAndDefaults)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath(u"Data"_s);
    const QString file = dir.filePath(u"Data/Game.qgd"_s);
    const QByteArray longValue(2000, 'x');
    writeFile(file, "[Custom Controls]\ncount =  5 \n[Sec]\nq=\"quoted \"\nlong=" + longValue);

    const ProfileString count = getPrivateProfileString(u"custom controls"_s, u"COUNT"_s, u"0"_s,
                                                        dir.path() + u"\\DATA\\\\game.QGD"_s);
    EXPECT_EQ(count.value, u"5"_s);
    EXPECT_EQ(count.length, 1);
    EXPECT_EQ(read(file, u"q"_s).value, u"quoted "_s);

    // The default loses its trailing spaces, not its leading ones.
    const ProfileString def = read(file, u"missing"_s, u"  dflt \t  "_s);
    EXPECT_EQ(def.value, u"  dflt \t"_s);
    EXPECT_EQ(def.length, 8);
    EXPECT_EQ(getPrivateProfileString(u"None"_s, u"q"_s, u"d"_s, file).value, u"d"_s);
    EXPECT_EQ(read(dir.filePath(u"missing.qgd"_s), u"q"_s, u"*"_s).value, u"*"_s);
    EXPECT_EQ(read(dir.filePath(u"Data"_s), u"q"_s, u"dir "_s).value, u"dir"_s);
    EXPECT_EQ(read(file, u"missing"_s).length, 0);
    EXPECT_EQ(read(file, u"missing"_s, u"'quoted' "_s).value, u"quoted"_s);

    const ProfileString cut = read(file, u"long"_s);
    EXPECT_EQ(cut.value, QString(1023, u'x'));
    EXPECT_EQ(cut.length, 1023);
    EXPECT_EQ(read(file, u"long"_s, QString(), 5).value, u"xxxx"_s);
    EXPECT_EQ(read(file, u"long"_s, QString(), 0).length, 0);
}

TEST(ProfileReader, CutNeverSplitsSurrogatePair)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"pair.ini"_s);
    writeFile(file, "[Sec]\nk=" + QByteArray(1021, 'a') + "\xF0\x9F\x98\x80" + "b\n");
    const ProfileString read1023 = read(file, u"k"_s);
    EXPECT_EQ(read1023.length, 1023);
    EXPECT_TRUE(read1023.value.endsWith(QString::fromUtf8("\xF0\x9F\x98\x80")));
    writeFile(file, "[Sec]\nk=" + QByteArray(1022, 'a') + "\xF0\x9F\x98\x80" + "\n");
    EXPECT_EQ(read(file, u"k"_s).value, QString(1022, u'a'));
}

TEST(ProfileReader, NulEndsNameOrValueAndTheNextLineReadsAsUsual)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"nul.ini"_s);
    const char raw[] = "[Sec\0tion] tail\na=x\0y\nb=\"q\0\"\nke\0y=v\nc=after\n[\0]\nhidden=1\n";
    const QByteArray text(raw, sizeof raw - 1);
    // The same text as UTF-8, as Windows-1252 (a byte that is not UTF-8) and as UTF-16.
    const QString wide = QString::fromLatin1(text);
    const QByteArray utf16(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
    for (const QByteArray& bytes : {text, text + "\xE9=1", "\xFF\xFE" + utf16}) {
        writeFile(file, bytes);
        const auto get = [&](const QString& section, const QString& key) {
            return getPrivateProfileString(section, key, u"-"_s, file).value;
        };
        EXPECT_EQ(get(u"sec"_s, u"a"_s), u"x"_s);
        EXPECT_EQ(get(u"sec"_s, u"b"_s), u"\"q"_s);
        EXPECT_EQ(get(u"sec"_s, u"ke"_s), u"v"_s);
        EXPECT_EQ(get(u"sec"_s, u"c"_s), u"after"_s);
        EXPECT_EQ(get(u"section"_s, u"a"_s), u"-"_s);
        // "[\0]" names the section before any header, so its keys are never found.
        EXPECT_EQ(get(QString(), u"hidden"_s), u"-"_s);
    }
}

TEST(ProfileReader, DecodesWindowsAndUnicodeFiles)
{
    EXPECT_EQ(decodeText("caf\xE9 \x80 \x81\x9F"), u"café € \u0081Ÿ"_s);
    EXPECT_EQ(decodeText("caf\xC3\xA9"), u"café"_s);
    EXPECT_EQ(decodeText("\xC3\x28"), u"Ã("_s);
    const QByteArray utf8Bom("\xEF\xBB\xBF");
    EXPECT_EQ(decodeText(utf8Bom + "a\xE2\x82\xAC"), u"a€"_s);
    EXPECT_EQ(decodeText(QByteArray::fromHex("fffe6100ac20")), u"a€"_s);
    EXPECT_EQ(decodeText(QByteArray::fromHex("feff006120ac")), u"a€"_s);
    EXPECT_EQ(decodeWindows1252("\xC3\xA9"), u"Ã©"_s);

    QTemporaryDir dir;
    const QString ansi = dir.filePath(u"ansi.ini"_s);
    writeFile(ansi, "[Sec]\nk=caf\xE9 \x80\n");
    EXPECT_EQ(read(ansi, u"k"_s).value, u"café €"_s);
    const QString bom = dir.filePath(u"bom.ini"_s);
    writeFile(bom, "\xEF\xBB\xBF[Sec]\nk=\xC3\xA9\n");
    EXPECT_EQ(read(bom, u"k"_s).value, u"é"_s);
}

TEST(ProfileReader, ReparsesOnlyChangedFiles)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"game.qgd"_s);
    writeFile(file, "[Sec]\nk=one\n");
    const auto first = loadProfile(file);
    ASSERT_TRUE(first);
    EXPECT_EQ(loadProfile(dir.path() + u"//GAME.qgd"_s), first);

    writeFile(file, "[Sec]\nk=three\n");
    const auto second = loadProfile(file);
    EXPECT_NE(second, first);
    EXPECT_EQ(read(file, u"k"_s).value, u"three"_s);

    // Same inode and size: only the modification time tells the versions
    // apart, to the nanosecond.
    struct timespec time = modificationTime(file);
    overwriteInPlace(file, "[Sec]\nk=seven\n");
    setModificationTime(file, time);
    EXPECT_EQ(loadProfile(file), second);
    time.tv_nsec = (time.tv_nsec + 1) % 1'000'000'000;
    setModificationTime(file, time);
    EXPECT_NE(loadProfile(file), second);
    EXPECT_EQ(read(file, u"k"_s).value, u"seven"_s);
}

TEST(ProfileReader, CacheDropsLeastRecentlyUsedFiles)
{
    QTemporaryDir dir;
    const QString kept = dir.filePath(u"kept.ini"_s);
    const QString dropped = dir.filePath(u"dropped.ini"_s);
    writeFile(kept, "[Sec]\nk=1\n");
    writeFile(dropped, "[Sec]\nk=2\n");
    const auto droppedDoc = loadProfile(dropped);
    const auto keptDoc = loadProfile(kept);
    for (int i = 0; i < 100; ++i) {
        const QString other = dir.filePath(u"f%1.ini"_s.arg(i));
        writeFile(other, "[Sec]\nk=3\n");
        loadProfile(other);
        loadProfile(kept);
    }
    EXPECT_EQ(loadProfile(kept), keptDoc);
    EXPECT_NE(loadProfile(dropped), droppedDoc);
}
