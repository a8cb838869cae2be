#include "Command.h"

#include "platform/ProfileReader.h"

namespace qf::cli {

namespace {

int run(const QStringList& args, Io& io)
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
    requireFile(operands.at(0));

    const ProfileString result =
        getPrivateProfileString(operands.at(1), operands.at(2), operands.value(3), operands.at(0));
    io.out << result.value << '\n';
    if (printLength)
        io.out << result.length << '\n';
    return 0;
}

} // namespace

const Command readCommand{
    QLatin1StringView("read"), QLatin1StringView("read [--length] FILE SECTION KEY [DEFAULT]"),
    QLatin1StringView(
        "Print the value of KEY in SECTION of the INI file FILE as the control reads it\n"
        "(1024-character buffer: at most 1023 characters), or DEFAULT when it is missing.\n"
        "With --length, a second line holds the number of characters returned."),
    run};

} // namespace qf::cli
