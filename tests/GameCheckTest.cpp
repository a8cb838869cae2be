#include "PeImage.h"
#include "support/HostedControl.h"
#include "support/TraceRecorder.h"

#include <QDir>

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

TEST_F(GameCheckTest, PakFilesNamedInGameListFilesGiveTheVersionAndTheLastMatchWins)
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
}

TEST_F(GameCheckTest, BaseOfAProgramPathIsTheLastBackslashPartOfTheGameBase)
{
    control.setQpVersionType(u"1"_s);
    control.setQpGameApplication(u"bin\\arena.exe"_s);
    control.setQpGameBase(u"data\\base"_s);
    host.write(u"Data/Arena/AVA/a.AVA"_s, "[AVA Game]\nPakName=pak\nVersion=9\n");
    host.write(u"game/base/pak.pk3"_s, "");
    TraceRecorder traces;
    check(gameFolder() + u"\\arena.exe"_s);
    EXPECT_TRUE(traces.messages.contains(gameFolder() + u"\\\\\\base\\pak.pk3"_s))
        << qPrintable(traces.messages.join(u'\n'));
    EXPECT_EQ(control.qpGameStatus(), u" Arena version 9"_s);

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
    w.txtPath.setText(u"x"_s);
    EXPECT_EQ(control.qpGameStatusColour(), u"yellow"_s);
    EXPECT_EQ(control.qpGameStatus(), u" Arena found"_s);
}
