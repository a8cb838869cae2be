#include "GamePage.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "PeImage.h"
#include "SampleInstallations.h"
#include "context/SettingsKeys.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/MessageBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

namespace {

struct RecordingMessageBox : qf::MessageBox {
    void show(const QString& text, int, const QString&) override { texts << text; }
    QStringList texts;
};

struct LauncherRun {
    int exitCode = 0;
    QString out;
    QString err;
};

// The launcher's user folders for one test: settings, sample games, logs.
class LauncherUser {
public:
    QString folder(const char* name) const { return m_home.filePath(QLatin1String(name)); }
    QString hostFolder() const
    {
        return host.isEmpty() ? QFileInfo(QStringLiteral(QFORMS_LAUNCHER_PATH)).path() +
                                    QStringLiteral("/host")
                              : host;
    }
    // Another host folder for the windows this user opens.
    QString host;

    // Runs the real launcher program.
    LauncherRun launcher(const QStringList& arguments, bool display = true) const
    {
        QProcess launcher;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder("config"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), folder("data"));
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        if (display)
            environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        else
            environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        launcher.setProcessEnvironment(environment);
        launcher.start(QStringLiteral(QFORMS_LAUNCHER_PATH), arguments);
        EXPECT_TRUE(launcher.waitForFinished(60000));
        return {launcher.exitStatus() == QProcess::NormalExit ? launcher.exitCode() : -1,
                QString::fromUtf8(launcher.readAllStandardOutput()).trimmed(),
                QString::fromUtf8(launcher.readAllStandardError())};
    }
    QString printedCommand(int game) const
    {
        const LauncherRun run = launcher(
            {QStringLiteral("--game"), QString::number(game), QStringLiteral("--print-command")});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        return run.out;
    }

    std::unique_ptr<LauncherWindow> window(LauncherConfig config = {}) const
    {
        if (config.games.isEmpty())
            config.games = readLauncherConfig(hostFolder() + QStringLiteral("/launcher.ini")).games;
        auto window = std::make_unique<LauncherWindow>(
            hostFolder(), config, std::make_shared<qf::IniFileSettingsStore>(folder("config")));
        window->setMessageBox(messages);
        return window;
    }

    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();

private:
    QTemporaryDir m_home;
};

template <typename T> T* widget(QWidget& parent, const char* name)
{
    T* found = parent.findChild<T*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

void writeScript(const QString& path, const QByteArray& body)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + body);
    file.close();
    file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
}

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

TEST(LauncherEndToEnd, ChoicesMadeInTheWindowAndAcceptedWithOkSurviveARestart)
{
    LauncherUser user;
    const QString first = user.printedCommand(3);
    EXPECT_TRUE(first.contains(QStringLiteral("Hollow Reach/reach.exe")) &&
                first.contains(QStringLiteral("+exec autoexec.cfg")))
        << first.toStdString();
    EXPECT_FALSE(first.contains(QStringLiteral("fs_game")));

    {
        auto window = user.window();
        window->show();
        window->showGame(2);
        GamePage& page = *window->page(2);
        ASSERT_EQ(page.control().qpGameStatusColour(), QStringLiteral("green"));

        auto* mods = widget<QComboBox>(page, "comModSelect");
        const int ctf = mods->findText(QStringLiteral("ctf"));
        ASSERT_GT(ctf, 0);
        mods->setCurrentIndex(ctf);
        emit mods->activated(ctf);
        widget<QCheckBox>(page, "Check1(1)")->click();
        QTest::keyClicks(widget<QLineEdit>(page, "txtCLP"), QStringLiteral("+set name Tester"));
        widget<QListWidget>(page, "lstConfig")->setCurrentRow(1);
        EXPECT_TRUE(widget<QLineEdit>(*window, "commandLine")
                        ->text()
                        .contains(QStringLiteral("fs_game ctf")));

        widget<QPushButton>(*window, "ok")->click();
        EXPECT_FALSE(window->isVisible());
    }

    const QString restarted = user.printedCommand(3);
    for (const char* expected : {"+set fs_game ctf", "+exec server.cfg", "+set name Tester"})
        EXPECT_TRUE(restarted.contains(QLatin1String(expected))) << restarted.toStdString();
    const LauncherRun remembered = user.launcher({QStringLiteral("--print-command")});
    EXPECT_EQ(remembered.out, restarted) << "the game shown last opens again";
}

