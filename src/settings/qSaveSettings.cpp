#include "context/ControlContext.h"
#include "context/SettingsKeys.h"
#include "context/SkipOnError.h"
#include "gamedata/GameDataKeys.h"
#include "settings/Settings.h"

#include <optional>

namespace qf::settings {

SaveOutcome qSaveSettings(ControlContext& context)
{
    namespace gd = gamedata;
    auto& w = context.widgets;
    // One value per step: a value the store refuses loses only itself.
    const auto save = [&](const QString& key, const auto& value) {
        skipOnError(context, {0, key, {}}, [&] {
            context.settingsStore().saveValue(Application, context.strGameName, key, value());
        });
    };

    save(Path, [&] { return w.txtPath.text(); });
    if (context.bolUseModSelection) {
        save(ModName, [&] { return w.comModSelect.text(); });
        save(LoadModAlways, [&] { return QString::number(w.chkModCheck.value()); });
    }
    if (context.bolUseAdditionalCommandLineParameters)
        save(CommandLineParameters, [&] { return w.txtCLP.text(); });
    if (context.bolUseConfigs)
        save(ConfigName, [&] { return w.lstConfig.fileName(); });

    forEachOptionValue(context, [&](int entry, const QString& controlKey, const QString& value) {
        skipOnError(context, {entry, gd::ControlKey, controlKey}, [&] {
            context.settingsStore().saveValue(Application, context.strGameName, controlKey, value);
        });
    });

    // The one write of the file. When it fails the control goes on; the values
    // stay with the store for its next write, and the caller hears why.
    SaveOutcome outcome;
    try {
        context.settingsStore().sync();
    } catch (const Error& error) {
        context.reportSkip({}, error.message());
        outcome.failure = error.message();
    }
    outcome.damagedCopies = context.settingsStore().takeDamagedCopies();
    return outcome;
}

} // namespace qf::settings
