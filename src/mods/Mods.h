#pragma once

namespace qf {
class ControlContext;
}

// The game's mod folders: listing them in comModSelect and selecting one.
namespace qf::mods {

// Rebuilds the mod list from the game's folders. A failure of the list itself
// reaches the caller; every other failing step is skipped.
void qScanForMods(ControlContext& context);
// Selects the stored mod when the game's program is present.
void qModInit(ControlContext& context);
// Selects the stored mod again.
void qSelectMod(ControlContext& context);
// Shows the chosen mod's description and sets the mod check box.
void comModSelect_Click(ControlContext& context);

} // namespace qf::mods
