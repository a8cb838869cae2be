#include "platform/DesktopProgramStarter.h"
#include "platform/Errors.h"
#include "support/HostedControl.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace {

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

class ConfigFilesTest : public HostedControl {
protected:
    ConfigFilesTest() { control.setComponentFolder(host.path()); }
};

} // namespace

TEST_F(ConfigFilesTest, TheGameApplicationListsTheGamesConfigsInTheComponentFolder)
{
    EXPECT_FALSE(QDir(qForms().componentFolder()).entryList({u"libqForms.so*"_s}).isEmpty())
        << "by default the folder of the library file";

    for (const char* name : {"b.cfg", "A.CFG", "notes.txt"})
        host.write(u"Data/Arena/Configs/"_s + QString::fromLatin1(name), "");
    control.setQpGameApplication(u"arena.exe"_s);
    EXPECT_EQ(w.lstConfig.files(), (QStringList{u"A.CFG"_s, u"b.cfg"_s}));
    EXPECT_EQ(w.lstConfig.fileName(), u"A.CFG"_s);

    control.setQpGameName(u"No Configs"_s);
    control.setQpGameApplication(u"other.exe"_s);
    EXPECT_EQ(control.qpGameApplication(), u"other.exe"_s);
    EXPECT_EQ(w.lstConfig.files(), (QStringList{u"A.CFG"_s, u"b.cfg"_s}));
}

TEST_F(ConfigFilesTest, TheEditorGetsTheSelectedFileAsOneArgumentThatNoShellSees)
{
    const EditorScript editor(host);
    control.setProgramStarter(std::make_shared<qf::DesktopProgramStarter>(editor.path()));
    const QString name = u"-rf \"two words\" 'q';$(touch pwned) `touch pwned`.cfg"_s;
    host.write(u"Data/Arena/Configs/"_s + name, "");
    control.setQpGameApplication(u"arena.exe"_s);
    w.cmdEdit.press();
    EXPECT_EQ(editor.waitForArguments(),
              QStringList{host.filePath(u"Data/Arena/Configs/"_s + name)});
    EXPECT_FALSE(QFile::exists(host.filePath(u"pwned"_s)) || QFile::exists(u"pwned"_s));

    // Any other program gets the rest of the line as its one argument.
    qf::DesktopProgramStarter(u"unused"_s).start(editor.path() + u" a  b;$(x)"_s, 1);
    EXPECT_EQ(editor.waitForArguments(), QStringList{u"a  b;$(x)"_s});

    control.setProgramStarter(
        std::make_shared<qf::DesktopProgramStarter>(host.filePath(u"no editor"_s)));
    EXPECT_THROW(control.cmdEdit_Click(), qf::Error);
}

TEST_F(ConfigFilesTest, EditWithNothingSelectedShowsText077)
{
    const auto box = std::make_shared<RecordingMessageBox>();
    control.setMessageBox(box);
    host.writeLanguage(0, "077=\"Select a config file first.\"\n");
    w.cmdEdit.press();
    EXPECT_EQ(box->shown,
              (QList<QStringList>{{u"Select a config file first."_s, u"64"_s, u"Quillmarsh"_s}}));

    host.writeLanguage(0, "");
    EXPECT_THROW(control.cmdEdit_Click(), qf::TextLookupError);
    EXPECT_EQ(box->shown.size(), 1);
}
