#include "DesignCommand.h"

#include "DesignerWindow.h"
#include "GameDataDocument.h"
#include "PreviewPage.h"

#include <QApplication>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

namespace qf::designer {

namespace {

struct DesignArgs {
    preview::PageSource source;
    int select = 0;
    QString screenshot;
};

// Throws the message for stderr when the arguments do not open a designer.
DesignArgs parse(const QStringList& args)
{
    DesignArgs parsed;
    QStringList files;
    bool appPathGiven = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        const auto value = [&]() -> QString {
            if (++i >= args.size())
                throw QStringLiteral("%1 needs a value").arg(arg);
            return args.at(i);
        };
        bool ok = true;
        if (arg == u"--app-path") {
            parsed.source.appPath = value();
            appPathGiven = true;
        } else if (arg == u"--language") {
            parsed.source.language = value().toInt(&ok);
            ok = ok && parsed.source.language >= 0 && parsed.source.language <= 32767;
        } else if (arg == u"--select") {
            parsed.select = value().toInt(&ok);
            ok = ok && parsed.select > 0;
        } else if (arg == u"--screenshot") {
            parsed.screenshot = value();
        } else if (arg.startsWith(u'-') && arg.size() > 1) {
            throw QStringLiteral("unknown option %1").arg(arg);
        } else {
            files.append(arg);
        }
        if (!ok)
            throw QStringLiteral("%1: not a value it takes: %2").arg(arg, args.at(i));
    }
    if (files.size() != 1)
        throw QStringLiteral("design takes one game data file");
    parsed.source.gameDataPath = QFileInfo(files.first()).absoluteFilePath();
    if (!appPathGiven) {
        parsed.source.appPath = preview::defaultAppPath(parsed.source.gameDataPath);
        if (parsed.source.appPath.isEmpty())
            throw QStringLiteral("%1 is in no Data folder: give --app-path").arg(files.first());
    }
    parsed.source.appPath = QFileInfo(parsed.source.appPath).absoluteFilePath();
    return parsed;
}

} // namespace

int runDesignCommand(int argc, char** argv)
{
    QStringList args;
    for (int i = 2; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));
    QTextStream err(stderr);
    DesignArgs parsed;
    try {
        parsed = parse(args);
    } catch (const QString& message) {
        err << "qforms: " << message << "\nTry 'qforms --help' for more information.\n";
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        err << "qforms: design needs a display\n";
        return 2;
    }
    QApplication app(argc, argv);
    const QString problem = preview::checkSource(parsed.source);
    if (!problem.isEmpty()) {
        err << "qforms: " << problem << '\n';
        return 2;
    }
    std::unique_ptr<DesignerWindow> window;
    try {
        window = std::make_unique<DesignerWindow>(parsed.source, messageBoxQuestions());
    } catch (const editing::EditError& error) {
        err << "qforms: " << error.message() << '\n';
        return 2;
    }
    window->select(parsed.select);
    window->show();
    if (parsed.screenshot.isEmpty())
        return app.exec();
    // After the first findings, so the image shows them.
    int status = 0;
    QObject::connect(window.get(), &DesignerWindow::linted, &app, [&] {
        if (!window->grab().save(parsed.screenshot, "PNG")) {
            err << "qforms: cannot write " << parsed.screenshot << '\n';
            status = 2;
        }
        app.quit();
    });
    app.exec();
    return status;
}

} // namespace qf::designer
