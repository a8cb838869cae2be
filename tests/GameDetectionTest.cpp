#include "PeImage.h"
#include "detect/Function.h"
#include "platform/IniLanguageTextProvider.h"
#include "platform/PeVersionResource.h"
#include "support/HostedControl.h"
#include "support/TraceRecorder.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

// A host folder with the status texts, and a game installation beside it.
class GameCheckTest : public HostedControl {
protected:
    GameCheckTest()
    {
        host.writeLanguage(
            0, "000=\": not set up\"\n001=\" found\"\n002=\" missing\"\n003=\" version \"\n");
        host.write(u"game/arena.exe"_s,
                   qf::PeImage({.fileVersionMS = 0x00040000, .fileVersionLS = 40000}).bytes);
        control.setQpGameApplication(u"arena.exe"_s);
        control.setQpGameBase(u"base"_s);
        control.setQpVersionType(u"0"_s);
        QObject::connect(&control, &qForms::StatusChange, [this] {
            seen.append(control.qpGameStatusColour() + QLatin1Char('|') + control.qpGameStatus());
        });
    }

    // Runs one check on the path: through the folder box when that changes it.
    void check(const QString& path)
    {
        if (w.txtPath.text() == path)
            control.qCheckGame();
        else
            w.txtPath.setText(path);
    }
    QString gameFolder() const { return host.filePath(u"game"_s); }

    QStringList seen;
};

class PeVersion : public ::testing::Test {
protected:
    QString versionOf(const PeImage& image)
    {
        EXPECT_TRUE(image.write(path));
        return Function::FileVersionText(path);
    }

    QTemporaryDir dir;
    const QString path = dir.filePath(u"game.exe"_s);
};

// Records what the parser reads from the source below it.
class CountingSource final : public pe::ByteSource {
public:
    explicit CountingSource(pe::ByteSource& inner) : inner_(inner) {}
    quint64 size() const override { return inner_.size(); }
    bool read(quint64 offset, char* out, quint64 length) override
    {
        total += length;
        largest = std::max(largest, length);
        return inner_.read(offset, out, length);
    }
    quint64 total = 0;
    quint64 largest = 0;

private:
    pe::ByteSource& inner_;
};

} // namespace

TEST_F(GameCheckTest, TooShortAPathIsNotConfiguredAndTestsNoFile)
{
    control.setQpUseModSelection(true);
    TraceRecorder traces;
    check(u"ab"_s);
    EXPECT_EQ(control.qpGameStatusColour(), u"yellow"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena: not set up"_s);
    EXPECT_EQ(w.lblStatus.foreColor(), 0x00FFFFu);
    EXPECT_FALSE(w.chkModCheck.isEnabled());
    EXPECT_FALSE(w.comModSelect.isEnabled());
    EXPECT_EQ(traces.messages,
              (QStringList{u"strGamePath > ab"_s, u"strGameApplication > arena.exe"_s,
                           u"strGameBase > base"_s}));
    // The handler saw the new colour together with the new text.
    EXPECT_EQ(seen, QStringList{u"yellow| Arena: not set up"_s});
    check(u"abc"_s);
    EXPECT_EQ(control.qpGameStatusColour(), u"red"_s) << "three characters are a path";
}

TEST_F(GameCheckTest, AProgramPathIsSplitIntoFolderAndProgramAtItsLastSeparator)
{
    const QString folder = gameFolder();
    const struct {
        QString typed;
        QString folderAfter;
    } cases[] = {
        {folder + u"/arena.exe"_s, folder + u"/"_s},
        {folder + u"\\ARENA.EXE"_s, folder + u"\\"_s},
        {host.path() + u"\\game/arena.exe"_s, host.path() + u"\\game/"_s},
        {folder, folder},
    };
    for (const auto& c : cases) {
        check(c.typed);
        EXPECT_EQ(control.qpGamePath(), c.folderAfter) << c.typed;
        EXPECT_EQ(control.qpGameStatusColour(), u"green"_s) << c.typed;
        EXPECT_EQ(control.qpGameStatus(), u" Arena found"_s) << c.typed;
    }

    // A text ending in .exe but naming another program is not found.
    check(folder + u"/other.exe"_s);
    EXPECT_EQ(control.qpGameStatusColour(), u"red"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena missing"_s);
    EXPECT_EQ(w.lblStatus.foreColor(), 0x0000FFu);
}

TEST_F(GameCheckTest, VersionTypesDecideTheStatusText)
{
    control.setQpVersionType(u"2"_s);
    check(gameFolder());
    EXPECT_EQ(control.qpGameStatus(), u" Arena version v4.0.0.40000"_s);
    EXPECT_EQ(w.lblStatus.foreColor(), 0x00FF00u);

    control.setQpVersionType(u"7"_s);
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), u" Arena"_s);
    control.setQpVersionType(u"2.0"_s);
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), u" Arena"_s) << "the type is compared as text";

    // A program without a version resource reads as 0.0.0.0.
    host.write(u"game/arena.exe"_s, "#!/bin/sh\n");
    control.setQpVersionType(u"2"_s);
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), u" Arena version v0.0.0.0"_s);
}

