#include "dialogs/ApplicationNames.h"
#include "platform/Errors.h"
#include "support/HostedControl.h"

#include <QFile>

#include <deque>
#include <optional>

using namespace Qt::Literals::StringLiterals;

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
            throw qf::CancelError(u"Cancel"_s);
        }
        const QString chosen = *choices.front();
        choices.pop_front();
        return {chosen, request.flags};
    }
};

class BrowseTest : public HostedControl {
protected:
    BrowseTest()
    {
        // The texts come from the host folder, the game data from the component folder.
        host.writeLanguage(0, "108=\"Where is \"\n080=?\n");
        control.setComponentFolder(host.filePath(u"component"_s));
        control.setFileDialog(dialog);
        w.txtPath.change.connect([this] { ++checks; });
    }

    void gameApplication(const QByteArray& value)
    {
        host.write(u"component/Data/game.qgd"_s,
                   "[Quillmarsh Game]\nGame Application=" + value + "\n");
    }

    std::shared_ptr<ScriptedFileDialog> dialog = std::make_shared<ScriptedFileDialog>();
    int checks = 0;
};

} // namespace

TEST(ApplicationNames, KeepFileNamesOfClosedEntriesOnly)
{
    const std::pair<QString, QString> cases[] = {{u"C:\\Games\\Arena\\arena.exe"_s, u"arena.exe"_s},
                                                 {u"games/arena.exe"_s, u"arena.exe"_s},
                                                 {u"a.exe;;b.exe;;"_s, u"a.exe; b.exe"_s},
                                                 {u"a.exe;;b.exe"_s, u"a.exe"_s},
                                                 {u"bin\\a.exe;;x/b.exe;;"_s, u"a.exe; b.exe"_s},
                                                 {u";;a.exe;;;;"_s, u"a.exe; "_s},
                                                 {u"*"_s, u"*"_s}};
    for (const auto& [entries, names] : cases)
        EXPECT_EQ(qf::applicationNameList(entries), names) << entries;
}

TEST_F(BrowseTest, TheDialogIsPresetFromTheGameDataFileUnderTheComponentFolder)
{
    dialog->choices = {std::nullopt, std::nullopt};
    control.cmdBrowse_Click();
    ASSERT_EQ(dialog->shown.size(), 1u);
    EXPECT_EQ(dialog->shown[0].fileName, u"*"_s) << "no game data file: the default";
    EXPECT_EQ(dialog->shown[0].title, u"Where is Arena (*)?"_s);
    EXPECT_EQ(dialog->shown[0].filter, u"Applications (*.exe)|*.exe"_s);
    EXPECT_EQ(dialog->shown[0].flags, 4);
    EXPECT_TRUE(dialog->shown[0].cancelError);

    gameApplication("bin\\Arena.exe;;arena-smp.exe;;");
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown[1].fileName, u"Arena.exe; arena-smp.exe"_s);
    EXPECT_EQ(dialog->shown[1].title, u"Where is Arena (Arena.exe; arena-smp.exe)?"_s);
}

TEST_F(BrowseTest, OnlyAProgramIsTakenAndItStartsOneGameCheck)
{
    gameApplication("arena.exe");
    control.setQpGamePath(u"/old"_s);
    dialog->choices = {u"/games/readme.txt"_s, u"/games/arena.ex"_s, u"/games/ARENA.EXE"_s};
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 3u) << "the dialog opens again until a program is chosen";
    EXPECT_EQ(dialog->shown[2].fileName, u"arena.exe"_s);
    EXPECT_EQ(w.txtPath.text(), u"/games/ARENA.EXE"_s);
    EXPECT_EQ(checks, 1);
    // The routine stores the chosen path; the check it starts keeps the folder.
    EXPECT_EQ(control.qpGamePath(), u"/games/"_s);
}

TEST_F(BrowseTest, CancelChangesNothingAndStartsNoCheck)
{
    gameApplication("arena.exe");
    w.txtPath.setText(u"/games/arena"_s);
    control.setQpGamePath(u"/games/arena"_s);
    checks = 0;
    dialog->choices = {u"notes.txt"_s, std::nullopt};
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 2u);
    EXPECT_EQ(control.qpGamePath(), u"/games/arena"_s);
    EXPECT_EQ(w.txtPath.text(), u"/games/arena"_s);
    EXPECT_EQ(checks, 0);

    // A failed title lookup ends the routine before the dialog shows.
    host.writeLanguage(0, "");
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 2u);
}