TEST(LauncherEndToEnd, TheLanguageSwitchRecaptionsOpenPagesAndTheLaunchersOwnTexts)
{
    LauncherUser user;
    user.printedCommand(1); // the first start creates the demo installations
    auto window = user.window();
    window->showGame(1);
    window->showGame(0);
    qForms& emberfall = window->page(0)->control();
    emberfall.widgets().Check1.at(4).setValue(1);
    ASSERT_FALSE(emberfall.widgets().Combo1.at(1).isEnabled());

    window->setLanguageIndex(1);
    EXPECT_EQ(window->page(2), nullptr) << "a page never shown is not built";
    for (int row = 0; row < 2; ++row) {
        const qForms& control = window->page(row)->control();
        EXPECT_EQ(control.widgets().cmdBrowse.caption(), QStringLiteral("Suchen...")) << row;
        EXPECT_TRUE(control.qpGameStatus().contains(QStringLiteral("wurde gefunden"))) << row;
    }
    EXPECT_EQ(emberfall.widgets().Check1.at(4).caption(), QStringLiteral("Notmodus"));
    EXPECT_EQ(emberfall.widgets().Check1.at(4).value(), 1) << "the unsaved choice stays";
    EXPECT_FALSE(emberfall.widgets().Combo1.at(1).isEnabled());
    EXPECT_EQ(widget<QPushButton>(*window, "play")->text(), QStringLiteral("Spi&elen"));
    window->setLanguageIndex(0);
    EXPECT_EQ(widget<QPushButton>(*window, "play")->text(), QStringLiteral("&Play"));
}

TEST(LauncherEndToEnd, PlayStartsTheGameWithItsArgumentsUnchangedThroughWineOnlyForWindowsPrograms)
{
    LauncherUser user;
    const QString game = user.folder("games/Hollow $Reach \"HD\"");
    const QString runner = user.folder("runner");
    QDir().mkpath(game);
    writeScript(runner, "echo run >> \"$0.count\"\n"
                        "printf '%s\\n' \"$PWD\" \"$@\" > \"$0.args\"\n"
                        "echo loading; echo \"out of memory\"; exit ${FAKE_EXIT:-0}\n");
    const QStringList parameters{QStringLiteral("+name"), QStringLiteral("Tes ter"),
                                 QStringLiteral("$HOME"), QStringLiteral("it's")};
    struct Case {
        const char* what;
        bool windowsProgram;
        QString configuredRunner;
        int exitCode;
        bool started;
        const char* message;
    } cases[] = {
        {"Windows program, exit 0", true, runner, 0, true, nullptr},
        {"Windows program, exit 3", true, runner, 3, true, "exit code 3"},
        {"Linux program", false, QStringLiteral("/missing/wine"), 0, true, nullptr},
        {"no runner", true, QStringLiteral("/missing/wine"), 0, false, "Install Wine"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        QFile::remove(runner + QStringLiteral(".count"));
        QFile::remove(game + QStringLiteral("/reach.exe"));
        QFile::remove(game + QStringLiteral("/reach.exe.count"));
        if (c.windowsProgram)
            ASSERT_TRUE(qf::PeImage(qf::PeOptions{}).write(game + QStringLiteral("/reach.exe")));
        else
            QFile::copy(runner, game + QStringLiteral("/reach.exe"));
        qputenv("FAKE_EXIT", QByteArray::number(c.exitCode));
        user.messages->texts.clear();

        auto window = user.window({{}, c.configuredRunner});
        window->showGame(2);
        GamePage& page = *window->page(2);
        page.control().widgets().txtPath.setText(game);
        page.control().widgets().txtCLP.setText(QStringLiteral("+name \"Tes ter\" $HOME \"it's\""));
        window->play();
        window->play();
        EXPECT_EQ(window->isRunning(2), c.started);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isRunning(2); }, 20000));

        const QString started = c.windowsProgram ? runner : game + QStringLiteral("/reach.exe");
        EXPECT_EQ(linesOf(started + QStringLiteral(".count")).size(), c.started ? 1 : 0);
        if (c.started) {
            QStringList expected{game};
            if (c.windowsProgram)
                expected << game + QStringLiteral("/reach.exe");
            expected << QStringLiteral("+exec") << QStringLiteral("autoexec.cfg") << parameters;
            EXPECT_EQ(linesOf(started + QStringLiteral(".args")), expected);
        }
        if (c.message) {
            ASSERT_FALSE(user.messages->texts.isEmpty());
            EXPECT_TRUE(user.messages->texts.first().contains(QLatin1String(c.message)))
                << user.messages->texts.first().toStdString();
        } else {
            EXPECT_TRUE(user.messages->texts.isEmpty())
                << user.messages->texts.join(u'|').toStdString();
        }
        if (c.exitCode != 0) {
            EXPECT_TRUE(
                user.messages->texts.value(0).contains(QStringLiteral("loading\nout of memory")));
        }
        EXPECT_EQ(page.control().widgets().txtCLP.text(),
                  qf::IniFileSettingsStore(user.folder("config"))
                      .readValue(qf::settings::Application, QStringLiteral("Hollow Reach"),
                                 qf::settings::CommandLineParameters, QString()))
            << "Play keeps the page's choices first";
    }
    qunsetenv("FAKE_EXIT");
}

