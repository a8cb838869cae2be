#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

#include <optional>

namespace qf {
class ControlContext;
}

// The player's choices in the settings store, and the game's config files.
namespace qf::settings {

// What a save tells its caller: the store's message when the sync failed, and
// the copies of a damaged settings file the sync kept.
struct SaveOutcome {
    std::optional<QString> failure;
    QStringList damagedCopies;
};

// Writes the folder text, the switched-on fixed values and every valued
// dynamic widget to the store, then syncs it once. Failing steps are skipped.
SaveOutcome qSaveSettings(ControlContext& context);
// Runs `visit` for every valued dynamic widget in entry order, with the key and
// the text qSaveSettings stores for it; entries whose widget cannot be read
// are skipped.
void forEachOptionValue(
    ControlContext& context,
    const std::function<void(int entry, const QString& controlKey, const QString& value)>& visit);
// What qSaveSettings would store for the dynamic widgets, by ControlKey; of
// entries sharing a key the later one wins, as in the store.
QMap<QString, QString> optionValues(ControlContext& context);
// Puts the stored values back into the widgets, which runs the game check and
// the widgets' rules. Never writes; failing steps are skipped.
void qLoadSettings(ControlContext& context);

// Points the config list at the game's config folder (the side effect of
// qpGameApplication). Failing steps are skipped.
void showConfigFolder(ControlContext& context);
// Opens the selected config file in the text editor, or tells the user to
// select one. Errors reach the caller.
void cmdEdit_Click(ControlContext& context);

} // namespace qf::settings
