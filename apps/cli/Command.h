#pragma once

#include "platform/Errors.h"

#include <QLatin1StringView>
#include <QStringList>
#include <QTextStream>

#include <optional>
#include <span>

namespace qf::cli {

// Wrong arguments: the message goes to stderr with the usage, exit code 2.
class UsageError : public Error {
    using Error::Error;
};

// An input that cannot be used (a file that is not there): the message goes to
// stderr, exit code 2.
class InputError : public Error {
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
    // nullptr for a command that main runs before the application exists.
    int (*run)(const QStringList& args, Io& io);
};

// For the commands main runs before the application exists: the arguments
// after the command's name, given to `parse`, which throws the message for
// stderr when they are wrong; then nullopt, with the message and the usage hint
// said on stderr.
template <typename Parse>
auto parseCommandLine(int argc, char** argv, Parse parse)
    -> std::optional<decltype(parse(QStringList()))>
{
    QStringList args;
    for (int i = 2; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));
    try {
        return parse(args);
    } catch (const QString& message) {
        QTextStream(stderr) << "qforms: " << message
                            << "\nTry 'qforms --help' for more information.\n";
        return std::nullopt;
    }
}

// Whether a window could be shown: a Qt platform chosen, or a display.
inline bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ||
           !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The commands, each defined in its own file.
extern const Command readCommand;
extern const Command versionCommand;
extern const Command lintCommand;
extern const Command editCommand;
extern const Command previewCommand;
extern const Command designCommand;
extern const Command helpCommand;

// Every command, in the order the help lists them.
std::span<const Command* const> commands();

// Splits "--name" options from the operands; "--" ends the options.
struct ParsedArgs {
    QStringList options;
    QStringList operands;
};
ParsedArgs splitOptions(const QStringList& args);

// Throws InputError unless the path names a regular file.
void requireFile(const QString& path);

} // namespace qf::cli
