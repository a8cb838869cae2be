#include "EntryWidget.h"
#include "GamePage.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "PeImage.h"
#include "PreviewWindow.h"
#include "SampleInstallations.h"
#include "context/SettingsKeys.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/MessageBox.h"
#include "view/ControlView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The host folder the build sets up beside the launcher: sample games' data files.
QString builtHost()
{
    return QFileInfo(QStringLiteral(QFORMS_LAUNCHER_PATH)).path() + u"/host"_s;
}

struct ProgramRun {
    int exitCode = 0;
    QString out;
    QString err;
};

struct RecordingMessageBox : qf::MessageBox {
    void show(const QString& text, int, const QString&) override { texts << text; }
    QStringList texts;
};

// The launcher's user folders for one test: settings, sample games, logs.
class LauncherUser {
public:
    QString folder(const char* name) const { return m_home.filePath(QLatin1String(name)); }
    // A shell script in this user's folder, ready to run; its path.
    QString script(const char* name, const QByteArray& body) const
    {
        QFile file(folder(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + body);
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
        return file.fileName();
    }
    // The host folder of the windows this user opens.
    QString host = builtHost();
    std::shared_ptr<RecordingMessageBox> messages = std::make_shared<RecordingMessageBox>();

    // Runs a program of the build with this user's folders, with or without a display.
    ProgramRun run(const char* program, const QStringList& arguments, bool display = true) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, folder("config"));
        environment.insert(u"XDG_DATA_HOME"_s, folder("data"));
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        if (display)
            environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QString::fromUtf8(program), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()).trimmed(),
                QString::fromUtf8(process.readAllStandardError())};
    }

    std::unique_ptr<LauncherWindow> window(LauncherConfig config = {}) const
    {
        if (config.games.isEmpty())
            config.games = readLauncherConfig(host + u"/launcher.ini"_s).games;
        auto window = std::make_unique<LauncherWindow>(
            host, config, std::make_shared<qf::IniFileSettingsStore>(folder("config")));
        window->setMessageBox(messages);
        return window;
    }

private:
    QTemporaryDir m_home;
};

template <typename T = QWidget> T* widget(QWidget& parent, const char* name)
{
    T* found = parent.findChild<T*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

} // namespace

