#include "PeImage.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "support/TestHost.h"
#include "support/TraceRecorder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

// A host folder with the status texts, and a game installation beside it.
class GameCheckTest : public ::testing::Test {
protected:
    GameCheckTest()
    {
        host.writeLanguage(
            0, "000=\": not set up\"\n001=\" found\"\n002=\" missing\"\n003=\" version \"\n");
        host.write(QStringLiteral("game/arena.exe"),
                   qf::PeImage({.fileVersionMS = 0x00040000, .fileVersionLS = 40000}).bytes);
        control.setAppPath(host.path());
        control.setQpGameName(QStringLiteral("Arena"));
        control.setQpGameApplication(QStringLiteral("arena.exe"));
        control.setQpGameBase(QStringLiteral("base"));
        control.setQpVersionType(QStringLiteral("0"));
        control.setSettingsStore(
            std::make_shared<qf::IniFileSettingsStore>(host.filePath(QStringLiteral("config"))));
        QObject::connect(&control, &qForms::StatusChange, [this] {
            seen.append(control.qpGameStatusColour() + QLatin1Char('|') + control.qpGameStatus());
        });
    }

    // Runs one check on the path: through the folder box when that changes it.
    void check(const QString& path)
    {
        qf::TextBox& txtPath = control.widgets().txtPath;
        if (txtPath.text() == path)
            control.qCheckGame();
        else
            txtPath.setText(path);
    }
    QString gameFolder() const { return host.filePath(QStringLiteral("game")); }

    TestHost host;
    qForms control;
    QStringList seen;
};

} // namespace

TEST_F(GameCheckTest, TooShortAPathIsNotConfiguredAndTestsNoFile)
{
    control.setQpUseModSelection(true);
    TraceRecorder traces;
    check(QStringLiteral("ab"));
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("yellow"));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena: not set up"));
    EXPECT_EQ(control.widgets().lblStatus.foreColor(), 0x00FFFFu);
    EXPECT_FALSE(control.widgets().chkModCheck.isEnabled());
    EXPECT_FALSE(control.widgets().comModSelect.isEnabled());
    EXPECT_EQ(traces.messages, (QStringList{QStringLiteral("strGamePath > ab"),
                                            QStringLiteral("strGameApplication > arena.exe"),
                                            QStringLiteral("strGameBase > base")}));
    // The handler saw the new colour together with the new text.
    EXPECT_EQ(seen, QStringList{QStringLiteral("yellow| Arena: not set up")});
}

TEST_F(GameCheckTest, AProgramPathIsSplitIntoFolderAndProgramAtItsLastSeparator)
{
    const QString folder = gameFolder();
    const struct {
        QString typed;
        QString folderAfter;
    } cases[] = {
        {folder + QStringLiteral("/arena.exe"), folder + QStringLiteral("/")},
        {folder + QStringLiteral("\\ARENA.EXE"), folder + QStringLiteral("\\")},
        {host.path() + QStringLiteral("\\game/arena.exe"), host.path() + QStringLiteral("\\game/")},
        {folder, folder},
    };
    for (const auto& c : cases) {
        check(c.typed);
        EXPECT_EQ(control.qpGamePath(), c.folderAfter) << c.typed;
        EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("green")) << c.typed;
        EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena found")) << c.typed;
    }

    // A text ending in .exe but naming another program is not found.
    check(folder + QStringLiteral("/other.exe"));
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("red"));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena missing"));
    EXPECT_EQ(control.widgets().lblStatus.foreColor(), 0x0000FFu);
}

TEST_F(GameCheckTest, VersionTypesDecideTheStatusText)
{
    control.setQpVersionType(QStringLiteral("2"));
    check(gameFolder());
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena version v4.0.0.40000"));
    EXPECT_EQ(control.widgets().lblStatus.foreColor(), 0x00FF00u);

    control.setQpVersionType(QStringLiteral("7"));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena"));
    control.setQpVersionType(QStringLiteral("2.0"));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena")) << "the type is compared as text";

    // A program without a version resource reads as 0.0.0.0.
    host.write(QStringLiteral("game/arena.exe"), "#!/bin/sh\n");
    control.setQpVersionType(QStringLiteral("2"));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena version v0.0.0.0"));
}

