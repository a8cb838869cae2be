// qforms: command-line access to what the options control reads, for checking
// game data and game list files without a launcher. Each command lives in its
// own file and is listed in Commands.cpp.

#include "Command.h"
#include "DesignCommand.h"
#include "PreviewCommand.h"

#include <QApplication>

#include <memory>

using namespace qf::cli;

namespace {

int dispatch(const QStringList& args, Io& io)
{
    if (args.isEmpty())
        throw UsageError(QStringLiteral("no command given"));
    if (args.first() == u"--version") {
        io.out << "qforms " << QFORMS_VERSION << '\n';
        return 0;
    }
    const QString name =
        args.first() == u"-h" || args.first() == u"--help" ? QStringLiteral("help") : args.first();
    for (const Command* command : commands()) {
        if (name == command->name && command->run)
            return command->run(args.mid(1), io);
    }
    throw UsageError(QStringLiteral("unknown command %1").arg(args.first()));
}

} // namespace

int main(int argc, char** argv)
{
    // preview and design make their own GUI application, with its own platform choice.
    if (argc > 1 && qf::preview::CommandName == QLatin1StringView(argv[1]))
        return qf::preview::runPreviewCommand(argc, argv);
    if (argc > 1 && qf::designer::CommandName == QLatin1StringView(argv[1]))
        return qf::designer::runDesignCommand(argc, argv);
    // The lint measures captions with the view's widgets, which need a
    // platform; it shows no window, so the offscreen one will do. The other
    // commands run without any.
    const bool lint = argc > 1 && qstrcmp(argv[1], "lint") == 0;
    if (lint && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> application;
    if (lint)
        application = std::make_unique<QApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication& app = *application;
    Io io;
    try {
        return dispatch(app.arguments().mid(1), io);
    } catch (const UsageError& error) {
        io.out.flush();
        io.err << "qforms: " << error.message() << "\n"
               << "Try 'qforms --help' for more information.\n";
        return 2;
    } catch (const InputError& error) {
        io.out.flush();
        io.err << "qforms: " << error.message() << '\n';
        return 2;
    } catch (const std::exception& error) {
        io.out.flush();
        io.err << "qforms: " << QString::fromLocal8Bit(error.what()) << '\n';
        return 1;
    }
}