TEST(LauncherEndToEnd, TabVisitsEveryNamedFieldAndChoicesAcceptedWithOkSurviveARestart)
{
    LauncherUser user;
    const QStringList printGame3 = {u"--game"_s, u"3"_s, u"--print-command"_s};
    EXPECT_FALSE(user.run(QFORMS_LAUNCHER_PATH, printGame3).out.contains(u"fs_game"_s));
    {
        auto window = user.window();
        window->show();
        window->showGame(2);
        GamePage& page = *window->page(2);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        QApplication::processEvents();

        // The mod check box is greyed until a mod is chosen, so Tab passes it.
        widget(*window, "filter")->setFocus();
        QStringList visited;
        for (int i = 0; i < 20 && QApplication::focusWidget(); ++i) {
            visited << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(
            visited.join(u' '),
            u"filter games txtPath cmdBrowse comModSelect txtCLP lstConfig cmdEdit "
            "Check1(1) Check1(2) Text1(1) Check1(3) Check1(4) commandLine play openLog ok cancel "
            "language filter"_s);

        auto* mods = widget<QComboBox>(page, "comModSelect");
        mods->setCurrentIndex(mods->findText(u"ctf"_s));
        emit mods->activated(mods->currentIndex());
        widget<QAbstractButton>(page, "Check1(1)")->click();
        QTest::keyClicks(widget(page, "txtCLP"), u"+set name Tester"_s);
        widget<QListWidget>(page, "lstConfig")->setCurrentRow(1);
        EXPECT_TRUE(widget<QLineEdit>(*window, "commandLine")->text().contains(u"fs_game ctf"_s));
        widget<QAbstractButton>(page, "chkModCheck")->click(); // "Always load the mod" off
        EXPECT_FALSE(widget<QLineEdit>(*window, "commandLine")->text().contains(u"fs_game"_s));
        widget<QAbstractButton>(page, "chkModCheck")->click();

        // The mod's description is longer than its box: the tooltip shows it whole.
        QApplication::processEvents();
        const QString description = page.control().widgets().lblModName.caption();
        ASSERT_TRUE(description.startsWith(u"Capture the Flag"_s));
        EXPECT_EQ(widget(page, "lblModName")->toolTip(), description);

        widget<QAbstractButton>(*window, "ok")->click();
        EXPECT_FALSE(window->isVisible());
    }
    const QString restarted = user.run(QFORMS_LAUNCHER_PATH, printGame3).out;
    for (const QString& part : {u"Hollow Reach/reach.exe"_s, u"+set fs_game ctf"_s,
                                u"Configs\\server.cfg"_s, u"+set name Tester"_s})
        EXPECT_TRUE(restarted.contains(part)) << restarted;
    EXPECT_EQ(user.run(QFORMS_LAUNCHER_PATH, {u"--print-command"_s}).out, restarted)
        << "the last game opens again";
}

TEST(LauncherEndToEnd, TheLanguageSwitchRecaptionsOpenPagesAndAFailedEditTellsWhatToInstall)
{
    LauncherUser user;
    // The first start creates the demo installations.
    user.run(QFORMS_LAUNCHER_PATH, {u"--print-command"_s});
    auto window = user.window();
    window->setEditor(user.folder("no-editor"));
    window->showGame(1);
    window->showGame(0);
    // Switching the language builds the page's options anew: look them up each time.
    const qf::ControlWidgets& emberfall = window->page(0)->control().widgets();
    emberfall.Check1.at(4).setValue(1);
    ASSERT_FALSE(emberfall.Combo1.at(1).isEnabled());

    window->setLanguageIndex(1);
    for (int row = 0; row < 2; ++row) {
        const qForms& control = window->page(row)->control();
        EXPECT_EQ(control.widgets().cmdBrowse.caption(), u"Suchen..."_s) << row;
        EXPECT_TRUE(control.qpGameStatus().contains(u"wurde gefunden"_s)) << row;
    }
    EXPECT_EQ(emberfall.Check1.at(4).caption(), u"Notmodus"_s);
    EXPECT_EQ(user.window()->rememberedLanguage(), 1) << "the next start speaks German too";
    EXPECT_EQ(emberfall.Check1.at(4).value(), 1) << "the unsaved choice stays";
    EXPECT_FALSE(emberfall.Combo1.at(1).isEnabled());
    EXPECT_EQ(widget<QAbstractButton>(*window, "play")->text(), u"Spi&elen"_s);
    window->setLanguageIndex(0);
    EXPECT_EQ(widget<QAbstractButton>(*window, "play")->text(), u"&Play"_s);

    // A page takes the editor it was built with: one that is missing, one that fails.
    window->setEditor(u"false"_s);
    window->showGame(2);
    // A click through the view reports what the control throws; here it comes straight.
    EXPECT_THROW(window->page(0)->control().widgets().cmdEdit.press(), qf::Error);
    window->page(2)->control().widgets().cmdEdit.press();
    ASSERT_TRUE(QTest::qWaitFor([&] { return user.messages->texts.size() == 2; }, 10000));
    const QString told = user.messages->texts.join(u'|');
    for (const QString& part : {u"video.cfg"_s, u"not installed"_s, u"exit code 1"_s})
        EXPECT_TRUE(told.contains(part)) << told;
    EXPECT_EQ(told.count(u"xdg-utils"_s), 2) << told;

    // A settings file damaged by hand is kept as found at the next save, once.
    QFile settings(user.folder("config") + u"/Quillmarsh 2.ini"_s);
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly | QIODevice::Truncate));
    settings.write("[Emberfall]\nPath=\"/games\n[MyOtherTool]\nToken=abc\n");
    settings.close();
    user.messages->texts.clear();
    window->accept();
    window->accept();
    ASSERT_EQ(user.messages->texts.size(), 1) << user.messages->texts.join(u'|');
    EXPECT_TRUE(user.messages->texts.first().contains(u"Quillmarsh 2.ini.damaged-"_s));
}