TEST_F(GameCheckTest, PakFilesNamedInGameListFilesGiveTheVersionAndTheLastMatchWins)
{
    control.setQpVersionType(QStringLiteral("1"));
    host.write(QStringLiteral("Data/Arena/AVA/a.AVA"),
               "[AVA Game]\nPakName=pak\nPakForVersion=1\nVersion=1.16\n");
    host.write(QStringLiteral("Data/Arena/AVA/B.ava"),
               "[ava game]\npakname=pak\nPakForVersion=8\nPakExtension=.PK3\nVersion=1.32\n");
    host.write(QStringLiteral("game/base/pak1.pk3"), "");
    host.write(QStringLiteral("game/base/pak8.pk3"), "");

    TraceRecorder traces;
    check(gameFolder() + QStringLiteral("/arena.exe"));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena version 1.32"));
    const QString listFolder = host.path() + QStringLiteral("\\Data\\Arena\\AVA");
    EXPECT_EQ(
        traces.messages.mid(3),
        (QStringList{
            QStringLiteral("strApplicationName > arena.exe"),
            QStringLiteral("lstAVA.Path > ") + listFolder, QStringLiteral("AVA List COunt > 2"),
            QStringLiteral("strPakForVersion > 1"), QStringLiteral("strPakName > pak"),
            gameFolder() + QStringLiteral("/\\base\\pak1.pk3"), QStringLiteral("strVersion > 1.16"),
            QStringLiteral("strPakForVersion > 8"), QStringLiteral("strPakName > pak"),
            gameFolder() + QStringLiteral("/\\base\\pak8.PK3"), QStringLiteral("strVersion > 1.32"),
            QStringLiteral("strFV > ") + QStringLiteral(" version 1.32")}));

    // A later miss keeps the version found before it.
    QFile::remove(host.filePath(QStringLiteral("game/base/pak8.pk3")));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena version 1.16"));

    // No game list folder: not found, even though the program is there.
    control.setQpGameName(QStringLiteral("Other"));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("red"));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Other missing"));
}

TEST_F(GameCheckTest, BaseOfAProgramPathIsTheLastBackslashPartOfTheGameBase)
{
    control.setQpVersionType(QStringLiteral("1"));
    control.setQpGameApplication(QStringLiteral("bin\\arena.exe"));
    control.setQpGameBase(QStringLiteral("data\\base"));
    host.write(QStringLiteral("Data/Arena/AVA/a.AVA"), "[AVA Game]\nPakName=pak\nVersion=9\n");
    host.write(QStringLiteral("game/base/pak.pk3"), "");
    TraceRecorder traces;
    check(gameFolder() + QStringLiteral("\\arena.exe"));
    EXPECT_TRUE(traces.messages.contains(gameFolder() + QStringLiteral("\\\\\\base\\pak.pk3")))
        << qPrintable(traces.messages.join(u'\n'));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena version 9"));

    control.setQpGameBase(QStringLiteral("base"));
    control.qCheckGame();
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("red")) << "the base is empty then";
}

TEST_F(GameCheckTest, EveryChangeOfTheFolderTextRunsACheckAndAMissingProgramIsTracedWithItsStatus)
{
    TraceRecorder traces;
    QTemporaryDir empty;
    control.widgets().txtPath.setText(empty.path());
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("red"));
    EXPECT_EQ(traces.messages.last(), QStringLiteral("strFV >  Arena missing"));

    control.widgets().txtPath.setText(gameFolder());
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("green"));
    EXPECT_EQ(seen, (QStringList{QStringLiteral("red| Arena missing"),
                                 QStringLiteral("green| Arena found")}));

    // The same outcome again changes no caption and so raises no event.
    control.qCheckGame();
    EXPECT_EQ(seen.size(), 2);

    // Without its texts the status line keeps its text but the colour still changes.
    host.writeLanguage(0, "");
    control.widgets().txtPath.setText(QStringLiteral("x"));
    EXPECT_EQ(control.qpGameStatusColour(), QStringLiteral("yellow"));
    EXPECT_EQ(control.qpGameStatus(), QStringLiteral(" Arena found"));
}
