#include "control/qForms.h"
#include "platform/Errors.h"

#include <QFile>
#include <QMetaClassInfo>
#include <QMetaProperty>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using qf::Widget;

TEST(ControlProperties, AFreshControlIsEmptyAndShowsItsDesignTimeWidgets)
{
    qForms control;
    for (const char* name : {"qpGameName", "qpGamePath", "qpGameApplication", "qpGameBase",
                             "qpVersionType", "qpQGD", "AppPath", "qpGameStatusColour"})
        EXPECT_EQ(control.property(name).toString(), QString()) << name;
    for (const char* name :
         {"qpUseModSelection", "qpUseAdditionalCommandLineParameters", "qpUseConfigs"})
        EXPECT_FALSE(control.property(name).toBool()) << name;
    EXPECT_EQ(control.qpLanguageIndex(), 0);

    const auto& w = control.widgets();
    EXPECT_EQ(control.qpGameStatus(), w.lblStatus.caption());
    EXPECT_FALSE(control.qpGameStatus().isEmpty());
    EXPECT_EQ(w.cmdBrowse.caption(), QStringLiteral("038"));
    EXPECT_EQ(w.lblPath.caption(), QStringLiteral("053"));
    EXPECT_EQ(w.frameStatus.caption(), QStringLiteral("054"));
    EXPECT_EQ(w.lblStatus.foreColor(), 0x00FF00u);
    EXPECT_EQ(w.lblStatus.look().backColor, 0x000000u);
    EXPECT_TRUE(w.lblStatus.look().bold);
    EXPECT_EQ(w.lstConfig.pattern(), QStringLiteral("*.cfg"));
    EXPECT_EQ(w.lstFiles.pattern(), QStringLiteral("*.pk3"));

    for (const Widget* shown : std::initializer_list<const Widget*>{
             &w.frame, &w.lblPath, &w.txtPath, &w.cmdBrowse, &w.frameStatus, &w.lblStatus})
        EXPECT_TRUE(shown->isVisible()) << qPrintable(shown->name());
    for (const Widget* hidden : std::initializer_list<const Widget*>{
             &w.chkModCheck, &w.comModSelect, &w.lblModName, &w.lblCLP, &w.txtCLP,
             &w.lblSelectConfig, &w.lstConfig, &w.cmdEdit, &w.Temp, &w.Check1.templateWidget(),
             &w.Line1.templateWidget(), &w.Text1.templateWidget()})
        EXPECT_FALSE(hidden->isVisible()) << qPrintable(hidden->name());

    EXPECT_EQ(w.txtPath.left(), 120);
    EXPECT_EQ(w.txtPath.top(), 480);
    EXPECT_EQ(w.txtPath.width(), 5175);
    EXPECT_EQ(w.txtPath.height(), 285);
    EXPECT_EQ(w.lblStatus.container(), &w.frameStatus);
    EXPECT_EQ(w.lstAVA.container(), &w.Temp);
    EXPECT_EQ(w.Option1.templateWidget().left(), 2760);
    EXPECT_EQ(w.Line1.templateWidget().x2(), 5280);
}

TEST(ControlProperties, TextAndBooleanPropertiesReadBackWhatWasSetThroughTheMetaObject)
{
    qForms control;
    const struct {
        const char* name;
        QVariant value;
    } cases[] = {
        {"qpGameName", QStringLiteral("Arena / Deluxe")},
        {"qpGamePath", QStringLiteral("C:\\Games\\Arena\\")},
        {"qpGameApplication", QStringLiteral("bin\\arena.exe")},
        {"qpGameBase", QStringLiteral("base")},
        {"qpQGD", QStringLiteral("arena.qgd")},
        {"AppPath", QStringLiteral("/opt/launcher")},
        {"qpUseModSelection", true},
        {"qpUseAdditionalCommandLineParameters", true},
        {"qpUseConfigs", true},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(control.setProperty(c.name, c.value)) << c.name;
        EXPECT_EQ(control.property(c.name), c.value) << c.name;
    }
    EXPECT_FALSE(control.setProperty("qpGameStatus", QStringLiteral("forged")));
    EXPECT_FALSE(control.setProperty("qpGameStatusColour", QStringLiteral("green")));

    const QMetaObject* meta = control.metaObject();
    EXPECT_STREQ(meta->classInfo(meta->indexOfClassInfo("qpGameStatusColour")).value(),
                 "Colour of detection bar.");
    EXPECT_GE(meta->indexOfSignal("StatusChange()"), 0);
    // The thirteen of the component, and the player's four choices, read only.
    EXPECT_EQ(meta->propertyCount() - meta->propertyOffset(), 17);
    for (const char* choice : {"chosenMod", "chosenConfig", "additionalParameters", "programPath"})
        EXPECT_FALSE(control.setProperty(choice, QStringLiteral("forged"))) << choice;
}