TEST_F(GameCheckTest,
       PakFilesNamedInGameListFilesGiveTheVersionTheLastMatchWinsAndTheBaseIsItsLastPart)
{
    control.setQpVersionType(u"1"_s);
    host.write(u"Data/Arena/AVA/a.AVA"_s,
               "[AVA Game]\nPakName=pak\nPakForVersion=1\nVersion=1.16\n");
    host.write(u"Data/Arena/AVA/B.ava"_s,
               "[ava game]\npakname=pak\nPakForVersion=8\nPakExtension=.PK3\nVersion=1.32\n");
    host.write(u"game/base/pak1.pk3"_s, "");
    host.write(u"game/base/pak8.pk3"_s, "");

    TraceRecorder traces;
    check(gameFolder() + u"/arena.exe"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena version 1.32"_s);
    const QString listFolder = host.path() + u"\\Data\\Arena\\AVA"_s;
    EXPECT_EQ(traces.messages.mid(3),
              (QStringList{u"strApplicationName > arena.exe"_s, u"lstAVA.Path > "_s + listFolder,
                           u"AVA List COunt > 2"_s, u"strPakForVersion > 1"_s,
                           u"strPakName > pak"_s, gameFolder() + u"/\\base\\pak1.pk3"_s,
                           u"strVersion > 1.16"_s, u"strPakForVersion > 8"_s, u"strPakName > pak"_s,
                           gameFolder() + u"/\\base\\pak8.PK3"_s, u"strVersion > 1.32"_s,
                           u"strFV > "_s + u" version 1.32"_s}));

    // A later miss keeps the version found before it.
    QFile::remove(host.filePath(u"game/base/pak8.pk3"_s));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), u" Arena version 1.16"_s);

    // No game list folder: not found, even though the program is there.
    control.setQpGameName(u"Other"_s);
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatusColour(), u"red"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Other missing"_s);

    // Beside a program in a folder, the base is the game base's last part.
    control.setQpGameName(u"Arena"_s);
    control.setQpGameApplication(u"bin\\arena.exe"_s);
    control.setQpGameBase(u"data\\base"_s);
    check(gameFolder() + u"\\arena.exe"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena version 1.16"_s);
    control.setQpGameBase(u"base"_s);
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatusColour(), u"red"_s) << "the base is empty then";
}

