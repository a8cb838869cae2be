#include "toolkit/qt/ControlView.h"
#include "control/qForms.h"
#include "support/TestHost.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <gtest/gtest.h>

using qf::ControlView;

TEST(ControlView, MirrorsTheFixedWidgetsAtTheirTwipPositionsWithTheStatusLineLook)
{
    qForms control;
    ControlView view(control);
    const auto& w = control.widgets();
    const qf::TwipScale& scale = view.scale();

    auto* txtPath = qobject_cast<QLineEdit*>(view.viewOf(w.txtPath));
    ASSERT_NE(txtPath, nullptr);
    EXPECT_EQ(txtPath->geometry(), scale.rect(120, 480, 5175, 285));
    EXPECT_EQ(view.size(), QSize(scale.pixels(6735), scale.pixels(4215)));
    EXPECT_EQ(qobject_cast<QPushButton*>(view.viewOf(w.cmdBrowse))->text(), QStringLiteral("038"));

    auto* status = qobject_cast<QLabel*>(view.viewOf(w.lblStatus));
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(status->parentWidget(), view.viewOf(w.frameStatus));
    EXPECT_EQ(status->palette().color(QPalette::Window), QColor(Qt::black));
    EXPECT_EQ(status->palette().color(QPalette::WindowText), QColor(0, 255, 0));
    EXPECT_TRUE(status->font().bold());
    EXPECT_TRUE(status->autoFillBackground());

    control.widgets().lblStatus.setCaption(QStringLiteral(" Arena"));
    EXPECT_EQ(status->text(), QStringLiteral(" Arena"));
}

TEST(ControlView, UserInputReachesTheModelsAndGroupSwitchesShowTheirWidgets)
{
    qForms control;
    ControlView view(control);
    view.show();
    auto& w = control.widgets();
    int changes = 0;
    w.txtPath.change.connect([&] { ++changes; });

    QTest::keyClicks(view.viewOf(w.txtPath), QStringLiteral("C:"));
    EXPECT_EQ(w.txtPath.text(), QStringLiteral("C:"));
    EXPECT_EQ(changes, 2) << "each keystroke is a change";

    EXPECT_FALSE(view.viewOf(w.chkModCheck)->isVisible());
    control.setQpUseModSelection(true);
    ASSERT_TRUE(view.viewOf(w.chkModCheck)->isVisible());
    auto* box = qobject_cast<QCheckBox*>(view.viewOf(w.chkModCheck));
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    EXPECT_EQ(w.chkModCheck.value(), 1);

    // A greyed box shows as partly checked, and a click checks it.
    w.chkModCheck.setValue(2);
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
    box->click();
    EXPECT_EQ(w.chkModCheck.value(), 1);
    EXPECT_EQ(box->checkState(), Qt::Checked);
}

TEST(ControlView, KeyboardFocusFollowsTheControlsOrder)
{
    qForms control;
    control.setQpUseModSelection(true);
    control.setQpUseAdditionalCommandLineParameters(true);
    control.setQpUseConfigs(true);
    ControlView view(control);
    const auto& w = control.widgets();

    std::vector<QWidget*> chain;
    QWidget* next = view.viewOf(w.txtPath);
    for (int i = 0; i < 7; ++i) {
        chain.push_back(next);
        do
            next = next->nextInFocusChain();
        while (next->focusPolicy() == Qt::NoFocus || next == &view);
    }
    const std::vector<QWidget*> expected = {view.viewOf(w.txtPath),     view.viewOf(w.cmdBrowse),
                                            view.viewOf(w.chkModCheck), view.viewOf(w.comModSelect),
                                            view.viewOf(w.txtCLP),      view.viewOf(w.lstConfig),
                                            view.viewOf(w.cmdEdit)};
    EXPECT_EQ(chain, expected);
}

TEST(ControlView, ArrayElementsAppearWhenLoadedAndGoWhenUnloadedEvenIfTheControlGoesFirst)
{
    auto control = std::make_unique<qForms>();
    ControlView view(*control);
    auto& combos = control->widgets().Combo1;

    qf::ComboBox& combo = combos.load(1);
    combo.addItem(QStringLiteral("low"));
    combo.addItem(QStringLiteral("high"));
    combo.setListIndex(1);
    combo.setVisible(true);
    auto* shown = qobject_cast<QComboBox*>(view.viewOf(combo));
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->count(), 2);
    EXPECT_EQ(shown->currentText(), QStringLiteral("high"));

    QPointer<QWidget> gone = shown;
    combos.unload(1);
    EXPECT_TRUE(gone.isNull());

    combos.load(1);
    control.reset();
    EXPECT_EQ(view.findChildren<QComboBox*>().size(), 0);
}

