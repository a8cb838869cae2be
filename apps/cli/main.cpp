// qforms: command-line access to what the options control reads, for checking
// game data and game list files without a launcher.

#include "PreviewCommand.h"
#include "detect/Function.h"
#include "platform/Errors.h"
#include "platform/ProfileReader.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

namespace {

// Wrong arguments: the message goes to stderr with the usage, exit code 2.
class UsageError : public qf::Error {
    using Error::Error;
};

struct Io {
    QTextStream out{stdout};
    QTextStream err{stderr};
};

struct Command {
    QLatin1StringView name;
    QLatin1StringView synopsis;
    QLatin1StringView description;
    int (*run)(const QStringList& args, Io& io);
};

// Splits "--name" options from the operands; "--" ends the options.
struct ParsedArgs {
    QStringList options;
    QStringList operands;
};

ParsedArgs splitOptions(const QStringList& args)
{
    ParsedArgs parsed;
    bool optionsEnded = false;
    for (const QString& arg : args) {
        if (!optionsEnded && arg == u"--")
            optionsEnded = true;
        else if (!optionsEnded && arg.startsWith(u"--"))
            parsed.options.append(arg);
        else
            parsed.operands.append(arg);
    }
    return parsed;
}

int runRead(const QStringList& args, Io& io)
{
    const ParsedArgs parsed = splitOptions(args);
    bool printLength = false;
    for (const QString& option : parsed.options) {
        if (option != u"--length")
            throw UsageError(QStringLiteral("unknown option %1").arg(option));
        printLength = true;
    }
    const QStringList& operands = parsed.operands;
    if (operands.size() < 3 || operands.size() > 4)
        throw UsageError(QStringLiteral("read takes FILE SECTION KEY [DEFAULT]"));

    const qf::ProfileString result = qf::getPrivateProfileString(operands.at(1), operands.at(2),
                                                                 operands.value(3), operands.at(0));
    io.out << result.value << '\n';
    if (printLength)
        io.out << result.length << '\n';
    return 0;
}

int runVersion(const QStringList& args, Io& io)
{
    const ParsedArgs parsed = splitOptions(args);
    if (!parsed.options.isEmpty())
        throw UsageError(QStringLiteral("unknown option %1").arg(parsed.options.first()));
    if (parsed.operands.size() != 1)
        throw UsageError(QStringLiteral("version takes FILE"));
    io.out << qf::Function::FileVersionText(parsed.operands.first()) << '\n';
    return 0;
}

int runHelp(const QStringList& args, Io& io);

const Command Commands[] = {
    {QLatin1StringView("read"), QLatin1StringView("read [--length] FILE SECTION KEY [DEFAULT]"),
     QLatin1StringView(
         "Print the value of KEY in SECTION of the INI file FILE as the control reads it\n"
         "(1024-character buffer: at most 1023 characters), or DEFAULT when it is missing.\n"
         "With --length, a second line holds the number of characters returned."),
     runRead},
    {QLatin1StringView("version"), QLatin1StringView("version FILE"),
     QLatin1StringView(
         "Print the file version that the control reads from the version resource of the\n"
         "program FILE (a.b.c.d; 0.0.0.0 for a file without one)."),
     runVersion},
    // Dispatched by main before the application object exists.
    {qf::preview::CommandName, qf::preview::Synopsis, qf::preview::Description, nullptr},
    {QLatin1StringView("help"), QLatin1StringView("help"),
     QLatin1StringView("Print this help (also -h and --help)."), runHelp},
};

void printUsage(QTextStream& stream)
{
    stream << "Usage: qforms COMMAND [ARGUMENTS]\n\nCommands:\n";
    for (const Command& command : Commands) {
        stream << "  qforms " << command.synopsis << '\n';
        for (const QString& line : QString(command.description).split(u'\n'))
            stream << "      " << line << '\n';
    }
}

int runHelp(const QStringList& args, Io& io)
{
    if (!args.isEmpty())
        throw UsageError(QStringLiteral("help takes no arguments"));
    printUsage(io.out);
    return 0;
}

const Command* findCommand(const QString& name)
{
    for (const Command& command : Commands) {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

int dispatch(const QStringList& args, Io& io)
{
    if (args.isEmpty())
        throw UsageError(QStringLiteral("no command given"));
    QString name = args.first();
    if (name == u"-h" || name == u"--help")
        name = QStringLiteral("help");
    const Command* command = findCommand(name);
    if (!command || !command->run)
        throw UsageError(QStringLiteral("unknown command %1").arg(args.first()));
    return command->run(args.mid(1), io);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && qf::preview::CommandName == QLatin1StringView(argv[1]))
        return qf::preview::runPreviewCommand(argc, argv);
    QCoreApplication app(argc, argv);
    Io io;
    try {
        return dispatch(app.arguments().mid(1), io);
    } catch (const UsageError& error) {
        io.out.flush();
        io.err << "qforms: " << error.message() << "\n"
               << "Try 'qforms --help' for more information.\n";
        return 2;
    } catch (const std::exception& error) {
        io.out.flush();
        io.err << "qforms: " << QString::fromLocal8Bit(error.what()) << '\n';
        return 1;
    }
}