TEST_F(GameCheckTest, EveryChangeOfTheFolderTextRunsACheckAndAMissingProgramIsTracedWithItsStatus)
{
    TraceRecorder traces;
    QTemporaryDir empty;
    w.txtPath.setText(empty.path());
    EXPECT_EQ(control.qpGameStatusColour(), u"red"_s);
    EXPECT_EQ(traces.messages.last(), u"strFV >  Arena missing"_s);

    w.txtPath.setText(gameFolder());
    EXPECT_EQ(control.qpGameStatusColour(), u"green"_s);
    EXPECT_EQ(seen, (QStringList{u"red| Arena missing"_s, u"green| Arena found"_s}));

    // The same outcome again changes no caption and so raises no event; a host
    // raises it itself by calling the handler.
    control.qCheckGame();
    EXPECT_EQ(seen.size(), 2);
    control.lblStatus_Change();
    EXPECT_TRUE(QMetaObject::invokeMethod(&control, "lblStatus_Change"));
    EXPECT_EQ(seen.size(), 4);

    // Without its texts the status line keeps its text but the colour still changes.
    host.writeLanguage(0, "");
    control.setLanguageTextProvider(std::make_shared<qf::IniLanguageTextProvider>(
        qf::IniLanguageTextProvider::Sources::HostFilesOnly));
    w.txtPath.setText(u"x"_s);
    EXPECT_EQ(control.qpGameStatusColour(), u"yellow"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena found"_s);
}

TEST_F(PeVersion, ReadsFileVersionOfPe32AndPe32Plus)
{
    for (bool plus : {false, true}) {
        SCOPED_TRACE(plus ? "PE32+" : "PE32");
        const PeImage image({.pe32Plus = plus, .fileVersionMS = 0x40000, .fileVersionLS = 40000});
        EXPECT_EQ(versionOf(image), u"4.0.0.40000"_s);
        EXPECT_EQ(pe::fileVersionInfoSize(path), quint32(image.versionBlockSize));
        EXPECT_EQ(pe::fileVersionInfo(path, 64000),
                  image.bytes.mid(image.versionBlock, image.versionBlockSize));

        EXPECT_EQ(versionOf(PeImage(
                      {.pe32Plus = plus, .fileVersionMS = 0x1FFFF, .fileVersionLS = 0x20003})),
                  u"1.65535.2.3"_s);
        const Function::VS_FIXEDFILEINFO info = Function::ReadFixedFileInfo(path);
        EXPECT_EQ(info.dwSignature, 0xFEEF04BDu);
        EXPECT_EQ(info.dwProductVersionLS, 0x20003u);
        EXPECT_EQ(info.dwFileOS, 0x40004u);
    }
}

TEST_F(PeVersion, TheVersionIsReadWhereWindowsFindsIt)
{
    // The generated image files the decoy 9.9.9.9 under the id after resourceName
    // and under a second language.
    const struct {
        const char* what;
        quint16 resourceName;
        std::function<void(PeImage&)> change;
        const char16_t* version;
    } cases[] = {
        {"filed under 2", 2, {}, u"0.0.0.0"},
        {"filed under 0", 0, {}, u"9.9.9.9"},
        {"a section without a virtual size: its raw size counts", 1,
         [](PeImage& i) { i.set32(i.resourceSection + 8, 0); }, u"4.0.0.40000"},
        {"a section ending where the resources begin", 1,
         [](PeImage& i) { i.set32(i.resourceSection - 40 + 8, 0x1000); }, u"4.0.0.40000"},
        {"a first language given by name", 1,
         [](PeImage& i) {
             i.set16(i.languageDirectory + 12, 1);
             i.set16(i.languageDirectory + 14, 1);
         },
         u"4.0.0.40000"},
    };
    for (const auto& c : cases) {
        PeImage image(
            {.fileVersionMS = 0x40000, .fileVersionLS = 40000, .resourceName = c.resourceName});
        if (c.change)
            c.change(image);
        EXPECT_EQ(versionOf(image), QString::fromUtf16(c.version)) << c.what;
        if (c.resourceName == 2) {
            EXPECT_EQ(pe::fileVersionInfoSize(path), 0u);
        }
    }
}

TEST_F(PeVersion, FilesOtherThanVersionedProgramsReadAsZero)
{
    const auto write = [&](const QString& name, const QByteArray& content) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    };
    PeImage({.withResources = false, .fileVersionMS = 0x40000}).write(dir.filePath(u"plain.exe"_s));
    QDir(dir.path()).mkdir(u"folder.exe"_s);
    const QString paths[] = {
        dir.filePath(u"plain.exe"_s),
        write(u"elf.exe"_s, QByteArray("\x7F"
                                       "ELF\x02\x01\x01",
                                       7)
                                .leftJustified(64, '\0')),
        write(u"script.exe"_s, "#!/bin/sh\necho MZ\n"),
        write(u"empty.exe"_s, {}),
        dir.filePath(u"folder.exe"_s),
        dir.filePath(u"missing.exe"_s),
    };
    for (const QString& file : paths) {
        EXPECT_EQ(Function::FileVersionText(file), u"0.0.0.0"_s) << file;
        EXPECT_EQ(pe::fileVersionInfoSize(file), 0u) << file;
        EXPECT_TRUE(pe::fileVersionInfo(file, 64000).isEmpty()) << file;
    }
}

TEST_F(PeVersion, TruncatedProgramHasItsVersionOnlyWithTheWholeBlock)
{
    for (bool plus : {false, true}) {
        const PeImage image({.pe32Plus = plus, .fileVersionMS = 0x40000, .fileVersionLS = 40000});
        const qsizetype complete = image.versionBlock + image.versionBlockSize;
        ASSERT_TRUE(image.write(path));
        for (qsizetype length = image.bytes.size(); length >= 0; --length) {
            ASSERT_TRUE(QFile::resize(path, length));
            ASSERT_EQ(Function::FileVersionText(path),
                      length >= complete ? u"4.0.0.40000"_s : u"0.0.0.0"_s)
                << (plus ? "PE32+ cut at " : "PE32 cut at ") << length;
        }
    }
}