TEST(LauncherEndToEnd,
     ALibraryOfAThousandGamesBuildsOnlyTheShownPageAndColoursTheRestFromTheirChecks)
{
    LauncherUser user;
    const SampleInstallations samples(user.folder("games"));
    ASSERT_TRUE(samples.create());
    const QList<GameEntry> sampleGames =
        readLauncherConfig(user.hostFolder() + QStringLiteral("/launcher.ini")).games;
    qf::IniFileSettingsStore store(user.folder("config"));
    LauncherConfig library;
    for (int i = 0; i < 1000; ++i) {
        GameEntry game = sampleGames.at(i % 3);
        game.name += QStringLiteral(" %1").arg(i);
        // Found, not found, and no folder chosen, in turn.
        const QString folder = i % 3 == 0   ? samples.installationOf(game)
                               : i % 3 == 1 ? user.folder("nowhere")
                                            : QString();
        store.saveValue(qf::settings::Application, game.name, qf::settings::Path, folder);
        library.games << game;
    }
    store.sync();

    auto window = user.window(library);
    window->showGame(0);
    EXPECT_EQ(window->builtPageCount(), 1);
    window->checkRemainingGames();
    EXPECT_EQ(window->builtPageCount(), 1);
    for (int row : {1, 2, 3, 998}) {
        const QString listed = window->listColour(row);
        EXPECT_FALSE(listed.isEmpty()) << row;
        window->showGame(row);
        EXPECT_EQ(window->page(row)->control().qpGameStatusColour(), listed) << row;
    }
    EXPECT_EQ(window->listColour(0), QStringLiteral("green"));
    EXPECT_EQ(window->listColour(1), QStringLiteral("red"));
    EXPECT_EQ(window->listColour(2), QStringLiteral("yellow"));

    auto* list = widget<QListWidget>(*window, "games");
    widget<QLineEdit>(*window, "filter")->setText(QStringLiteral("stonewake 9"));
    int shown = 0;
    for (int row = 0; row < list->count(); ++row)
        shown += list->item(row)->isHidden() ? 0 : 1;
    EXPECT_EQ(shown, 36) << "Stonewake 91, 94, 97 and 901 to 997";
}

TEST(LauncherEndToEnd, WrongArgumentsAreExplainedAndHelpAndVersionNeedNoDisplay)
{
    LauncherUser user;
    const struct {
        QStringList arguments;
        bool display;
        int exitCode;
        const char* said;
    } cases[] = {
        {{QStringLiteral("--game"), QStringLiteral("4")}, true, 2, "no game 4"},
        {{QStringLiteral("--game"), QStringLiteral("x")}, true, 2, "--game needs a game number"},
        {{QStringLiteral("--language"), QStringLiteral("7")}, true, 2, "no language \"7\""},
        {{QStringLiteral("--screenshot"), user.folder("missing/shot.png")},
         true,
         2,
         "cannot be saved"},
        {{QStringLiteral("--bogus")}, true, 2, "Unknown option 'bogus'"},
        {{}, false, 2, "no display"},
        {{QStringLiteral("--help")}, false, 0, "--print-command"},
        {{QStringLiteral("--version")}, false, 0, "qforms-launcher 1."},
    };
    for (const auto& c : cases) {
        const LauncherRun run = user.launcher(c.arguments, c.display);
        const QString said = c.exitCode == 0 ? run.out : run.err;
        EXPECT_EQ(run.exitCode, c.exitCode) << c.arguments.join(u' ').toStdString();
        EXPECT_TRUE(said.contains(QLatin1String(c.said))) << said.toStdString();
    }
}

TEST(LauncherEndToEnd, AnEditThatCannotOpenTheConfigFileTellsWhatToInstall)
{
    LauncherUser user;
    for (const QString& editor : {user.folder("no-editor"), QStringLiteral("false")}) {
        auto window = user.window();
        window->setEditor(editor);
        window->showGame(0);
        user.messages->texts.clear();
        window->page(0)->control().widgets().cmdEdit.press();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !user.messages->texts.isEmpty(); }, 10000))
            << editor.toStdString();
        EXPECT_TRUE(user.messages->texts.first().contains(QStringLiteral("video.cfg")) &&
                    user.messages->texts.first().contains(QStringLiteral("xdg-utils")))
            << user.messages->texts.first().toStdString();
    }
}

