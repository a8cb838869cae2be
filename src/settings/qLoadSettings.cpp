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
    skipOnError([&] {
        context.strGamePath = stored(Path, QString());
        w.txtPath.setText(context.strGamePath);
    });

    if (context.bolUseAdditionalCommandLineParameters)
        skipOnError([&] { w.txtCLP.setText(stored(CommandLineParameters, QString())); });

    if (context.bolUseConfigs) {
        const QString folder = datapaths::configFolder(context.strAppPath, context.strGameName);
        skipOnError([&] { w.lstConfig.setPath(folder); });
        QString configName;
        skipOnError([&] { configName = stored(ConfigName, QString()); });
        skipOnError([&] {
            if (!context.languageTextProvider().fileExists(folder + u'\\' + configName)) {
                skipOnError([&] { w.lstConfig.setListIndex(0); });
                return;
            }
            // Position by position, comparing case and all: a name that differs
            // only in case leaves the last file selected.
            for (int p = 0; p < w.lstConfig.listCount(); ++p) {
                skipOnError([&] { w.lstConfig.setListIndex(p); });
                if (w.lstConfig.fileName() == configName)
                    break;
            }
        });
    }

    if (context.bolUseModSelection)
        skipOnError([&] { mods::qModInit(context); });

    gd::forEachEntry(context, [&](int entry) {
        // Setting a value raises the widget's click, so its rule runs now and
        // an entry restored later can change a widget restored earlier.
        skipOnError([&] {
            const qint16 index = syntax::toInt16(
                gd::customControlRead(context, entry, gd::Index, QStringLiteral("1")).toLower());
            const QString controlKey =
                gd::customControlRead(context, entry, gd::ControlKey, QString());
            const QString type =
                gd::customControlRead(context, entry, gd::Type, QString()).toLower();
            const QString entryDefault =
                gd::customControlRead(context, entry, gd::ControlDefaultValue, QStringLiteral("0"))
                    .toLower();
            switch (gd::kindOf(type)) {
            case gd::Kind::CheckBox:
                w.Check1.at(index).setValue(syntax::toInt16(stored(controlKey, entryDefault)));
                break;
            case gd::Kind::OptionButton:
                w.Option1.at(index).setValue(syntax::toBoolean(stored(controlKey, entryDefault)));
                break;
            case gd::Kind::Combo:
                w.Combo1.at(index).setText(stored(controlKey, QStringLiteral("0")));
                break;
            case gd::Kind::Text:
                w.Text1.at(index).setText(stored(controlKey, entryDefault));
                break;
            default:
                break;
            }
        });
    });
}

} // namespace qf::settings
