#include "PreviewCommand.h"

#include "Command.h"

#include "Lint.h"
#include "platform/Errors.h"

#include "GamePage.h"
#include "PreviewPage.h"
#include "PreviewWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QTextStream>

namespace qf::preview {

namespace {

struct PreviewArgs {
    PageSource source;
    QString output;
    qreal scale = 1;
    bool watch = false;
};

// Throws the message for stderr when the arguments do not make a preview.
PreviewArgs parse(const QStringList& args)
{
    PreviewArgs parsed;
    parsed.source = parsePageArguments(
        QStringLiteral("preview"), args, [&](const QString& arg, const auto& value) {
            bool ok = true;
            if (arg == u"--watch") {
                parsed.watch = true;
            } else if (arg == u"--scale") {
                const QString text = value();
                parsed.scale = text.toDouble(&ok);
                if (!ok || parsed.scale < 0.1 || parsed.scale > 16)
                    throw QStringLiteral("%1: not a value it takes: %2").arg(arg, text);
            } else if (arg == u"-o" || arg == u"--output") {
                parsed.output = value();
            } else {
                return false;
            }
            return true;
        });
    if (!parsed.watch && parsed.output.isEmpty())
        throw QStringLiteral("preview needs -o PAGE.png (or --watch)");
    if (parsed.watch && !parsed.output.isEmpty())
        throw QStringLiteral("--watch writes no image");
    return parsed;
}

// The lint's findings for the file as it is now; a file it cannot read at all
// is one finding too, so the window says why its list is empty.
lint::Findings findingsOf(const QString& path, const QString& appPath)
{
    lint::Options options;
    options.appPath = appPath;
    try {
        return lint::lintFile(path, options);
    } catch (const Error& error) {
        return {{path, 0, 0, lint::Severity::Error, error.message(), QStringLiteral("lint"), 0}};
    }
}

} // namespace

int runPreviewCommand(int argc, char** argv)
{
    QTextStream err(stderr);
    const std::optional<PreviewArgs> arguments = cli::parseCommandLine(argc, argv, parse);
    if (!arguments)
        return 2;
    const PreviewArgs& parsed = *arguments;
    if (parsed.watch && !cli::hasDisplay()) {
        err << "qforms: --watch needs a display\n";
        return 2;
    }
    // An image is drawn as the launcher draws it under the offscreen platform,
    // whatever display there is.
    if (!parsed.watch && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    const QString problem = checkSource(parsed.source);
    if (!problem.isEmpty()) {
        err << "qforms: " << problem << '\n';
        return 2;
    }
    if (parsed.watch) {
        const QString appPath = parsed.source.appPath;
        PreviewWindow window(parsed.source,
                             [appPath](const QString& path) { return findingsOf(path, appPath); });
        window.show();
        return app.exec();
    }
    const std::unique_ptr<GamePage> page = buildPage(parsed.source);
    if (!renderPage(*page, parsed.scale).save(parsed.output, "PNG")) {
        err << "qforms: cannot write " << parsed.output << '\n';
        return 2;
    }
    QTextStream(stdout) << "launch: " << launchLine(*page) << '\n';
    return 0;
}

} // namespace qf::preview
