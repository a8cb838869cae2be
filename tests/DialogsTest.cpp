#include "dialogs/ApplicationNames.h"
#include "platform/DesktopProgramStarter.h"
#include "platform/Errors.h"
#include "platform/IniLanguageTextProvider.h"
#include "support/HostedControl.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

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
        const std::optional<QString> chosen = choices.empty() ? std::nullopt : choices.front();
        if (!choices.empty())
            choices.pop_front();
        if (!chosen)
            throw qf::CancelError(u"Cancel"_s);
        return {*chosen, request.flags};
    }
};

// Stands in for the desktop's text editor: records its arguments, NUL-separated.
class EditorScript {
public:
    explicit EditorScript(const TestHost& host) : m_path(host.filePath(u"editor.sh"_s))
    {
        host.write(u"editor.sh"_s,
                   "#!/bin/sh\nprintf '%s\\0' \"$@\" > \"$0.tmp\" && mv \"$0.tmp\" \"$0.args\"\n");
        QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QString& path() const { return m_path; }

    // The arguments of the run that was started; it runs detached.
    QStringList waitForArguments() const
    {
        QFile args(m_path + u".args"_s);
        const QDeadlineTimer deadline(10'000);
        while (!args.exists() && !deadline.hasExpired())
            QThread::msleep(10);
        if (!args.open(QIODevice::ReadOnly))
            return {u"<not started>"_s};
        QStringList arguments = QString::fromUtf8(args.readAll()).split(QChar(0));
        arguments.removeLast();
        args.remove();
        return arguments;
    }

private:
    QString m_path;
};

struct RecordingMessageBox : qf::MessageBox {
    void show(const QString& text, int style, const QString& title) override
    {
        shown.append(QStringList{text, QString::number(style), title});
    }
    QList<QStringList> shown;
};

// The texts come from the host folder, the game data and configs from the
// component folder.
class DialogsTest : public HostedControl {
protected:
    DialogsTest()
    {
        host.writeLanguage(0, "108=\"Where is \"\n080=?\n077=\"Select a config file first.\"\n");
        control.setComponentFolder(host.filePath(u"component"_s));
        control.setFileDialog(dialog);
        w.txtPath.change.connect([this] { ++checks; });
    }

    void gameApplication(const QByteArray& value)
    {
        host.write(u"component/Data/game.qgd"_s,
                   "[Quillmarsh Game]\nGame Application=" + value + "\n");
    }
    QString configFile(const QString& name) const
    {
        return host.filePath(u"component/Data/Arena/Configs/"_s + name);
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
                                                 {u"\\x/a.exe;;x/b.exe;;"_s, u"x/a.exe; b.exe"_s},
                                                 {u";;a.exe;;;;"_s, u"a.exe; "_s},
                                                 {u"*"_s, u"*"_s}};
    for (const auto& [entries, names] : cases)
        EXPECT_EQ(qf::applicationNameList(entries), names) << entries;
}

TEST_F(DialogsTest, TheDialogIsPresetFromTheGameDataFileUnderTheComponentFolder)
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

TEST_F(DialogsTest, OnlyAProgramIsTakenAndItStartsOneGameCheck)
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

TEST_F(DialogsTest, CancelChangesNothingAndStartsNoCheck)
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
    control.setLanguageTextProvider(std::make_shared<qf::IniLanguageTextProvider>(
        qf::IniLanguageTextProvider::Sources::HostFilesOnly));
    control.cmdBrowse_Click();
    EXPECT_EQ(dialog->shown.size(), 2u);
}

TEST_F(DialogsTest, TheGameApplicationListsTheGamesConfigsInTheComponentFolder)
{
    qForms fresh;
    fresh.setAppPath(u"/opt/launcher"_s);
    EXPECT_EQ(fresh.componentFolder(), u"/opt/launcher"_s) << "by default the host's folder";

    for (const char* name : {"b.cfg", "A.CFG", "notes.txt"})
        host.write(u"component/Data/Arena/Configs/"_s + QString::fromLatin1(name), "");
    control.setQpGameApplication(u"arena.exe"_s);
    EXPECT_EQ(w.lstConfig.files(), (QStringList{u"A.CFG"_s, u"b.cfg"_s}));
    EXPECT_EQ(w.lstConfig.fileName(), u"A.CFG"_s);

    control.setQpGameName(u"No Configs"_s);
    control.setQpGameApplication(u"other.exe"_s);
    EXPECT_EQ(control.qpGameApplication(), u"other.exe"_s);
    EXPECT_EQ(w.lstConfig.files(), (QStringList{u"A.CFG"_s, u"b.cfg"_s}));
}

TEST_F(DialogsTest, TheEditorGetsTheSelectedFileAsOneArgumentThatNoShellSees)
{
    const EditorScript editor(host);
    control.setProgramStarter(std::make_shared<qf::DesktopProgramStarter>(editor.path()));
    const QString name = u"-rf \"two words\" 'q';$(touch pwned) `touch pwned`.cfg"_s;
    host.write(u"component/Data/Arena/Configs/"_s + name, "");
    control.setQpGameApplication(u"arena.exe"_s);
    w.cmdEdit.press();
    EXPECT_EQ(editor.waitForArguments(), QStringList{configFile(name)});
    EXPECT_FALSE(QFile::exists(host.filePath(u"pwned"_s)) || QFile::exists(u"pwned"_s));

    // Any other program gets the rest of the line as its one argument.
    qf::DesktopProgramStarter(u"unused"_s).start(editor.path() + u" a  b;$(x)"_s, 1);
    EXPECT_EQ(editor.waitForArguments(), QStringList{u"a  b;$(x)"_s});

    // The host hears of an editor that cannot start, with the file on disk;
    // the caller gets the error too. (One that gives up later is told from
    // the event loop: the launcher's tests show it.)
    QList<QStringList> failures;
    QObject::connect(&control, &qForms::editorStartFailed,
                     [&](const QString& file, const QString& reason) {
                         failures.append({file, reason});
                     });
    control.setProgramStarter(
        std::make_shared<qf::DesktopProgramStarter>(host.filePath(u"no editor"_s)));
    EXPECT_THROW(control.cmdEdit_Click(), qf::Error);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(failures[0][0], configFile(name));
    EXPECT_TRUE(failures[0][1].startsWith(host.filePath(u"no editor is not installed"_s)))
        << failures[0][1];
}

TEST_F(DialogsTest, EditWithNothingSelectedShowsText077)
{
    const auto box = std::make_shared<RecordingMessageBox>();
    control.setMessageBox(box);
    w.cmdEdit.press();
    EXPECT_EQ(box->shown,
              (QList<QStringList>{{u"Select a config file first."_s, u"64"_s, u"Quillmarsh"_s}}));

    host.writeLanguage(0, "");
    control.setLanguageTextProvider(std::make_shared<qf::IniLanguageTextProvider>(
        qf::IniLanguageTextProvider::Sources::HostFilesOnly));
    EXPECT_THROW(control.cmdEdit_Click(), qf::TextLookupError);
    EXPECT_EQ(box->shown.size(), 1);
}
