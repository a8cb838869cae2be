#include "Command.h"

#include "Lint.h"

#include <QTextStream>

namespace qf::cli {

namespace {

int run(const QStringList& args, Io& io)
{
    lint::Options options;
    bool json = false;
    bool warningsAreErrors = false;
    QStringList files;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const auto operand = [&]() -> QString {
            if (i + 1 >= args.size())
                throw UsageError(QStringLiteral("%1 needs a value").arg(arg));
            return args[++i];
        };
        if (arg == u"--app-path") {
            options.appPath = operand();
        } else if (arg == u"--language") {
            bool isNumber = false;
            const int language = operand().toInt(&isNumber);
            if (!isNumber)
                throw UsageError(QStringLiteral("--language takes a number"));
            options.languages.append(language);
        } else if (arg == u"--game") {
            options.gameName = operand();
        } else if (arg == u"--format") {
            const QString format = operand();
            if (format != u"text" && format != u"json")
                throw UsageError(QStringLiteral("--format is text or json, not %1").arg(format));
            json = format == u"json";
        } else if (arg == u"--werror") {
            warningsAreErrors = true;
        } else if (arg.startsWith(u"--")) {
            throw UsageError(QStringLiteral("unknown option %1").arg(arg));
        } else {
            files.append(arg);
        }
    }
    if (files.isEmpty())
        throw UsageError(QStringLiteral("lint takes at least one FILE.qgd"));
    for (const QString& file : files)
        requireFile(file);

    lint::Findings all;
    for (const QString& file : files) {
        try {
            const lint::Findings findings = lint::lintFile(file, options);
            all.insert(all.end(), findings.begin(), findings.end());
        } catch (const Error& error) {
            throw InputError(error.message());
        }
    }
    if (json) {
        io.out << QString::fromUtf8(lint::formatJson(all));
    } else {
        for (const lint::Finding& finding : all)
            io.out << lint::formatText(finding) << '\n';
    }
    const bool failed = std::any_of(all.begin(), all.end(), [&](const lint::Finding& f) {
        return f.severity == lint::Severity::Error ||
               (warningsAreErrors && f.severity == lint::Severity::Warning);
    });
    return failed ? 1 : 0;
}

} // namespace

const Command lintCommand{
    QLatin1StringView("lint"),
    QLatin1StringView("lint [--app-path DIR] [--language N] [--game NAME] [--format text|json] "
                      "[--werror] FILE.qgd..."),
    QLatin1StringView(
        "Report every step the control would skip for the game data files, like a compiler:\n"
        "path:line:column: error|warning|note: message [check]. --app-path: the host folder\n"
        "(default: the folder above the file's Data folder); --language: check this language\n"
        "only (default: every language file); --game: also check the game's game list files\n"
        "in Data/NAME/AVA. The host's launcher.ini, when a game there names the file, says\n"
        "which fixed groups the widgets must leave free. Exit 0 without errors, 1 with\n"
        "errors (or warnings with --werror), 2 when the command cannot run."),
    run};

} // namespace qf::cli
