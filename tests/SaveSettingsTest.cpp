#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "context/SettingsKeys.h"
#include "support/TestHost.h"

#include <QSettings>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class SaveSettingsTest : public ::testing::Test {
protected:
    SaveSettingsTest()
    {
        control.setAppPath(host.path());
        control.setQpQGD(u"game.qgd"_s);
        control.setQpGameName(u"Arena"_s);
        control.setSettingsStore(store);
    }

    void build(const QByteArray& lines)
    {
        host.writeCustomControls(u"game.qgd"_s, lines);
        control.qInitCustomControls();
    }
    // What a host reading the file with QSettings finds.
    QStringList keysInFile() const
    {
        QStringList keys =
            QSettings(store->fileName(qf::settings::Application), QSettings::IniFormat).allKeys();
        keys.sort();
        return keys;
    }
    QString stored(const QString& key) const
    {
        return qf::IniFileSettingsStore(store->configFolder())
            .readValue(qf::settings::Application, u"Arena"_s, key, u"<missing>"_s);
    }

    TestHost host;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(host.filePath(u"config"_s));
    qForms control;
    qf::ControlWidgets& w = control.widgets();
};

} // namespace

TEST_F(SaveSettingsTest, WithEverySwitchOffOnlyThePathIsWrittenOncePerCall)
{
    w.txtPath.setText(u"/games/arena"_s);
    control.qSaveSettings();
    EXPECT_EQ(keysInFile(), QStringList{u"Arena/Path"_s});
    EXPECT_EQ(stored(u"Path"_s), u"/games/arena"_s);
    EXPECT_EQ(store->writeCount(), 1);

    // Keys of switched-off groups keep what they had.
    store->saveValue(qf::settings::Application, u"Arena"_s, qf::settings::ConfigName, u"old.cfg"_s);
    store->saveValue(qf::settings::Application, u"Arena"_s, qf::settings::ModName, u"ctf"_s);
    control.qSaveSettings();
    EXPECT_EQ(store->writeCount(), 2);
    EXPECT_EQ(stored(u"Config Name"_s), u"old.cfg"_s);
    EXPECT_EQ(stored(u"Mod Name"_s), u"ctf"_s);

    control.setQpUseConfigs(true);
    control.qSaveSettings();
    EXPECT_EQ(stored(u"Config Name"_s), u""_s) << "no selection";
    EXPECT_EQ(store->writeCount(), 3);
}

TEST_F(SaveSettingsTest, WidgetValuesAreStoredAsTextAndTheHigherEntryWinsASharedKey)
{
    build("Count=10\n"
          "Control1Type=CheckBox\nControl1Index=1\nControl1ControlKey=Check\n"
          "Control2Type=checkbox\nControl2Index=2\nControl2ControlKey=Shared\n"
          "Control3Type=option button\nControl3Index=1\nControl3ControlKey=Low\n"
          "Control4Type=Option Button\nControl4Index=2\nControl4ControlKey=High\n"
          "Control5Type=COMBO\nControl5Index=1\nControl5ControlKey=Shared\n"
          "Control5Caption=low;;high;;(high);;\n"
          "Control6Type=text\nControl6Index=1.5\nControl6ControlKey=Player Name\n"
          "Control7Type=label\nControl7Index=1\nControl7ControlKey=Label\n"
          "Control8Type=check box\nControl8Index=1\nControl8ControlKey=Blank\n"
          "Control9Type=checkbox\nControl9Index=7\nControl9ControlKey=Missing\n"
          "Control10Type=text\nControl10Index=2\nControl10ControlKey=Later\n");
    w.Check1.at(1).setValue(qf::CheckBox::Checked);
    w.Option1.at(1).setValue(true);
    w.Text1.at(2).setText(u"Zed"_s);
    control.setQpUseModSelection(true);
    w.chkModCheck.setValue(qf::CheckBox::Greyed);
    control.setQpUseAdditionalCommandLineParameters(true);
    w.txtCLP.setText(u"+set a 1"_s);
    control.qSaveSettings();

    EXPECT_EQ(keysInFile(),
              (QStringList{u"Arena/Check"_s, u"Arena/Command Line Parameters"_s, u"Arena/High"_s,
                           u"Arena/Later"_s, u"Arena/Load Mod Always"_s, u"Arena/Low"_s,
                           u"Arena/Mod Name"_s, u"Arena/Path"_s, u"Arena/Player Name"_s,
                           u"Arena/Shared"_s}));
    const std::pair<QString, QString> expected[] = {
        {u"Check"_s, u"1"_s},
        {u"Low"_s, u"True"_s},
        {u"High"_s, u"False"_s},
        {u"Shared"_s, u"high"_s},
        {u"Later"_s, u"Zed"_s},
        {u"Player Name"_s, u"Zed"_s}, // index 1.5 rounds to 2
        {u"Load Mod Always"_s, u"2"_s},
        {u"Mod Name"_s, u""_s},
        {u"Command Line Parameters"_s, u"+set a 1"_s}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(stored(key), value) << qPrintable(key);
    EXPECT_EQ(store->writeCount(), 1);
}
