#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "settings/SettingsKeys.h"

QVariant qForms::qSaveSettings()
{
    namespace keys = qf::settings;
    namespace gd = qf::gamedata;
    auto& w = *m_widgets;
    // One value per step: a value the store refuses loses only itself.
    const auto save = [&](const QString& key, const auto& value) {
        qf::skipOnError(
            [&] { settingsStore().saveValue(keys::Application, strGameName, key, value()); });
    };

    save(keys::Path, [&] { return w.txtPath.text(); });
    if (bolUseModSelection) {
        save(keys::ModName, [&] { return w.comModSelect.text(); });
        save(keys::LoadModAlways, [&] { return QString::number(w.chkModCheck.value()); });
    }
    if (bolUseAdditionalCommandLineParameters)
        save(keys::CommandLineParameters, [&] { return w.txtCLP.text(); });
    if (bolUseConfigs)
        save(keys::ConfigName, [&] { return w.lstConfig.fileName(); });

    qint16 count = 0;
    qf::skipOnError([&] {
        count = qf::syntax::toInt16(
            gameDataRead(gd::Section, gd::Count, QStringLiteral("0")).toLower());
    });
    for (int entry = 1; entry <= count; ++entry) {
        qf::skipOnError([&] {
            // All three reads come before any widget is touched.
            const QString index =
                customControlRead(entry, gd::Index, QStringLiteral("1")).toLower();
            const QString controlKey = customControlRead(entry, gd::ControlKey, QString());
            const QString type = customControlRead(entry, gd::Type, QString()).toLower();
            QString value;
            if (type == gd::KindCheckBox)
                value = QString::number(w.Check1.at(qf::syntax::toInt16(index)).value());
            else if (type == gd::KindOptionButton)
                value = w.Option1.at(qf::syntax::toInt16(index)).value() ? QStringLiteral("True")
                                                                         : QStringLiteral("False");
            else if (type == gd::KindCombo)
                value = w.Combo1.at(qf::syntax::toInt16(index)).text();
            else if (type == gd::KindText)
                value = w.Text1.at(qf::syntax::toInt16(index)).text();
            else
                return;
            settingsStore().saveValue(keys::Application, strGameName, controlKey, value);
        });
    }

    // The one write of the file. When it fails the control goes on; the values
    // stay with the store for its next write, and the host hears of it.
    try {
        settingsStore().sync();
    } catch (const qf::Error& error) {
        emit settingsSaveFailed(error.message());
    }
    return {};
}