TEST_F(PeVersion, HostileHeadersDirectoriesAndBlocksReadAsZero)
{
    const std::pair<const char*, std::function<void(PeImage&)>> damages[] = {
        {"no MZ signature", [](PeImage& i) { i.set16(0, 0x5A4E); }},
        // The PE signature lies six bytes before the section count.
        {"no PE signature", [](PeImage& i) { i.set32(i.sectionCount - 6, 0x4551); }},
        {"only two data directories", [](PeImage& i) { i.set32(i.resourceDirectory - 20, 2); }},
        {"cyclic directories", [](PeImage& i) { i.makeDirectoryCyclic(); }},
        {"PE header past the end", [](PeImage& i) { i.set32(0x3C, 0xFFFFFFF0); }},
        {"65535 sections", [](PeImage& i) { i.set16(i.sectionCount, 0xFFFF); }},
        {"65535 type entries", [](PeImage& i) { i.set16(i.rootDirectory + 14, 0xFFFF); }},
        {"resource directory past the end",
         [](PeImage& i) { i.set32(i.resourceDirectory, 0x7FFFFFF0); }},
        {"section raw data past the end",
         [](PeImage& i) { i.set32(i.resourceSection + 20, 0xFFFFFE00); }},
        {"version type entry naming no directory",
         [](PeImage& i) { i.set32(i.rootDirectory + 28, 40); }},
        // Entries counted as string names are not ids, whatever they hold.
        {"the version type counted as a string name",
         [](PeImage& i) {
             i.set16(i.rootDirectory + 12, 2);
             i.set16(i.rootDirectory + 14, 1);
         }},
        {"the version's name counted as a string name",
         [](PeImage& i) {
             i.set16(i.nameDirectory + 12, 1);
             i.set16(i.nameDirectory + 14, 1);
         }},
        {"name entry naming no directory", [](PeImage& i) { i.set32(i.nameDirectory + 20, 72); }},
        {"name directory past the end",
         [](PeImage& i) { i.set32(i.rootDirectory + 28, 0xFFFFFFF0); }},
        {"data past the end", [](PeImage& i) { i.set32(i.dataEntry, 0xFFFFFF00); }},
        {"data size wrapping around", [](PeImage& i) { i.set32(i.dataEntry + 4, 0xFFFFFFFF); }},
        {"key not VS_VERSION_INFO", [](PeImage& i) { i.set16(i.versionBlock + 6, 'X'); }},
        {"empty root value", [](PeImage& i) { i.set16(i.versionBlock + 2, 0); }},
        {"root value beyond wLength", [](PeImage& i) { i.set16(i.versionBlock, 60); }},
    };
    for (const auto& [name, damage] : damages) {
        PeImage image({.fileVersionMS = 0x40000, .fileVersionLS = 40000});
        damage(image);
        EXPECT_EQ(versionOf(image), u"0.0.0.0"_s) << name;
    }
}

TEST_F(PeVersion, CopiesAsManyRecordBytesAsTheRootValueHolds)
{
    // A longer value fills the record and nothing beyond it.
    ASSERT_TRUE(
        PeImage({.fileVersionMS = 0x40000, .fileVersionLS = 40000, .valueLength = 60}).write(path));
    Function::VS_FIXEDFILEINFO info = Function::ReadFixedFileInfo(path);
    EXPECT_EQ(info.dwFileVersionLS, 40000u);
    EXPECT_EQ(info.dwFileDateLS, 0u);

    // A shorter one leaves the rest of the record zero, though the file has it.
    ASSERT_TRUE(PeImage({.fileVersionMS = 0x40000, .fileVersionLS = 0x20003, .valueLength = 14})
                    .write(path));
    info = Function::ReadFixedFileInfo(path);
    EXPECT_EQ(info.dwFileVersionMS, 0x40000u);
    EXPECT_EQ(info.dwFileVersionLS, 3u);
    EXPECT_EQ(info.dwProductVersionMS, 0u);
    EXPECT_EQ(info.dwFileOS, 0u);
}

TEST_F(PeVersion, ReadsOnlyHeadersDirectoriesAndAtMost64000BlockBytes)
{
    const PeImage image(
        {.pe32Plus = true, .fileVersionMS = 0x1FFFF, .fileVersionLS = 0x20003, .blockSize = 65000});
    ASSERT_TRUE(image.write(path, 50 << 20));
    EXPECT_EQ(pe::fileVersionInfoSize(path), 65000u);
    EXPECT_EQ(pe::fileVersionInfo(path, 64000), image.bytes.mid(image.versionBlock, 64000));

    pe::FileSource file(path);
    CountingSource counted(file);
    const Function::VS_FIXEDFILEINFO info = Function::ReadFixedFileInfo(counted);
    EXPECT_EQ(info.dwFileVersionMS, 0x1FFFFu);
    EXPECT_EQ(counted.largest, 64000u);
    EXPECT_LT(counted.total, 64000u + 2048);
    pe::MemorySource memory(image.bytes);
    EXPECT_EQ(Function::ReadFixedFileInfo(memory).dwFileVersionMS, 0x1FFFFu);

    // A root value that fits in wLength but not in the bytes read is not located.
    ASSERT_TRUE(
        PeImage({.fileVersionMS = 0x1FFFF, .valueLength = 64000, .blockSize = 65000}).write(path));
    EXPECT_EQ(Function::FileVersionText(path), u"0.0.0.0"_s);
}
