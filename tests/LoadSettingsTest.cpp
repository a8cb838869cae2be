#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "context/SettingsKeys.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

// A host with three config files for the game and a game data file with one
// widget of each valued kind.
class LoadSettingsTest : public ::testing::Test {
protected:
    LoadSettingsTest()
    {
        host.writeLanguage(0, "000=\" not set up\"\n001=\" found\"\n002=\" missing\"\n");
        for (const char* name : {"a.cfg", "b.cfg", "c.cfg"})
            host.write(u"Data/Arena/Configs/"_s + QString::fromLatin1(name), "");
        host.writeCustomControls(
            u"game.qgd"_s, "Count=7\n"
                           "Control1Type=checkbox\nControl1ControlKey=Sound\n"
                           "Control1ControlDefaultValue=1\n"
                           "Control2Type=checkbox\nControl2Index=2\nControl2ControlKey=Music\n"
                           "Control2VisualFunction=checkbox1;;ifonthenoff\n"
                           "Control3Type=option button\nControl3ControlKey=Low\n"
                           "Control3ControlDefaultValue=TRUE\n"
                           "Control4Type=option button\nControl4Index=2\nControl4ControlKey=High\n"
                           "Control5Type=combo\nControl5ControlKey=Detail\n"
                           "Control5Caption=low;;0;;high;;(low);;\n"
                           "Control6Type=text\nControl6ControlKey=Player\n"
                           "Control6ControlDefaultValue=Hello\n"
                           "Control7Type=label\nControl7ControlKey=Player\n");
        control = makeControl();
    }

    // A control as a host sets one up, with its own store on the shared folder.
    std::unique_ptr<qForms> makeControl()
    {
        auto made = std::make_unique<qForms>();
        made->setSettingsStore(std::make_shared<qf::IniFileSettingsStore>(settingsFolder()));
        made->setAppPath(host.path());
        made->setQpQGD(u"game.qgd"_s);
        made->setQpGameName(u"Arena"_s);
        made->qInitCustomControls();
        return made;
    }
    QString settingsFolder() const { return host.filePath(u"config"_s); }
    void store(const QString& key, const QString& value)
    {
        qf::IniFileSettingsStore shared(settingsFolder());
        shared.saveValue(qf::settings::Application, u"Arena"_s, key, value);
        shared.sync();
    }

    TestHost host;
    std::unique_ptr<qForms> control;
};

} // namespace

TEST_F(LoadSettingsTest, SavedValuesComeBackIntoEveryValuedKind)
{
    {
        qf::ControlWidgets& w = control->widgets();
        w.txtPath.setText(u"/games/arena"_s);
        control->setQpUseAdditionalCommandLineParameters(true);
        w.txtCLP.setText(u"+set fov 90"_s);
        control->setQpUseConfigs(true);
        w.lstConfig.setPath(host.filePath(u"Data/Arena/Configs"_s));
        w.lstConfig.setListIndex(1);
        w.Check1.at(1).setValue(qf::CheckBox::Greyed);
        w.Option1.at(2).setValue(true);
        w.Combo1.at(1).setText(u"high"_s);
        w.Text1.at(1).setText(u"Zed Two"_s);
        control->qSaveSettings();
    }

    const std::unique_ptr<qForms> loaded = makeControl();
    int statusChanges = 0;
    QObject::connect(loaded.get(), &qForms::StatusChange, [&] { ++statusChanges; });
    loaded->setQpUseAdditionalCommandLineParameters(true);
    loaded->setQpUseConfigs(true);
    loaded->qLoadSettings();

    const qf::ControlWidgets& w = loaded->widgets();
    EXPECT_EQ(loaded->qpGamePath(), u"/games/arena"_s);
    EXPECT_EQ(w.txtPath.text(), u"/games/arena"_s);
    EXPECT_EQ(statusChanges, 1) << "the game check ran on the restored folder";
    EXPECT_EQ(w.txtCLP.text(), u"+set fov 90"_s);
    EXPECT_EQ(w.lstConfig.fileName(), u"b.cfg"_s);
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Greyed);
    EXPECT_FALSE(w.Option1.at(1).value());
    EXPECT_TRUE(w.Option1.at(2).value());
    EXPECT_EQ(w.Combo1.at(1).text(), u"high"_s);
    EXPECT_EQ(w.Text1.at(1).text(), u"Zed Two"_s);
}

TEST_F(LoadSettingsTest, AGameNeverSavedGetsTheEntryDefaults)
{
    qf::ControlWidgets& w = control->widgets();
    control->setQpUseConfigs(true);
    control->qLoadSettings();
    EXPECT_EQ(w.txtPath.text(), u""_s);
    EXPECT_EQ(w.lstConfig.fileName(), u"a.cfg"_s) << "no stored file: the first";
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Checked);
    EXPECT_TRUE(w.Option1.at(1).value());
    EXPECT_EQ(w.Combo1.at(1).text(), u"0"_s);
    EXPECT_EQ(w.Text1.at(1).text(), u"hello"_s) << "defaults are lower-cased";

    // A stored value a widget does not take leaves it as it is.
    store(u"Sound"_s, u"7"_s);
    store(u"Low"_s, u"maybe"_s);
    store(u"Detail"_s, u"ultra"_s);
    control->qLoadSettings();
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Checked);
    EXPECT_TRUE(w.Option1.at(1).value());
    EXPECT_EQ(w.Combo1.at(1).text(), u"0"_s);
}

TEST_F(LoadSettingsTest, TheStoredConfigIsSelectedOnlyByItsExactName)
{
    qf::ControlWidgets& w = control->widgets();
    control->setQpUseConfigs(true);
    store(qf::settings::ConfigName, u"B.CFG"_s);
    control->qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"c.cfg"_s) << "the file exists, no entry is equal";

    store(qf::settings::ConfigName, u"b.cfg"_s);
    control->qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"b.cfg"_s);

    QFile::remove(host.filePath(u"Data/Arena/Configs/b.cfg"_s));
    control->qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"a.cfg"_s) << "deleted: the first file";

    // Switched off, the groups' widgets keep what they show.
    const std::unique_ptr<qForms> off = makeControl();
    store(qf::settings::CommandLineParameters, u"+stored"_s);
    off->widgets().txtCLP.setText(u"+typed"_s);
    off->qLoadSettings();
    EXPECT_EQ(off->widgets().txtCLP.text(), u"+typed"_s);
    EXPECT_EQ(off->widgets().lstConfig.path(), u""_s);
}

TEST_F(LoadSettingsTest, RestoredValuesRunTheirRulesInEntryOrder)
{
    store(u"Sound"_s, u"1"_s);
    store(u"Music"_s, u"1"_s);
    control->qLoadSettings();
    // Music, restored after Sound, unticks Sound by its rule.
    EXPECT_EQ(control->widgets().Check1.at(2).value(), qf::CheckBox::Checked);
    EXPECT_EQ(control->widgets().Check1.at(1).value(), qf::CheckBox::Unchecked);
}
