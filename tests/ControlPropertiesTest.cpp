#include "context/SettingsKeys.h"
#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QMetaClassInfo>
#include <QMetaProperty>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

using qf::Widget;

TEST(ControlProperties, PropertiesStartEmptyAndReadBackThroughTheMetaObjectExceptTheReadOnly)
{
    qForms control;
    const struct {
        const char* name;
        QVariant value;
    } cases[] = {
        {"qpGameName", u"Arena / Deluxe"_s},
        {"qpGamePath", u"C:\\Games\\Arena\\"_s},
        {"qpGameApplication", u"bin\\arena.exe"_s},
        {"qpGameBase", u"base"_s},
        {"qpQGD", u"arena.qgd"_s},
        {"AppPath", u"/opt/launcher"_s},
        {"qpUseModSelection", true},
        {"qpUseAdditionalCommandLineParameters", true},
        {"qpUseConfigs", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(control.property(c.name), QVariant(c.value.metaType())) << "fresh " << c.name;
        EXPECT_TRUE(control.setProperty(c.name, c.value)) << c.name;
        EXPECT_EQ(control.property(c.name), c.value) << c.name;
    }
    EXPECT_EQ(control.qpVersionType(), QString());
    EXPECT_EQ(control.qpGameStatusColour(), QString());
    EXPECT_EQ(control.qpLanguageIndex(), 0);
    EXPECT_FALSE(control.setProperty("qpGameStatus", u"forged"_s));
    EXPECT_FALSE(control.setProperty("qpGameStatusColour", u"green"_s));
    for (const char* choice : {"chosenMod", "chosenConfig", "additionalParameters", "programPath"})
        EXPECT_FALSE(control.setProperty(choice, u"forged"_s)) << choice;

    const QMetaObject* meta = control.metaObject();
    EXPECT_STREQ(meta->classInfo(meta->indexOfClassInfo("qpGameStatusColour")).value(),
                 "Colour of detection bar.");
    EXPECT_GE(meta->indexOfSignal("StatusChange()"), 0);
    // The thirteen of the component, and the player's four choices.
    EXPECT_EQ(meta->propertyCount() - meta->propertyOffset(), 17);
}

// The view's tests check where the fixed widgets stand and how the status line looks.
TEST(ControlProperties, AFreshControlShowsItsDesignTimeWidgets)
{
    const qForms control;
    const auto& w = control.widgets();
    EXPECT_EQ(control.qpGameStatus(), w.lblStatus.caption());
    EXPECT_FALSE(control.qpGameStatus().isEmpty());
    EXPECT_EQ((QStringList{w.cmdBrowse.caption(), w.lblPath.caption(), w.frameStatus.caption()}),
              (QStringList{u"038"_s, u"053"_s, u"054"_s}));
    EXPECT_EQ(w.lstConfig.pattern(), u"*.cfg"_s);
    EXPECT_EQ(w.lstFiles.pattern(), u"*.pk3"_s);

    for (const Widget* shown : std::initializer_list<const Widget*>{
             &w.frame, &w.lblPath, &w.txtPath, &w.cmdBrowse, &w.frameStatus, &w.lblStatus})
        EXPECT_TRUE(shown->isVisible()) << shown->name();
    for (const Widget* hidden : std::initializer_list<const Widget*>{
             &w.chkModCheck, &w.comModSelect, &w.lblModName, &w.lblCLP, &w.txtCLP,
             &w.lblSelectConfig, &w.lstConfig, &w.cmdEdit, &w.Temp, &w.Check1.templateWidget(),
             &w.Line1.templateWidget(), &w.Text1.templateWidget()})
        EXPECT_FALSE(hidden->isVisible()) << hidden->name();

    EXPECT_EQ(w.lstAVA.container(), &w.Temp);
}

TEST(ControlProperties, ThePlayersChoicesFollowTheWidgetsAndAnnounceEachChangeOnce)
{
    QTemporaryDir game;
    QFile(game.filePath(u"Arena.exe"_s)).open(QIODevice::WriteOnly);
    qForms control;
    control.setQpGameApplication(u"arena.exe"_s);
    int program = 0, parameters = 0;
    QStringList mods;
    QObject::connect(&control, &qForms::programPathChanged, [&] { ++program; });
    QObject::connect(&control, &qForms::additionalParametersChanged, [&] { ++parameters; });
    QObject::connect(&control, &qForms::chosenModChanged, [&](const QString& m) { mods << m; });
    auto& w = control.widgets();

    w.txtPath.setText(game.path());
    w.txtPath.setText(game.path()); // the same folder: no news
    EXPECT_EQ(control.programPath(), game.filePath(u"Arena.exe"_s));
    EXPECT_EQ(program, 1);
    w.txtPath.setText(QString());
    EXPECT_EQ(control.programPath(), QString());

    w.txtCLP.setText(u"+set fov 90"_s);
    EXPECT_EQ(control.additionalParameters(), QString()) << "the box is off";
    control.setQpUseAdditionalCommandLineParameters(true);
    EXPECT_EQ(control.additionalParameters(), u"+set fov 90"_s);
    EXPECT_EQ(parameters, 1);

    control.setQpUseModSelection(true);
    w.comModSelect.addItem(QString());
    w.comModSelect.addItem(u"ctf"_s);
    w.comModSelect.setListIndex(1);
    EXPECT_EQ(control.chosenMod(), u"ctf"_s);
    EXPECT_EQ(mods, QStringList{u"ctf"_s});

    // A load that scans the mods anew clears the list and selects the stored
    // mod again: the host hears of the mod only when the load is done.
    QDir(game.path()).mkpath(u"ctf"_s);
    QFile(game.filePath(u"ctf/maps.pk3"_s)).open(QIODevice::WriteOnly);
    control.setQpGameName(u"Arena"_s);
    qf::IniFileSettingsStore store;
    for (const auto& [key, value] :
         {std::pair{qf::settings::Path, game.path()}, std::pair{qf::settings::ModName, u"ctf"_s}})
        store.saveValue(qf::settings::Application, u"Arena"_s, key, value);
    store.sync();
    control.qLoadSettings();
    EXPECT_EQ(control.chosenMod(), u"ctf"_s);
    EXPECT_EQ(mods, QStringList{u"ctf"_s}) << "nothing new to announce";
}

TEST(ControlProperties, VersionTypeKeepsNumbersBelowThreeTurnsHigherOnesIntoNoneAndRejectsText)
{
    qForms control;
    for (const char* kept : {"0", "1", "2", "2.5", "-1", " 1 ", "2.999"}) {
        control.setQpVersionType(QString::fromLatin1(kept));
        EXPECT_EQ(control.qpVersionType(), QString::fromLatin1(kept));
    }
    for (const char* tooHigh : {"3", "12", "3.0", " 10"}) {
        control.setQpVersionType(QString::fromLatin1(tooHigh));
        EXPECT_EQ(control.qpVersionType(), u"none"_s) << tooHigh;
    }
    for (const char* notANumber : {"", "abc", "1a", "  "}) {
        EXPECT_THROW(control.setQpVersionType(QString::fromLatin1(notANumber)),
                     qf::TypeMismatchError)
            << notANumber;
        EXPECT_EQ(control.qpVersionType(), QString::fromLatin1(notANumber))
            << "a rejected text stays stored";
    }
}

TEST(ControlProperties, GroupSwitchesShowAndHideTheirWidgetsInOrderAndNothingElse)
{
    qForms control;
    auto& w = control.widgets();
    std::vector<QString> order;
    for (Widget* widget : std::initializer_list<Widget*>{
             &w.chkModCheck, &w.comModSelect, &w.lblModName, &w.txtCLP, &w.lblCLP,
             &w.lblSelectConfig, &w.cmdEdit, &w.lstConfig, &w.txtPath, &w.Temp})
        widget->changed.connect([&order, widget](qf::Property p) {
            if (p == qf::Property::Visible)
                order.push_back(widget->name());
        });
    w.comModSelect.addItem(u"ctf"_s);
    w.comModSelect.setListIndex(0);

    control.setQpUseModSelection(true);
    control.setQpUseAdditionalCommandLineParameters(true);
    control.setQpUseConfigs(true);
    control.setQpUseConfigs(true);
    EXPECT_EQ(order, (std::vector<QString>{u"chkModCheck"_s, u"comModSelect"_s, u"lblModName"_s,
                                           u"txtCLP"_s, u"lblCLP"_s, u"lblSelectConfig"_s,
                                           u"cmdEdit"_s, u"lstConfig"_s}));

    control.setQpUseModSelection(false);
    EXPECT_FALSE(w.chkModCheck.isVisible() || w.comModSelect.isVisible() ||
                 w.lblModName.isVisible());
    EXPECT_TRUE(w.txtCLP.isVisible() && w.lstConfig.isVisible());
    EXPECT_EQ(w.comModSelect.text(), u"ctf"_s) << "a hidden list keeps its selection";
    EXPECT_FALSE(control.qpUseModSelection());
}
