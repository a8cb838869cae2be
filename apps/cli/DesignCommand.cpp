#include "DesignCommand.h"

#include "Command.h"

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
    parsed.source = preview::parsePageArguments(
        QStringLiteral("design"), args, [&](const QString& arg, const auto& value) {
            if (arg == u"--select") {
                const QString text = value();
                bool ok = false;
                parsed.select = text.toInt(&ok);
                if (!ok || parsed.select <= 0)
                    throw QStringLiteral("%1: not a value it takes: %2").arg(arg, text);
            } else if (arg == u"--screenshot") {
                parsed.screenshot = value();
            } else {
                return false;
            }
            return true;
        });
    return parsed;
}

} // namespace

int runDesignCommand(int argc, char** argv)
{
    QTextStream err(stderr);
    const std::optional<DesignArgs> arguments = cli::parseCommandLine(argc, argv, parse);
    if (!arguments)
        return 2;
    const DesignArgs& parsed = *arguments;
    if (!cli::hasDisplay()) {
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
