#pragma once

namespace qf {
class ControlContext;
}

// The control's dialogs.
namespace qf::dialogs {

// Lets the user pick the game's program; the chosen path goes into txtPath,
// which checks the game. Cancel or any failure ends it without a change.
void cmdBrowse_Click(ControlContext& context);

} // namespace qf::dialogs
