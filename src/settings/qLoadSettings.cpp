#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "context/SettingsKeys.h"
#include "context/SkipOnError.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "mods/Mods.h"
#include "settings/Settings.h"

namespace qf::settings {

void qLoadSettings(ControlContext& context)
{
    namespace gd = gamedata;
    auto& w = context.widgets;
    const auto stored = [&](const QString& key, const QString& defaultValue) {
        return context.settingsStore().readValue(Application, context.strGameName, key,
                                                 defaultValue);
    };

    // A changed text runs the game check now, with the restored folder.
    skipOnError(context, {}, [&] {
        context.strGamePath = stored(Path, QString());
        w.txtPath.setText(context.strGamePath);
    });

    if (context.bolUseAdditionalCommandLineParameters)
        skipOnError(context, {},
                    [&] { w.txtCLP.setText(stored(CommandLineParameters, QString())); });

    if (context.bolUseConfigs) {
        const QString folder = datapaths::configFolder(context.strAppPath, context.strGameName);
        skipOnError(context, {}, [&] { w.lstConfig.setPath(folder); });
        QString configName;
        skipOnError(context, {}, [&] { configName = stored(ConfigName, QString()); });
        skipOnError(context, {}, [&] {
            if (!context.languageTextProvider().fileExists(folder + u'\\' + configName)) {
                skipOnError(context, {}, [&] { w.lstConfig.setListIndex(0); });
                return;
            }
            // Position by position, comparing case and all: a name that differs
            // only in case leaves the last file selected.
            for (int p = 0; p < w.lstConfig.listCount(); ++p) {
                skipOnError(context, {}, [&] { w.lstConfig.setListIndex(p); });
                if (w.lstConfig.fileName() == configName)
                    break;
            }
        });
    }

    if (context.bolUseModSelection)
        skipOnError(context, {}, [&] { mods::qModInit(context); });

    gd::forEachEntry(context, [&](int entry) {
        const QString indexText =
            gd::customControlRead(context, entry, gd::Index, QStringLiteral("1")).toLower();
        qint16 index = 0;
        try {
            index = syntax::toInt16(indexText);
        } catch (const Error& error) {
            context.reportSkip({entry, gd::Index, indexText}, error.message());
            return;
        }
        const QString controlKey = gd::customControlRead(context, entry, gd::ControlKey, QString());
        const QString type = gd::customControlRead(context, entry, gd::Type, QString()).toLower();
        const QString entryDefault =
            gd::customControlRead(context, entry, gd::ControlDefaultValue, QStringLiteral("0"))
                .toLower();
        // Setting a value raises the widget's click, so its rule runs now and
        // an entry restored later can change a widget restored earlier.
        const auto restore = [&](auto& array, const auto& set,
                                 const StepSite& valueSite = StepSite{}) {
            decltype(&array.at(0)) widget = nullptr;
            skipOnError(context, {entry, gd::Index, indexText}, [&] { widget = &array.at(index); });
            const StepSite defaultSite{entry, gd::ControlDefaultValue, entryDefault};
            if (widget)
                skipOnError(context, valueSite.key.isNull() ? defaultSite : valueSite,
                            [&] { set(*widget); });
        };
        switch (gd::kindOf(type)) {
        case gd::Kind::CheckBox:
            return restore(w.Check1, [&](CheckBox& box) {
                box.setValue(syntax::toInt16(stored(controlKey, entryDefault)));
            });
        case gd::Kind::OptionButton:
            return restore(w.Option1, [&](OptionButton& button) {
                button.setValue(syntax::toBoolean(stored(controlKey, entryDefault)));
            });
        case gd::Kind::Combo:
            // The stored name or "0", which is rarely an entry: no news, so
            // reported under ControlKey rather than as a bad default.
            return restore(
                w.Combo1,
                [&](ComboBox& combo) { combo.setText(stored(controlKey, QStringLiteral("0"))); },
                {entry, gd::ControlKey, controlKey});
        case gd::Kind::Text:
            return restore(w.Text1,
                           [&](TextBox& text) { text.setText(stored(controlKey, entryDefault)); });
        default:
            return;
        }
    });
}

} // namespace qf::settings
