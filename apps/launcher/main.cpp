#include "GamePage.h"
#include "HostFolder.h"
#include "LauncherArguments.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "SampleInstallations.h"
#include "platform/IniFileSettingsStore.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace {

int fail(const QString& message)
{
    QTextStream(stderr) << "qforms-launcher: " << message << Qt::endl;
    return 2;
}

// Ends the program after the window's first paint.
class FirstPaint : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, qApp, [] { QApplication::exit(0); });
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

int main(int argc, char** argv)
{
    // --help, --version and wrong arguments are answered before any window
    // exists, so they work without a display.
    const LauncherArguments arguments = parseLauncherArguments(argc, argv);
    if (!arguments.output.isEmpty()) {
        std::fputs(arguments.output.toLocal8Bit().constData(), arguments.error ? stderr : stdout);
        return arguments.error ? 2 : 0;
    }
    if (!arguments.printCommand && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return fail(QStringLiteral(
            "no display to show the window on. Start it from a desktop session, run "
            "scripts/launcher.sh (it uses a virtual display), or take a picture of the window "
            "with QT_QPA_PLATFORM=offscreen qforms-launcher --screenshot shot.png"));

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qforms-launcher"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillmarsh 2"));
    QApplication::setApplicationVersion(QStringLiteral(QFORMS_VERSION));
    // The application id: Wayland compositors match the window to the menu entry
    // by it (on X11 the entry's StartupWMClass matches the application name).
    QApplication::setDesktopFileName(QStringLiteral("org.qforms.Launcher"));

    const QString hostFolder = findHostFolder();
    const LauncherConfig config =
        readLauncherConfig(arguments.config.isEmpty() ? hostFolder + QStringLiteral("/launcher.ini")
                                                      : arguments.config);
    if (hostFolder.isEmpty() || config.games.isEmpty()) {
        const QString message =
            hostFolder.isEmpty()
                ? QApplication::translate("main", "The sample host folder is missing. "
                                                  "Build or install the launcher again.")
                : QApplication::translate("main", "The launcher configuration lists no games.");
        if (arguments.printCommand || !arguments.screenshot.isEmpty())
            return fail(message);
        QMessageBox::critical(nullptr, QStringLiteral("Quillmarsh 2"), message);
        return 1;
    }
    if (arguments.game > config.games.size())
        return fail(QStringLiteral("there is no game %1: the launcher has %2 games (1 to %2).")
                        .arg(arguments.game)
                        .arg(config.games.size()));

    auto store = std::make_shared<qf::IniFileSettingsStore>();
    const SampleInstallations samples;
    if (samples.create()) {
        try {
            samples.offerAsStoredPaths(config.games, *store);
        } catch (const std::exception& error) {
            qWarning("The sample games' folders could not be stored: %s", error.what());
        }
    }

    LauncherWindow window(hostFolder, config, store);
    // The language goes first, so the first page is built once, in it.
    window.setLanguageIndex(arguments.language >= 0 ? arguments.language
                                                    : window.rememberedLanguage());
    int row = arguments.game - 1;
    if (row < 0)
        row = qMax(0, window.rememberedGame());
    window.showGame(row);
    if (arguments.printCommand) {
        const qf::launch::LaunchDescription launch = window.launchOf(row);
        if (launch.gameProgram.isEmpty())
            return fail(QStringLiteral("%1 has no folder or program chosen yet.")
                            .arg(config.games.at(row).name));
        QTextStream(stdout) << launch.text() << Qt::endl;
        return 0;
    }
    window.show();
    if (arguments.play)
        window.play();
    if (arguments.quitAfterPaint)
        window.installEventFilter(new FirstPaint(&window));
    if (!arguments.screenshot.isEmpty()) {
        QTimer::singleShot(300, &window, [&] {
            window.checkRemainingGames();
            if (!window.grab().save(arguments.screenshot)) {
                QApplication::exit(fail(QStringLiteral("the picture could not be saved as %1.")
                                            .arg(arguments.screenshot)));
                return;
            }
            QApplication::exit(0);
        });
    }
    return app.exec();
}
