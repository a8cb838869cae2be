#include "Command.h"

namespace qf::cli {

namespace {

int run(const QStringList& args, Io& io)
{
    if (!args.isEmpty())
        throw UsageError(QStringLiteral("help takes no arguments"));
    io.out << "Usage: qforms COMMAND [ARGUMENTS]\n       qforms --version\n\nCommands:\n";
    for (const Command* command : commands()) {
        io.out << "  qforms " << command->synopsis << '\n';
        for (const QString& line : QString(command->description).split(u'\n'))
            io.out << "      " << line << '\n';
    }
    return 0;
}

} // namespace

const Command helpCommand{QLatin1StringView("help"), QLatin1StringView("help"),
                          QLatin1StringView("Print this help (also -h and --help)."), run};

} // namespace qf::cli
