#include "control/qForms.h"
#include "dialogs/ApplicationNames.h"
#include "platform/Errors.h"
#include "support/TestHost.h"

#include <QFile>
#include <gtest/gtest.h>

#include <deque>
#include <optional>

namespace {

// Plays the user's part: answers each showing with the next scripted choice,
// Cancel when the choice is empty, and keeps what it was shown.
class ScriptedFileDialog : public qf::FileDialog {
public:
    std::deque<std::optional<QString>> choices;
    std::vector<qf::FileDialogRequest> shown;

    qf::FileDialogResult showOpen(const qf::FileDialogRequest& request) override
    {
        shown.push_back(request);
        if (choices.empty() || !choices.front()) {
            if (!choices.empty())
                choices.pop_front();
            throw qf::CancelError(QStringLiteral("Cancel"));
        }
        const QString chosen = *choices.front();
        choices.pop_front();
        return {chosen, request.flags};
    }
};

class BrowseTest : public ::testing::Test {
protected:
    BrowseTest()
    {
        // The texts come from the host folder, the game data from the component folder.
        host.write(QStringLiteral("host/Data/Languages/0.ini"),
                   "[Texts]\n108=\"Where is \"\n080=?\n");
        control.setAppPath(host.filePath(QStringLiteral("host")));
        control.setComponentFolder(host.path());
        control.setQpGameName(QStringLiteral("Arena"));
        control.setQpQGD(QStringLiteral("arena.qgd"));
        control.setFileDialog(dialog);
        control.widgets().txtPath.change.connect([this] { ++checks; });
    }

    void gameApplication(const QByteArray& value)
    {
        host.write(QStringLiteral("Data/arena.qgd"),
                   "[Quillmarsh Game]\nGame Application=" + value + "\n");
    }

    TestHost host;
    qForms control;
    std::shared_ptr<ScriptedFileDialog> dialog = std::make_shared<ScriptedFileDialog>();
    int checks = 0;
};

} // namespace

TEST(ApplicationNames, KeepFileNamesOfClosedEntriesOnly)
{
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("C:\\Games\\Arena\\arena.exe")),
              QStringLiteral("arena.exe"));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("games/arena.exe")),
              QStringLiteral("arena.exe"));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("a.exe;;b.exe;;")),
              QStringLiteral("a.exe; b.exe"));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("a.exe;;b.exe")), QStringLiteral("a.exe"));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("bin\\a.exe;;x/b.exe;;")),
              QStringLiteral("a.exe; b.exe"));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral(";;a.exe;;;;")), QStringLiteral("a.exe; "));
    EXPECT_EQ(qf::applicationNameList(QStringLiteral("*")), QStringLiteral("*"));
}

TEST_F(BrowseTest, TheDialogIsPresetFromTheGameDataFileUnderTheComponentFolder)
{
    dialog->choices = {std::nullopt, std::nullopt};
    control.cmdBrowse_Click();
    ASSERT_EQ(dialog->shown.size(), 1u);
    EXPECT_EQ(dialog->shown[0].fileName, QStringLiteral("*")) << "no game data file: the default";
    EXPECT_EQ(dialog->shown[0].title, QStringLiteral("Where is Arena (*)?"));
    EXPECT_EQ(dialog->shown[0].filter, QStringLiteral("Applications (*.exe)|*.exe"));
    EXPECT_EQ(dialog->shown[0].flags, 4);
    EXPECT_TRUE(dialog->shown[0].cancelError);

    gameApplication("bin\\Arena.exe;;arena-smp.exe;;");
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown[1].fileName, QStringLiteral("Arena.exe; arena-smp.exe"));
    EXPECT_EQ(dialog->shown[1].title, QStringLiteral("Where is Arena (Arena.exe; arena-smp.exe)?"));
}

TEST_F(BrowseTest, OnlyAProgramIsTakenAndItStartsOneGameCheck)
{
    gameApplication("arena.exe");
    control.setQpGamePath(QStringLiteral("/old"));
    dialog->choices = {QStringLiteral("/games/readme.txt"), QStringLiteral("/games/arena.ex"),
                       QStringLiteral("/games/ARENA.EXE")};
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 3u) << "the dialog opens again until a program is chosen";
    EXPECT_EQ(dialog->shown[2].fileName, QStringLiteral("arena.exe"));
    EXPECT_EQ(control.widgets().txtPath.text(), QStringLiteral("/games/ARENA.EXE"));
    EXPECT_EQ(checks, 1);
    // The routine stores the chosen path; the check it starts keeps the folder.
    EXPECT_EQ(control.qpGamePath(), QStringLiteral("/games/"));
}

TEST_F(BrowseTest, CancelChangesNothingAndStartsNoCheck)
{
    gameApplication("arena.exe");
    control.widgets().txtPath.setText(QStringLiteral("/games/arena"));
    control.setQpGamePath(QStringLiteral("/games/arena"));
    checks = 0;
    dialog->choices = {QStringLiteral("notes.txt"), std::nullopt};
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 2u);
    EXPECT_EQ(control.qpGamePath(), QStringLiteral("/games/arena"));
    EXPECT_EQ(control.widgets().txtPath.text(), QStringLiteral("/games/arena"));
    EXPECT_EQ(checks, 0);

    // A failed title lookup ends the routine before the dialog shows.
    host.write(QStringLiteral("host/Data/Languages/0.ini"), "[Texts]\n");
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 2u);
}
