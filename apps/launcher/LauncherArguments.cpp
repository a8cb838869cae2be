#include "LauncherArguments.h"

#include "LauncherLanguage.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

namespace {

LauncherArguments wrong(const QString& message)
{
    LauncherArguments arguments;
    arguments.output =
        QStringLiteral("qforms-launcher: %1\nSee qforms-launcher --help.\n").arg(message);
    arguments.error = true;
    return arguments;
}

QString languageList()
{
    QStringList names;
    for (const LauncherLanguage& language : launcherLanguages())
        names << QStringLiteral("%1 %2").arg(language.index).arg(language.name);
    return names.join(QStringLiteral(", "));
}

} // namespace

LauncherArguments parseLauncherArguments(int argc, char** argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Sample game launcher with the qForms options control"));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and quit."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and quit."));
    const QCommandLineOption game(
        QStringLiteral("game"),
        QStringLiteral("Open the page of game <number> (1 is the first; default: the game "
                       "shown last)."),
        QStringLiteral("number"));
    const QCommandLineOption language(
        QStringLiteral("language"),
        QStringLiteral("Show the texts in language <index> (%1); default: the one chosen last.")
            .arg(languageList()),
        QStringLiteral("index"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window to <file> (PNG) and quit."),
        QStringLiteral("file"));
    const QCommandLineOption config(
        QStringLiteral("config"),
        QStringLiteral("Read the games from <file> instead of the host folder's launcher.ini."),
        QStringLiteral("file"));
    const QCommandLineOption printCommand(
        QStringLiteral("print-command"),
        QStringLiteral("Print the command the launcher would start for the game, with the stored "
                       "choices, and quit."));
    const QCommandLineOption play(QStringLiteral("play"),
                                  QStringLiteral("Start the game at once, as Play does."));
    const QCommandLineOption quitAfterPaint(
        QStringLiteral("quit-after-paint"),
        QStringLiteral("Quit as soon as the window is painted (to time the start)."));
    parser.addOptions(
        {help, version, game, language, screenshot, config, printCommand, play, quitAfterPaint});

    if (!parser.parse(words))
        return wrong(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return wrong(QStringLiteral("unexpected argument \"%1\".")
                         .arg(parser.positionalArguments().constFirst()));
    LauncherArguments arguments;
    if (parser.isSet(help)) {
        // The help text names the program from the application's arguments.
        QCoreApplication app(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("qforms-launcher"));
        arguments.output = parser.helpText();
        return arguments;
    }
    if (parser.isSet(version)) {
        arguments.output =
            QStringLiteral("qforms-launcher %1\n").arg(QStringLiteral(QFORMS_VERSION));
        return arguments;
    }
    bool ok = true;
    if (parser.isSet(game)) {
        arguments.game = parser.value(game).toInt(&ok);
        if (!ok || arguments.game < 1)
            return wrong(QStringLiteral("--game needs a game number from 1 on, not \"%1\".")
                             .arg(parser.value(game)));
    }
    if (parser.isSet(language))
        arguments.language = parser.value(language).toInt(&ok);
    if (!ok || (parser.isSet(language) && !isLauncherLanguage(arguments.language)))
        return wrong(QStringLiteral("there is no language \"%1\": choose %2.")
                         .arg(parser.value(language), languageList()));
    arguments.screenshot = parser.value(screenshot);
    if (parser.isSet(screenshot)) {
        const QFileInfo folder(QFileInfo(arguments.screenshot).absolutePath());
        if (arguments.screenshot.isEmpty() || !folder.isDir() || !folder.isWritable())
            return wrong(QStringLiteral("the picture cannot be saved as \"%1\": its folder is "
                                        "missing or not writable.")
                             .arg(arguments.screenshot));
    }
    arguments.config = parser.value(config);
    if (parser.isSet(config) && !QFileInfo(arguments.config).isFile())
        return wrong(QStringLiteral("the launcher configuration \"%1\" does not exist.")
                         .arg(arguments.config));
    arguments.printCommand = parser.isSet(printCommand);
    arguments.play = parser.isSet(play);
    arguments.quitAfterPaint = parser.isSet(quitAfterPaint);
    return arguments;
}
