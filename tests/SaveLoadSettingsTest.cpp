#include "context/SettingsKeys.h"
#include "support/HostedControl.h"

#include <QSettings>

using namespace Qt::Literals::StringLiterals;
namespace keys = qf::settings;

namespace {

// One widget of each valued kind; Music unticks Sound.
const QByteArray ValuedKinds =
    "Count=7\n"
    "Control1Type=checkbox\nControl1ControlKey=Sound\nControl1ControlDefaultValue=1\n"
    "Control2Type=checkbox\nControl2Index=2\nControl2ControlKey=Music\n"
    "Control2VisualFunction=checkbox1;;ifonthenoff\n"
    "Control3Type=option button\nControl3ControlKey=Low\nControl3ControlDefaultValue=TRUE\n"
    "Control4Type=option button\nControl4Index=2\nControl4ControlKey=High\n"
    "Control5Type=combo\nControl5ControlKey=Detail\nControl5Caption=low;;0;;high;;(low);;\n"
    "Control6Type=text\nControl6ControlKey=Player\nControl6ControlDefaultValue=Hello\n"
    "Control7Type=label\nControl7ControlKey=Player\n";

// build() adds three config files to the game data.
class SaveLoadSettingsTest : public HostedControl {
protected:
    void build(const QByteArray& entries)
    {
        for (const char* name : {"a.cfg", "b.cfg", "c.cfg"})
            host.write(u"Data/Arena/Configs/"_s + QString::fromLatin1(name), "");
        HostedControl::build(entries);
    }
    // What a host reading the file with QSettings finds.
    QStringList inFile() const
    {
        QSettings file(store->fileName(keys::Application), QSettings::IniFormat);
        QStringList values;
        for (const QString& key : file.allKeys())
            values.append(key + u'=' + file.value(key).toString());
        values.sort();
        return values;
    }
    // Saved by another store, as another process would.
    void storeValues(const std::vector<std::pair<QString, QString>>& values) const
    {
        qf::IniFileSettingsStore other(store->configFolder());
        for (const auto& [key, value] : values)
            other.saveValue(keys::Application, u"Arena"_s, key, value);
        other.sync();
    }
};

} // namespace

TEST_F(SaveLoadSettingsTest, SwitchedOffGroupsAreNeitherSavedNorLoaded)
{
    w.txtPath.setText(u"/games/arena"_s);
    control.qSaveSettings();
    EXPECT_EQ(inFile(), QStringList{u"Arena/Path=/games/arena"_s});

    storeValues({{keys::CommandLineParameters, u"+stored"_s}, {keys::ConfigName, u"b.cfg"_s}});
    w.txtCLP.setText(u"+typed"_s);
    control.qLoadSettings();
    EXPECT_EQ(w.txtCLP.text(), u"+typed"_s);
    EXPECT_EQ(w.lstConfig.path(), u""_s);

    control.setQpUseConfigs(true);
    control.qSaveSettings();
    EXPECT_TRUE(inFile().contains(u"Arena/Config Name="_s)) << "no selection";
}

