#include "Command.h"

#include "platform/Paths.h"

namespace qf::cli {

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

void requireFile(const QString& path)
{
    // The library answers a missing file with a default; a person at a shell
    // is better told.
    if (!paths::isFile(path))
        throw InputError(QStringLiteral("%1: no such file").arg(path));
}

} // namespace qf::cli
