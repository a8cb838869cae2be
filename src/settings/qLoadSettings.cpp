#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "settings/SettingsKeys.h"

QVariant qForms::qLoadSettings()
{
    namespace keys = qf::settings;
    namespace gd = qf::gamedata;
    using qf::skipOnError;
    auto& w = *m_widgets;
    const auto stored = [&](const QString& key, const QString& defaultValue) {
        return settingsStore().readValue(keys::Application, strGameName, key, defaultValue);
    };

    // A changed text runs the game check now, with the restored folder.
    skipOnError([&] {
        strGamePath = stored(keys::Path, QString());
        w.txtPath.setText(strGamePath);
    });

    if (bolUseAdditionalCommandLineParameters)
        skipOnError([&] { w.txtCLP.setText(stored(keys::CommandLineParameters, QString())); });

    if (bolUseConfigs) {
        const QString folder =
            strAppPath + QStringLiteral("\\Data\\") + strGameName + QStringLiteral("\\Configs");
        skipOnError([&] { w.lstConfig.setPath(folder); });
        QString configName;
        skipOnError([&] { configName = stored(keys::ConfigName, QString()); });
        skipOnError([&] {
            if (!languageTextProvider().fileExists(folder + u'\\' + configName)) {
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

    if (bolUseModSelection)
        skipOnError([&] { qModInit(); });

    qint16 count = 0;
    skipOnError([&] {
        count = qf::syntax::toInt16(
            gameDataRead(gd::Section, gd::Count, QStringLiteral("0")).toLower());
    });
    for (int entry = 1; entry <= count; ++entry) {
        // Setting a value raises the widget's click, so its rule runs now and
        // an entry restored later can change a widget restored earlier.
        skipOnError([&] {
            const qint16 index = qf::syntax::toInt16(
                customControlRead(entry, gd::Index, QStringLiteral("1")).toLower());
            const QString controlKey = customControlRead(entry, gd::ControlKey, QString());
            const QString type = customControlRead(entry, gd::Type, QString()).toLower();
            const QString entryDefault =
                customControlRead(entry, gd::ControlDefaultValue, QStringLiteral("0")).toLower();
            if (type == gd::KindCheckBox)
                w.Check1.at(index).setValue(qf::syntax::toInt16(stored(controlKey, entryDefault)));
            else if (type == gd::KindOptionButton)
                w.Option1.at(index).setValue(
                    qf::syntax::toBoolean(stored(controlKey, entryDefault)));
            else if (type == gd::KindCombo)
                w.Combo1.at(index).setText(stored(controlKey, QStringLiteral("0")));
            else if (type == gd::KindText)
                w.Text1.at(index).setText(stored(controlKey, entryDefault));
        });
    }
    return {};
}
