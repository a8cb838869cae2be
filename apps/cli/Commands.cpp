#include "Command.h"

namespace qf::cli {

std::span<const Command* const> commands()
{
    static const Command* const all[] = {&readCommand, &versionCommand, &lintCommand, &helpCommand};
    return all;
}

} // namespace qf::cli