TEST(ControlView, ClickingABuiltCheckBoxRunsItsRuleAndTheWindowShowsTheResultAtOnce)
{
    TestHost host;
    host.writeCustomControls(
        QStringLiteral("game.qgd"),
        "Count=3\nControl1Type=checkbox\nControl1Caption=Safe mode\n"
        "Control1VisualFunction=combo1;;ifonthendisable\n"
        "Control2Type=combo\nControl2Caption=a;;b;;(b);;\n"
        "Control3Type=line\nControl3X-Location=0x1500\nControl3Y-Location=300x300\n"
        "Control3Width=3\n");
    qForms control;
    control.setAppPath(host.path());
    control.setQpQGD(QStringLiteral("game.qgd"));
    qf::ControlView view(control);
    view.show();
    control.qInitCustomControls();
    const auto& w = control.widgets();

    auto* box = qobject_cast<QCheckBox*>(view.viewOf(w.Check1.at(1)));
    auto* combo = qobject_cast<QComboBox*>(view.viewOf(w.Combo1.at(1)));
    ASSERT_NE(box, nullptr);
    ASSERT_NE(combo, nullptr);
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(box->text(), QStringLiteral("safe mode"));
    EXPECT_EQ(combo->currentText(), QStringLiteral("b"));
    EXPECT_TRUE(combo->isEnabled());

    box->click();
    EXPECT_EQ(w.Check1.at(1).value(), 1);
    EXPECT_TRUE(box->isChecked());
    EXPECT_FALSE(combo->isEnabled());

    // The line covers its two ends, thickness included.
    QWidget* line = view.viewOf(w.Line1.at(1));
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->geometry().contains(QPoint(0, view.scale().pixels(300))));
    EXPECT_TRUE(
        line->geometry().contains(QPoint(view.scale().pixels(1500), view.scale().pixels(300))));

    control.qClear();
    EXPECT_EQ(view.findChildren<QCheckBox*>().size(), 2) << "chkModCheck and the template stay";
}

TEST(ControlView, TypingAGameFolderChecksTheGameAndShowsStatusColourAndMods)
{
    TestHost host;
    host.writeLanguage(0, "000=\" -\"\n001=\" found\"\n002=\" missing\"\n");
    host.write(QStringLiteral("g/arena.exe"), "program");
    host.write(QStringLiteral("g/base/pak0.pk3"), "");
    host.write(QStringLiteral("g/ctf/map.pk3"), "");
    host.write(QStringLiteral("g/ctf/description.txt"), "Capture the flag");
    qForms control;
    control.setAppPath(host.path());
    control.setQpGameName(QStringLiteral("Arena"));
    control.setQpGameApplication(QStringLiteral("arena.exe"));
    control.setQpGameBase(QStringLiteral("base"));
    control.setQpVersionType(QStringLiteral("0"));
    control.setQpUseModSelection(true);
    qf::ControlView view(control);
    view.show();
    const auto& w = control.widgets();
    auto* status = qobject_cast<QLabel*>(view.viewOf(w.lblStatus));

    QTest::keyClicks(view.viewOf(w.txtPath), host.path());
    EXPECT_EQ(status->text(), QStringLiteral(" Arena missing"));
    EXPECT_EQ(status->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    EXPECT_FALSE(view.viewOf(w.comModSelect)->isEnabled());

    QTest::keyClicks(view.viewOf(w.txtPath), QStringLiteral("/g"));
    EXPECT_EQ(status->text(), QStringLiteral(" Arena found"));
    EXPECT_EQ(status->palette().color(QPalette::WindowText), QColor(0, 255, 0));
    auto* mods = qobject_cast<QComboBox*>(view.viewOf(w.comModSelect));
    ASSERT_EQ(mods->count(), 2);
    EXPECT_TRUE(mods->isEnabled());

    // Choosing a mod in the list shows its description and checks the box.
    mods->setCurrentIndex(1);
    emit mods->activated(1);
    EXPECT_EQ(qobject_cast<QLabel*>(view.viewOf(w.lblModName))->text(),
              QStringLiteral("Capture the flag "));
    EXPECT_TRUE(qobject_cast<QCheckBox*>(view.viewOf(w.chkModCheck))->isChecked());
}

TEST(ControlView, ClearingAPageTakesItsWidgetsDownAndKeepsTheRestStackedAsBefore)
{
    TestHost host;
    QByteArray lines = "Count=60\n";
    for (int i = 1; i <= 60; ++i)
        lines += "Control" + QByteArray::number(i) + "Type=" + (i % 3 ? "label" : "frame") + "\n";
    host.writeCustomControls(QStringLiteral("game.qgd"), lines);
    qForms control;
    control.setAppPath(host.path());
    control.setQpQGD(QStringLiteral("game.qgd"));
    ControlView view(control);
    QWidget* page = view.viewOf(control.widgets().frame);
    QObjectList before;
    for (int round = 0; round < 2; ++round) {
        control.setQpQGD(QStringLiteral("game.qgd"));
        control.qInitCustomControls();
        auto* frames = view.findChild<QWidget*>(QStringLiteral("frames"));
        ASSERT_NE(frames, nullptr);
        EXPECT_EQ(frames->children().size(), 20);
        if (round == 0) {
            before = page->children();
            before.removeIf([](const QObject* child) {
                return child->objectName().endsWith(u')') && !child->objectName().endsWith(u"(0)");
            });
        }
        control.qClear();
        EXPECT_EQ(page->children(), before);
        EXPECT_TRUE(frames->children().isEmpty());
    }
}
