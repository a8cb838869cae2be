#include "Command.h"
#include "DesignCommand.h"
#include "PreviewCommand.h"

namespace qf::cli {

// Listed for the help; main runs it before making the application.
const Command previewCommand{preview::CommandName, preview::Synopsis, preview::Description,
                             nullptr};
const Command designCommand{designer::CommandName, designer::Synopsis, designer::Description,
                            nullptr};

std::span<const Command* const> commands()
{
    static const Command* const all[] = {&readCommand, &versionCommand, &lintCommand,
                                         &editCommand, &previewCommand, &designCommand,
                                         &helpCommand};
    return all;
}

} // namespace qf::cli