TEST(LauncherEndToEnd, PlayStartsTheGameWithItsOptionsThroughWineOnlyForWindowsProgramsAndLetsItRun)
{
    LauncherUser user;
    const QString game = user.folder("games/Hollow $Reach \"HD\"");
    const QString program = game + u"/reach.exe"_s;
    const QString runner =
        user.script("runner", "printf '%s\\n' \"$PWD\" \"hud=$DXVK_HUD\" \"$@\" >> \"$0.args\"\n"
                              "[ -z \"$LINGER\" ] || { sleep 1; echo alive > \"$0.alive\"; }\n"
                              "echo loading; echo \"out of memory\"; exit ${FAKE_EXIT:-0}\n");
    QDir().mkpath(game);
    const struct {
        bool windowsProgram;
        QString configuredRunner;
        QString folder;
        bool hud; // DXVK's HUD ticked on the page
        int exitCode;
        bool starts;
        const char* told; // parts of the message, split at '|'
    } cases[] = {
        {true, runner, game, false, 0, true, ""},                                  // Windows
        {true, runner, game, true, 3, true, "exit code 3|loading\nout of memory"}, // failing
        {false, u"/missing/wine"_s, game, false, 0, true, ""},                     // Linux
        {true, u"/missing/wine"_s, game, false, 0, false, "Install Wine"},         // no runner
        {true, runner, {}, false, 0, false, "no folder or program is chosen"},     // no folder
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const QString started = c.windowsProgram ? runner : program;
        QFile args(started + u".args"_s);
        args.remove();
        QFile::remove(program);
        if (c.windowsProgram)
            ASSERT_TRUE(qf::PeImage(qf::PeOptions{}).write(program));
        else
            QFile::copy(runner, program);
        qputenv("FAKE_EXIT", QByteArray::number(c.exitCode));
        user.messages->texts.clear();

        auto window = user.window({{}, c.configuredRunner});
        window->showGame(2);
        qf::ControlWidgets& w = window->page(2)->control().widgets();
        w.txtPath.setText(c.folder);
        w.txtCLP.setText(u"+name \"Tes ter\" $HOME \"it's\""_s);
        w.Check1.at(3).setValue(c.hud);
        window->play();
        window->play();
        EXPECT_EQ(window->isRunning(2), c.starts);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isRunning(2); }, 20000));

        const QString config = user.host + u"/Data/Hollow Reach/Configs/autoexec.cfg"_s;
        const QStringList arguments =
            QStringList{game, c.hud ? u"hud=fps,frametimes"_s : u"hud="_s} +
            (c.windowsProgram ? QStringList{program} : QStringList()) +
            u"+set r_fullscreen 1 +set r_swapinterval 0 +set name player +exec"_s.split(u' ') +
            QStringList{c.windowsProgram ? u"Z:"_s + QString(config).replace(u'/', u'\\') : config,
                        u"+name"_s, u"Tes ter"_s, u"$HOME"_s, u"it's"_s};
        args.open(QIODevice::ReadOnly);
        EXPECT_EQ(QString::fromUtf8(args.readAll()).split(u'\n', Qt::SkipEmptyParts),
                  c.starts ? arguments : QStringList())
            << "one run for two Plays";
        const QString told = user.messages->texts.join(u'|');
        EXPECT_EQ(told.isEmpty(), !*c.told) << told;
        for (const QString& part : QString::fromUtf8(c.told).split(u'|', Qt::SkipEmptyParts))
            EXPECT_TRUE(told.contains(part)) << told;
        EXPECT_EQ(w.txtCLP.text(), qf::IniFileSettingsStore(user.folder("config"))
                                       .readValue(qf::settings::Application, u"Hollow Reach"_s,
                                                  qf::settings::CommandLineParameters, QString()))
            << "Play keeps the page's choices first";
        if (c.folder.isEmpty()) {
            EXPECT_EQ(widget<QLineEdit>(*window, "commandLine")->text(), QString());
        }
    }
    qunsetenv("FAKE_EXIT");

    // A game goes on when the launcher closes.
    auto window = user.window({{}, runner});
    window->showGame(2);
    window->page(2)->control().widgets().txtPath.setText(game);
    qputenv("LINGER", "1");
    window->play();
    ASSERT_TRUE(window->isRunning(2));
    window.reset();
    qunsetenv("LINGER");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(runner + u".alive"_s); }, 20000));
}