TEST(LauncherEndToEnd, TabGoesFromTheListThroughThePageToTheButtonsAndEveryFieldIsNamed)
{
    LauncherUser user;
    user.printedCommand(3);
    auto window = user.window();
    window->show();
    window->showGame(2);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QApplication::processEvents();

    // The mod check box is greyed until a mod is chosen, so Tab passes it.
    ASSERT_FALSE(widget<QCheckBox>(*window, "chkModCheck")->isEnabled());
    widget<QLineEdit>(*window, "filter")->setFocus();
    QStringList visited;
    for (int i = 0; i < 18 && QApplication::focusWidget(); ++i) {
        visited << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QStringList expected =
        QStringLiteral(
            "filter games txtPath cmdBrowse comModSelect txtCLP lstConfig cmdEdit "
            "Check1(1) Check1(2) Text1(1) commandLine play openLog ok cancel language filter")
            .split(u' ');
    EXPECT_EQ(visited, expected);

    const qf::ControlWidgets& w = window->page(2)->control().widgets();
    const struct {
        const char* field;
        QString caption;
    } names[] = {{"txtPath", w.lblPath.caption()},
                 {"txtCLP", w.lblCLP.caption()},
                 {"lstConfig", w.lblSelectConfig.caption()},
                 {"comModSelect", w.chkModCheck.caption()},
                 {"Text1(1)", w.Label1.at(1).caption()}};
    for (const auto& name : names) {
        ASSERT_FALSE(name.caption.trimmed().isEmpty()) << name.field;
        EXPECT_EQ(widget<QWidget>(*window, name.field)->accessibleName(), name.caption.trimmed())
            << name.field;
    }

    // The mod's description is longer than its box: the tooltip shows it whole.
    auto* mods = widget<QComboBox>(*window, "comModSelect");
    const int ctf = mods->findText(QStringLiteral("ctf"));
    mods->setCurrentIndex(ctf);
    emit mods->activated(ctf);
    QApplication::processEvents();
    ASSERT_TRUE(w.lblModName.caption().startsWith(QStringLiteral("Capture the Flag")));
    EXPECT_EQ(widget<QWidget>(*window, "lblModName")->toolTip(), w.lblModName.caption());
    EXPECT_EQ(widget<QWidget>(*window, "cmdBrowse")->toolTip(), QString()) << "it fits";
}

// Root writes into read-only folders, so the window runs as nobody then, in a
// child process, with a copy of the host folder that nobody may read wherever
// the build lies.
TEST(LauncherEndToEnd, OkOnAReadOnlyStoreShowsWhyAndKeepsTheWindowAndTheChoices)
{
    QTemporaryDir shared;
    const QString host = shared.filePath(QStringLiteral("host"));
    ASSERT_EQ(QProcess::execute(QStringLiteral("cp"),
                                {QStringLiteral("-r"), LauncherUser().hostFolder(), host}),
              0);
    ASSERT_EQ(QProcess::execute(QStringLiteral("chmod"),
                                {QStringLiteral("-R"), QStringLiteral("a+rX"), shared.path()}),
              0);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(3);
        {
            LauncherUser user;
            user.host = host;
            if (!QDir().mkpath(user.folder("config")))
                ::_exit(4);
            auto window = user.window();
            window->show();
            window->showGame(0);
            qf::TextBox& path = window->page(0)->control().widgets().txtPath;
            path.setText(QStringLiteral("/games/mine"));
            QFile::setPermissions(user.folder("config"), QFile::ReadOwner | QFile::ExeOwner);
            auto* ok = widget<QPushButton>(*window, "ok");
            auto* failure = widget<QLabel>(*window, "saveFailure");

            ok->click();
            EXPECT_TRUE(window->isVisible());
            EXPECT_TRUE(failure->isVisible());
            EXPECT_TRUE(failure->text().contains(QStringLiteral("Permission denied")))
                << failure->text().toStdString();
            EXPECT_EQ(path.text(), QStringLiteral("/games/mine"));

            QFile::setPermissions(user.folder("config"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            ok->click();
            EXPECT_FALSE(window->isVisible());
            EXPECT_EQ(qf::IniFileSettingsStore(user.folder("config"))
                          .readValue(QStringLiteral("Quillmarsh 2"), window->page(0)->game().name,
                                     QStringLiteral("Path"), {}),
                      QStringLiteral("/games/mine"));
        }
        std::fflush(stdout);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}