TEST_F(SaveLoadSettingsTest, WidgetValuesAreStoredAsTextAndTheHigherEntryWinsASharedKey)
{
    build("Count=10\n"
          "Control1Type=CheckBox\nControl1Index=1\nControl1ControlKey=Check\n"
          "Control2Type=checkbox\nControl2Index=2\nControl2ControlKey=Shared\n"
          "Control3Type=option button\nControl3Index=1\nControl3ControlKey=Low\n"
          "Control4Type=Option Button\nControl4Index=2\nControl4ControlKey=High\n"
          "Control5Type=COMBO\nControl5ControlKey=Shared\nControl5Caption=low;;high;;(high);;\n"
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

    // Index 1.5 rounds to 2.
    EXPECT_EQ(inFile(),
              (QStringList{u"Arena/Check=1"_s, u"Arena/Command Line Parameters=+set a 1"_s,
                           u"Arena/High=False"_s, u"Arena/Later=Zed"_s,
                           u"Arena/Load Mod Always=2"_s, u"Arena/Low=True"_s, u"Arena/Mod Name="_s,
                           u"Arena/Path="_s, u"Arena/Player Name=Zed"_s, u"Arena/Shared=high"_s}));
    EXPECT_EQ(store->writeCount(), 1);
}

TEST_F(SaveLoadSettingsTest, SavedValuesComeBackIntoEveryValuedKind)
{
    build(ValuedKinds);
    w.txtPath.setText(u"/games/arena"_s);
    control.setQpUseAdditionalCommandLineParameters(true);
    w.txtCLP.setText(u"+set fov 90"_s);
    control.setQpUseConfigs(true);
    w.lstConfig.setPath(host.filePath(u"Data/Arena/Configs"_s));
    w.lstConfig.setListIndex(1);
    w.Check1.at(1).setValue(qf::CheckBox::Greyed);
    w.Option1.at(2).setValue(true);
    w.Combo1.at(1).setText(u"high"_s);
    w.Text1.at(1).setText(u"Zed Two"_s);
    control.qSaveSettings();

    // Into a control as a second run of the host makes it.
    qForms loaded;
    loaded.setSettingsStore(std::make_shared<qf::IniFileSettingsStore>(store->configFolder()));
    loaded.setAppPath(host.path());
    loaded.setQpQGD(u"game.qgd"_s);
    loaded.setQpGameName(u"Arena"_s);
    loaded.qInitCustomControls();
    int statusChanges = 0;
    QObject::connect(&loaded, &qForms::StatusChange, [&] { ++statusChanges; });
    loaded.setQpUseAdditionalCommandLineParameters(true);
    loaded.setQpUseConfigs(true);
    loaded.qLoadSettings();

    const qf::ControlWidgets& l = loaded.widgets();
    EXPECT_EQ(loaded.qpGamePath(), u"/games/arena"_s);
    EXPECT_EQ(l.txtPath.text(), u"/games/arena"_s);
    EXPECT_EQ(statusChanges, 1) << "the game check ran on the restored folder";
    EXPECT_EQ(l.txtCLP.text(), u"+set fov 90"_s);
    EXPECT_EQ(l.lstConfig.fileName(), u"b.cfg"_s);
    EXPECT_EQ(l.Check1.at(1).value(), qf::CheckBox::Greyed);
    EXPECT_TRUE(l.Option1.at(2).value());
    EXPECT_EQ(l.Combo1.at(1).text(), u"high"_s);
    EXPECT_EQ(l.Text1.at(1).text(), u"Zed Two"_s);
}

TEST_F(SaveLoadSettingsTest, StoredValuesComeBackWhereTheyFitElseTheEntryDefaults)
{
    build(ValuedKinds);
    control.setQpUseConfigs(true);
    control.qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"a.cfg"_s) << "no stored file: the first";
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Checked);
    EXPECT_TRUE(w.Option1.at(1).value());
    EXPECT_EQ(w.Combo1.at(1).text(), u"0"_s);
    EXPECT_EQ(w.Text1.at(1).text(), u"hello"_s) << "defaults are lower-cased";

    // A stored value a widget does not take leaves it as it is.
    storeValues({{u"Sound"_s, u"7"_s}, {u"Low"_s, u"maybe"_s}, {u"Detail"_s, u"ultra"_s}});
    control.qLoadSettings();
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Checked);
    EXPECT_TRUE(w.Option1.at(1).value());
    EXPECT_EQ(w.Combo1.at(1).text(), u"0"_s);

    // Music, restored after Sound, unticks Sound by its rule.
    storeValues({{u"Sound"_s, u"1"_s}, {u"Music"_s, u"1"_s}});
    control.qLoadSettings();
    EXPECT_EQ(w.Check1.at(2).value(), qf::CheckBox::Checked);
    EXPECT_EQ(w.Check1.at(1).value(), qf::CheckBox::Unchecked);

    // The stored config is selected only by its exact name; the search ends at
    // the last file without a failing step of its own.
    struct Skips : qf::SkipObserver {
        void stepSkipped(const qf::SkippedStep& step) override { reasons << step.reason; }
        QStringList reasons;
    };
    const auto skips = std::make_shared<Skips>();
    control.setSkipObserver(skips);
    storeValues({{keys::ConfigName, u"B.CFG"_s}});
    control.qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"c.cfg"_s) << "the file exists, no entry is equal";
    EXPECT_EQ(skips->reasons, (QStringList{u"Not a number: \"maybe\""_s,
                                           u"\"ultra\" is not in the list of Combo1"_s}))
        << "only the stored values above that no widget takes";

    storeValues({{keys::ConfigName, u"b.cfg"_s}});
    control.qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"b.cfg"_s);

    QFile::remove(host.filePath(u"Data/Arena/Configs/b.cfg"_s));
    control.qLoadSettings();
    EXPECT_EQ(w.lstConfig.fileName(), u"a.cfg"_s) << "deleted: the first file";
}

// Each call sees the files as they were when it first looked at them,
// however they change while it runs (here from the host's StatusChange
// handler and a widget's click); the next call sees them changed.
TEST_F(SaveLoadSettingsTest, ACallLooksAtEachFileOnceAndTheNextSeesItChanged)
{
    const QByteArray entries = "Count=2\nControl1Type=checkbox\nControl1ControlKey=Sound\n"
                               "Control1ControlDefaultValue=1\nControl2Type=checkbox\n"
                               "Control2Index=2\nControl2ControlKey=Music\n"
                               "Control2ControlDefaultValue=";
    build(entries + "1\n");
    storeValues({{keys::Path, u"/nowhere"_s}});
    const auto changeStore = QObject::connect(&control, &qForms::StatusChange, [&] {
        storeValues({{u"Sound"_s, u"2"_s}});
    });
    const int changeGameData = w.Check1.click.connect(
        [&](int) { host.writeCustomControls(u"game.qgd"_s, entries + "0\n"); });
    control.qLoadSettings();
    EXPECT_EQ(w.Check1.at(1).value(), 1);
    EXPECT_EQ(w.Check1.at(2).value(), 1);
    QObject::disconnect(changeStore);
    w.Check1.click.disconnect(changeGameData);
    control.qLoadSettings();
    EXPECT_EQ(w.Check1.at(1).value(), 2);
    EXPECT_EQ(w.Check1.at(2).value(), 0);
}