TEST(LauncherEndToEnd,
     ALibraryOfAThousandGamesBuildsOnlyTheShownPageAndColoursTheRestFromTheirChecks)
{
    LauncherUser user;
    const SampleInstallations samples(user.folder("games"));
    ASSERT_TRUE(samples.create());
    const QList<GameEntry> sampleGames = readLauncherConfig(user.host + u"/launcher.ini"_s).games;
    qf::IniFileSettingsStore store(user.folder("config"));
    LauncherConfig library;
    for (int i = 0; i < 1000; ++i) {
        GameEntry game = sampleGames.at(i % 3);
        game.name += u" %1"_s.arg(i);
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
    window->checkRemainingGames();
    EXPECT_EQ(window->builtPageCount(), 1);
    const QString colours[] = {u"green"_s, u"red"_s, u"yellow"_s};
    for (int row : {0, 1, 2, 3, 998}) {
        EXPECT_EQ(window->listColour(row), colours[row % 3]) << row;
        window->showGame(row);
        EXPECT_EQ(window->page(row)->control().qpGameStatusColour(), colours[row % 3]) << row;
    }

    widget<QLineEdit>(*window, "filter")->setText(u"stonewake 9"_s);
    const auto items = widget<QListWidget>(*window, "games")->findItems(u"*"_s, Qt::MatchWildcard);
    EXPECT_EQ(std::ranges::count_if(items, [](auto* item) { return !item->isHidden(); }), 36)
        << "Stonewake 91, 94, 97 and 901 to 997";
    // The shown game fell out of the list: the first one left takes its place,
    // and with none left no page is shown and nothing can be played.
    EXPECT_EQ(window->currentGame(), 91);
    EXPECT_TRUE(window->page(91)->isVisibleTo(window.get()));
    widget<QLineEdit>(*window, "filter")->setText(u"no such game"_s);
    EXPECT_EQ(window->currentGame(), -1);
    EXPECT_TRUE(widget(*window, "noGame")->isVisibleTo(window.get()));
    EXPECT_FALSE(widget(*window, "play")->isEnabled());
}

TEST(LauncherEndToEnd, WrongArgumentsAreExplainedAndHelpAndVersionNeedNoDisplay)
{
    LauncherUser user;
    const struct {
        const char* arguments;
        bool display;
        int exitCode;
        const char* said;
    } cases[] = {
        {"--game 4", true, 2, "no game 4"},
        {"--game x", true, 2, "--game needs a game number"},
        {"--language 7", true, 2, "no language \"7\""},
        {"--screenshot /no/such/folder/shot.png", true, 2, "cannot be saved"},
        {"--bogus", true, 2, "Unknown option 'bogus'"},
        {"", false, 2, "no display"},
        {"--help", false, 0, "--print-command"},
        {"--version", false, 0, "qforms-launcher 1."},
    };
    for (const auto& c : cases) {
        const ProgramRun result =
            user.run(QFORMS_LAUNCHER_PATH,
                     QString::fromLatin1(c.arguments).split(u' ', Qt::SkipEmptyParts), c.display);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments;
        EXPECT_TRUE((c.exitCode == 0 ? result.out : result.err).contains(QLatin1String(c.said)))
            << c.arguments << result.out << result.err;
    }
}

// Root writes into read-only folders, so the window runs as nobody then, in a
// child process, with a copy of the host folder that nobody may read wherever
// the build lies.
TEST(LauncherEndToEnd, OkOnAReadOnlyStoreShowsWhyAndKeepsTheWindowAndTheChoices)
{
    QTemporaryDir shared;
    const QString host = shared.filePath(u"host"_s);
    ASSERT_EQ(QProcess::execute(u"cp"_s, {u"-r"_s, builtHost(), host}), 0);
    ASSERT_EQ(QProcess::execute(u"chmod"_s, {u"-R"_s, u"a+rX"_s, shared.path()}), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(3);
        {
            LauncherUser user;
            user.host = host;
            const QString config = user.folder("config");
            QDir().mkpath(config);
            auto window = user.window();
            window->show();
            window->showGame(0);
            qf::TextBox& path = window->page(0)->control().widgets().txtPath;
            path.setText(u"/games/mine"_s);
            QFile::setPermissions(config, QFile::ReadOwner | QFile::ExeOwner);
            auto* failure = widget<QLabel>(*window, "saveFailure");

            widget<QAbstractButton>(*window, "ok")->click();
            EXPECT_TRUE(window->isVisible() && failure->isVisible());
            EXPECT_TRUE(failure->text().contains(u"Permission denied"_s)) << failure->text();
            EXPECT_EQ(path.text(), u"/games/mine"_s);

            QFile::setPermissions(config, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            widget<QAbstractButton>(*window, "ok")->click();
            EXPECT_FALSE(window->isVisible());
            EXPECT_EQ(qf::IniFileSettingsStore(config).readValue(
                          u"Quillmarsh 2"_s, window->page(0)->game().name, u"Path"_s, {}),
                      u"/games/mine"_s);
        }
        std::fflush(stdout);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(Preview, DrawsTheLaunchersPixelsRefusesWhatCannotRunAndItsWindowFollowsRenamesAndFindings)
{
    QTemporaryDir dir;
    const QString host = dir.filePath(u"host"_s);
    ASSERT_EQ(QProcess::execute(u"cp"_s, {u"-r"_s, builtHost(), host}), 0);
    const QString file = host + u"/Data/emberfall.qgd"_s;
    LauncherUser user;
    const QString image = dir.filePath(u"page.png"_s);
    const QString doubled = dir.filePath(u"doubled.png"_s);
    // What it draws, and what it refuses: a file in no Data folder among them. (A
    // host whose language file holds only its own texts is fine: the library
    // brings the rest, text by text.)
    QFile::remove(host + u"/Data/Languages/1.ini"_s);
    QFile own(host + u"/Data/Languages/0.ini"_s);
    ASSERT_TRUE(own.open(QIODevice::WriteOnly | QIODevice::Truncate));
    own.write("[Texts]\n900=Our own text\n");
    own.close();
    const QString loose = dir.filePath(u"loose.qgd"_s);
    QFile::copy(file, loose);
    const std::pair<QStringList, int> runs[] = {
        {{file, u"-o"_s, image}, 0},
        {{file, u"--scale"_s, u"2"_s, u"--language"_s, u"1"_s, u"-o"_s, doubled}, 0},
        {{dir.filePath(u"missing.qgd"_s), u"--app-path"_s, host, u"-o"_s, image}, 2},
        {{loose, u"-o"_s, image}, 2},
        {{file, u"--scale"_s, u"x"_s, u"-o"_s, image}, 2},
        {{file}, 2},
        {{file, u"-o"_s, dir.filePath(u"no/such/folder/page.png"_s)}, 2},
    };
    for (const auto& [arguments, exitCode] : runs) {
        const ProgramRun run = user.run(QFORMS_CLI_PATH, QStringList{u"preview"_s} + arguments);
        EXPECT_EQ(run.exitCode, exitCode) << arguments.join(u' ') << run.err;
        if (exitCode == 0) {
            EXPECT_TRUE(run.out.startsWith(u"launch: wine emberfall.exe +set r_detail high"_s))
                << run.out;
        }
    }
    auto launcher = user.window();
    launcher->show();
    launcher->showGame(0);
    const QImage page = launcher->page(0)->findChild<qf::ControlView*>()->grab().toImage();
    EXPECT_TRUE(QImage(image).convertToFormat(QImage::Format_ARGB32) ==
                page.convertToFormat(QImage::Format_ARGB32));
    EXPECT_EQ(QImage(doubled).size(), page.size() * 2);

    int lints = 0;
    const auto lint = [&](const QString& path) {
        ++lints;
        return qf::lint::Findings{{path, 40, 1, qf::lint::Severity::Warning, u"m"_s, u"c"_s, 15},
                                  {path, 0, 0, qf::lint::Severity::Note, u"m"_s, u"c"_s, 0}};
    };
    qf::preview::PreviewWindow window({file, host, 0}, lint);
    window.show();
    window.setGeometry(40, 30, 1100, 420);
    const QRect placed = window.geometry();
    QSignalSpy rebuilt(&window, &qf::preview::PreviewWindow::rebuilt);
    const auto view = [&] { return window.page()->findChild<qf::ControlView*>(); };
    const auto label = [&] {
        return qobject_cast<QLabel*>(
            view()->viewOf(window.page()->control().widgets().Label1.at(2)));
    };

    // Saved as an editor does, a new file renamed over the old one; twice, as
    // the first rename takes the file out of the watcher.
    const QByteArray key = "Control15Caption=";
    const char* captions[] = {"212", "Volume", "Loudness"};
    for (int i = 1; i < 3; ++i) {
        QFile old(file), fresh(file + u".new"_s);
        ASSERT_TRUE(old.open(QIODevice::ReadOnly) && fresh.open(QIODevice::WriteOnly));
        fresh.write(old.readAll().replace(key + captions[i - 1], key + captions[i]));
        fresh.close();
        ASSERT_EQ(::rename(qPrintable(fresh.fileName()), qPrintable(file)), 0);
        const QString shown = QString::fromLatin1(captions[i]).toLower();
        ASSERT_TRUE(QTest::qWaitFor([&] { return label()->text() == shown; }, 5000))
            << label()->text();
    }
    EXPECT_EQ(window.geometry(), placed);
    EXPECT_EQ(lints, 1 + rebuilt.size());

    // A finding's entry is the n-th of its kind.
    const qf::ControlWidgets& w = window.page()->control().widgets();
    const struct {
        int entry;
        const qf::Widget* widget;
    } entries[] = {{1, &w.Frame1.at(1)},  {3, &w.Option1.at(2)}, {8, &w.Label1.at(1)},
                   {10, &w.Frame1.at(2)}, {15, &w.Label1.at(2)}, {17, &w.Check1.at(9)},
                   {18, &w.Line1.at(1)},  {21, &w.Text1.at(2)},  {0, nullptr},
                   {22, nullptr}};
    for (const auto& e : entries)
        EXPECT_EQ(qf::preview::entryWidget(file, e.entry, w), e.widget) << e.entry;
    ASSERT_TRUE(window.showFinding(0));
    EXPECT_TRUE(window.highlight()->geometry().contains(
        QRect(label()->mapTo(view(), QPoint(0, 0)), label()->size())));
    EXPECT_FALSE(window.showFinding(1));
    EXPECT_EQ(window.highlight(), nullptr);

    // The launch follows the author's clicks on the page.
    EXPECT_TRUE(window.launchText().contains(u"r_detail high"_s)) << window.launchText();
    qobject_cast<QAbstractButton*>(view()->viewOf(w.Option1.at(1)))->click();
    EXPECT_TRUE(window.launchText().contains(u"r_detail low"_s)) << window.launchText();
}
