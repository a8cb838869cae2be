#include "context/ControlContext.h"
#include "context/SettingsKeys.h"
#include "context/SkipOnError.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "settings/Settings.h"

#include <optional>

namespace qf::settings {

std::optional<QString> qSaveSettings(ControlContext& context)
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

    gd::forEachEntry(context, [&](int entry) {
        // All three reads come before any widget is touched.
        const QString index =
            gd::customControlRead(context, entry, gd::Index, QStringLiteral("1")).toLower();
        const QString controlKey = gd::customControlRead(context, entry, gd::ControlKey, QString());
        const QString type = gd::customControlRead(context, entry, gd::Type, QString()).toLower();
        std::optional<QString> value;
        skipOnError(context, {entry, gd::Index, index}, [&] {
            switch (gd::kindOf(type)) {
            case gd::Kind::CheckBox:
                value = QString::number(w.Check1.at(syntax::toInt16(index)).value());
                break;
            case gd::Kind::OptionButton:
                value = w.Option1.at(syntax::toInt16(index)).value() ? QStringLiteral("True")
                                                                     : QStringLiteral("False");
                break;
            case gd::Kind::Combo:
                value = w.Combo1.at(syntax::toInt16(index)).text();
                break;
            case gd::Kind::Text:
                value = w.Text1.at(syntax::toInt16(index)).text();
                break;
            default:
                break;
            }
        });
        if (value)
            skipOnError(context, {entry, gd::ControlKey, controlKey}, [&] {
                context.settingsStore().saveValue(Application, context.strGameName, controlKey,
                                                  *value);
            });
    });

    // The one write of the file. When it fails the control goes on; the values
    // stay with the store for its next write, and the caller hears why.
    try {
        context.settingsStore().sync();
    } catch (const Error& error) {
        context.reportSkip({}, error.message());
        return error.message();
    }
    return std::nullopt;
}

} // namespace qf::settings