TEST(ControlProperties, ThePlayersChoicesFollowTheWidgetsAndAnnounceEachChangeOnce)
{
    QTemporaryDir game;
    QFile(game.filePath(QStringLiteral("Arena.exe"))).open(QIODevice::WriteOnly);
    qForms control;
    control.setQpGameApplication(QStringLiteral("arena.exe"));
    int program = 0, parameters = 0;
    QStringList mods;
    QObject::connect(&control, &qForms::programPathChanged, [&] { ++program; });
    QObject::connect(&control, &qForms::additionalParametersChanged, [&] { ++parameters; });
    QObject::connect(&control, &qForms::chosenModChanged, [&](const QString& m) { mods << m; });
    auto& w = control.widgets();

    w.txtPath.setText(game.path());
    w.txtPath.setText(game.path()); // the same folder: no news
    EXPECT_EQ(control.programPath(), game.filePath(QStringLiteral("Arena.exe")));
    EXPECT_EQ(program, 1);
    w.txtPath.setText(QString());
    EXPECT_EQ(control.programPath(), QString());

    w.txtCLP.setText(QStringLiteral("+set fov 90"));
    EXPECT_EQ(control.additionalParameters(), QString()) << "the box is off";
    control.setQpUseAdditionalCommandLineParameters(true);
    EXPECT_EQ(control.additionalParameters(), QStringLiteral("+set fov 90"));
    EXPECT_EQ(parameters, 1);

    control.setQpUseModSelection(true);
    w.comModSelect.addItem(QString());
    w.comModSelect.addItem(QStringLiteral("ctf"));
    w.comModSelect.setListIndex(1);
    EXPECT_EQ(control.chosenMod(), QStringLiteral("ctf"));
    EXPECT_EQ(mods, QStringList{QStringLiteral("ctf")});
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
        EXPECT_EQ(control.qpVersionType(), QStringLiteral("none")) << tooHigh;
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
    w.comModSelect.addItem(QStringLiteral("ctf"));
    w.comModSelect.setListIndex(0);

    control.setQpUseModSelection(true);
    control.setQpUseAdditionalCommandLineParameters(true);
    control.setQpUseConfigs(true);
    control.setQpUseConfigs(true);
    EXPECT_EQ(order,
              (std::vector<QString>{QStringLiteral("chkModCheck"), QStringLiteral("comModSelect"),
                                    QStringLiteral("lblModName"), QStringLiteral("txtCLP"),
                                    QStringLiteral("lblCLP"), QStringLiteral("lblSelectConfig"),
                                    QStringLiteral("cmdEdit"), QStringLiteral("lstConfig")}));

    control.setQpUseModSelection(false);
    EXPECT_FALSE(w.chkModCheck.isVisible());
    EXPECT_FALSE(w.comModSelect.isVisible());
    EXPECT_FALSE(w.lblModName.isVisible());
    EXPECT_TRUE(w.txtCLP.isVisible());
    EXPECT_TRUE(w.lstConfig.isVisible());
    EXPECT_EQ(w.comModSelect.text(), QStringLiteral("ctf")) << "a hidden list keeps its selection";
    EXPECT_FALSE(control.qpUseModSelection());
}

TEST(ControlProperties, StatusChangeIsRaisedForEveryNewStatusLineAndForEachHostCall)
{
    qForms control;
    int raised = 0;
    QString seenStatus;
    QObject::connect(&control, &qForms::StatusChange, [&] {
        ++raised;
        seenStatus = control.qpGameStatus();
    });

    control.widgets().lblStatus.setCaption(QStringLiteral(" Arena was found."));
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(seenStatus, QStringLiteral(" Arena was found."));
    control.widgets().lblStatus.setCaption(QStringLiteral(" Arena was found."));
    EXPECT_EQ(raised, 1);

    control.lblStatus_Change();
    EXPECT_TRUE(QMetaObject::invokeMethod(&control, "lblStatus_Change"));
    EXPECT_EQ(raised, 3);
}
