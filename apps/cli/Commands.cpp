#include "Command.h"
#include "PreviewCommand.h"

namespace qf::cli {

// Listed for the help; main runs it before making the application.
const Command previewCommand{preview::CommandName, preview::Synopsis, preview::Description,
                             nullptr};

std::span<const Command* const> commands()
{
    static const Command* const all[] = {&readCommand, &versionCommand, &lintCommand,
                                         &editCommand, &previewCommand, &helpCommand};
    return all;
}

} // namespace qf::cli
