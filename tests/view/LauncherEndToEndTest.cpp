#include "GamePage.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
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

// The launcher's user folders for one test: settings and sample games.
class LauncherUser {
public:
    QString configFolder() const { return m_home.filePath(QStringLiteral("config")); }
    QString dataFolder() const { return m_home.filePath(QStringLiteral("data")); }
    QString hostFolder() const
    {
        return QFileInfo(QStringLiteral(QFORMS_LAUNCHER_PATH)).path() + QStringLiteral("/host");
    }

    // Starts the real launcher program for the game and returns what it printed.
    QString printedCommand(int game) const
    {
        QProcess launcher;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        launcher.setProcessEnvironment(environment);
        launcher.start(
            QStringLiteral(QFORMS_LAUNCHER_PATH),
            {QStringLiteral("--game"), QString::number(game), QStringLiteral("--print-command")});
        EXPECT_TRUE(launcher.waitForFinished(60000));
        EXPECT_EQ(launcher.exitCode(), 0) << launcher.readAllStandardError().toStdString();
        return QString::fromUtf8(launcher.readAllStandardOutput()).trimmed();
    }

    std::unique_ptr<LauncherWindow> window() const
    {
        return std::make_unique<LauncherWindow>(
            hostFolder(), readLauncherConfig(hostFolder()),
            std::make_shared<qf::IniFileSettingsStore>(configFolder()));
    }

private:
    QTemporaryDir m_home;
};

template <typename T> T* widget(QWidget& page, const char* name)
{
    T* found = page.findChild<T*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
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
        EXPECT_TRUE(window->findChild<QLineEdit*>(QStringLiteral("commandLine"))
                        ->text()
                        .contains(QStringLiteral("fs_game ctf")));

        window->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        EXPECT_FALSE(window->isVisible());
    }

    const QString restarted = user.printedCommand(3);
    for (const char* expected : {"+set fs_game ctf", "+exec server.cfg", "+set name Tester"})
        EXPECT_TRUE(restarted.contains(QLatin1String(expected))) << restarted.toStdString();

    auto window = user.window();
    window->showGame(2);
    GamePage& page = *window->page(2);
    EXPECT_EQ(page.control().widgets().Check1.at(1).value(), 0);
    EXPECT_EQ(page.control().widgets().comModSelect.text(), QStringLiteral("ctf"));
    EXPECT_EQ(page.control().widgets().chkModCheck.value(), 1);
}

TEST(LauncherEndToEnd, TheLanguageSwitchRecaptionsEveryPageAndKeepsWhatIsOnIt)
{
    LauncherUser user;
    user.printedCommand(1); // the first start creates the demo installations
    auto window = user.window();
    qForms& emberfall = window->page(0)->control();
    qf::CheckBox& safeMode = emberfall.widgets().Check1.at(4);
    safeMode.setValue(1);
    ASSERT_FALSE(emberfall.widgets().Combo1.at(1).isEnabled());

    window->setLanguageIndex(1);
    for (int row = 0; row < 3; ++row) {
        const qForms& control = window->page(row)->control();
        EXPECT_EQ(control.widgets().cmdBrowse.caption(), QStringLiteral("Durchsuchen...")) << row;
        EXPECT_TRUE(control.qpGameStatus().contains(QStringLiteral("wurde gefunden"))) << row;
    }
    EXPECT_EQ(emberfall.widgets().Check1.at(4).caption(), QStringLiteral("Abgesicherter Modus"));
    EXPECT_EQ(emberfall.widgets().Check1.at(4).value(), 1) << "the unsaved choice stays";
    EXPECT_FALSE(emberfall.widgets().Combo1.at(1).isEnabled());
}

// Root writes into read-only folders, so the window runs as nobody then, in a
// child process.
TEST(LauncherEndToEnd, OkOnAReadOnlyStoreShowsWhyAndKeepsTheWindowAndTheChoices)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(3);
        {
            LauncherUser user;
            if (!QDir().mkpath(user.configFolder()))
                ::_exit(4);
            auto window = user.window();
            window->show();
            qf::TextBox& path = window->page(0)->control().widgets().txtPath;
            path.setText(QStringLiteral("/games/mine"));
            QFile::setPermissions(user.configFolder(), QFile::ReadOwner | QFile::ExeOwner);
            QPushButton* ok = window->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            auto* failure = widget<QLabel>(*window, "saveFailure");

            ok->click();
            EXPECT_TRUE(window->isVisible());
            EXPECT_TRUE(failure->isVisible());
            EXPECT_TRUE(failure->text().contains(QStringLiteral("Permission denied")))
                << failure->text().toStdString();
            EXPECT_EQ(path.text(), QStringLiteral("/games/mine"));

            QFile::setPermissions(user.configFolder(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            ok->click();
            EXPECT_FALSE(window->isVisible());
            EXPECT_EQ(qf::IniFileSettingsStore(user.configFolder())
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
