#include "Command.h"

#include "detect/Function.h"

namespace qf::cli {

namespace {

int run(const QStringList& args, Io& io)
{
    const ParsedArgs parsed = splitOptions(args);
    if (!parsed.options.isEmpty())
        throw UsageError(QStringLiteral("unknown option %1").arg(parsed.options.first()));
    if (parsed.operands.size() != 1)
        throw UsageError(QStringLiteral("version takes FILE"));
    requireFile(parsed.operands.first());
    io.out << Function::FileVersionText(parsed.operands.first()) << '\n';
    return 0;
}

} // namespace

const Command versionCommand{
    QLatin1StringView("version"), QLatin1StringView("version FILE"),
    QLatin1StringView(
        "Print the file version that the control reads from the version resource of the\n"
        "program FILE (a.b.c.d; 0.0.0.0 for a program without one)."),
    run};

} // namespace qf::cli
