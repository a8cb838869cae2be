#include "GamePage.h"
#include "HostFolder.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "SampleInstallations.h"
#include "platform/IniFileSettingsStore.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qforms-launcher"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillmarsh 2"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Sample game launcher with the qForms options control"));
    parser.addHelpOption();
    const QCommandLineOption game(
        QStringLiteral("game"), QStringLiteral("Open the page of game <number> (1 is the first)."),
        QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption language(
        QStringLiteral("language"),
        QStringLiteral("Show the texts in language <index> (0 English, 1 German)."),
        QStringLiteral("index"), QStringLiteral("0"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window to <file> and quit."), QStringLiteral("file"));
    const QCommandLineOption printCommand(
        QStringLiteral("print-command"),
        QStringLiteral("Print the command the launcher would start for the game, with the stored "
                       "choices, and quit."));
    parser.addOptions({game, language, screenshot, printCommand});
    parser.process(app);

    const QString hostFolder = findHostFolder();
    const QList<GameEntry> games = readLauncherConfig(hostFolder);
    if (hostFolder.isEmpty() || games.isEmpty()) {
        QMessageBox::critical(nullptr, QStringLiteral("Quillmarsh 2"),
                              QApplication::translate("main",
                                                      "The sample host folder is missing. "
                                                      "Build or install the launcher again."));
        return 1;
    }

    auto store = std::make_shared<qf::IniFileSettingsStore>();
    const SampleInstallations samples;
    if (samples.create()) {
        try {
            samples.offerAsStoredPaths(games, *store);
        } catch (const std::exception& error) {
            qWarning("The sample games' folders could not be stored: %s", error.what());
        }
    }

    LauncherWindow window(hostFolder, games, store);
    window.setLanguageIndex(parser.value(language).toInt());
    const int row = parser.value(game).toInt() - 1;
    window.showGame(row);
    if (parser.isSet(printCommand)) {
        if (!window.page(row))
            return 2;
        QTextStream(stdout) << window.page(row)->commandLine() << Qt::endl;
        return 0;
    }
    window.show();
    if (parser.isSet(screenshot)) {
        QTimer::singleShot(300, &window, [&] {
            const bool saved = window.grab().save(parser.value(screenshot));
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
