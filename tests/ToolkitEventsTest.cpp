#include "platform/Errors.h"
#include "toolkit/CheckBox.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Container.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/OptionButton.h"
#include "toolkit/TextBox.h"

#include <gtest/gtest.h>

#include <vector>

using namespace qf;

TEST(ToolkitEvents, CheckBoxClicksOnlyWhenItsValueChangesAndRejectsValuesOutsideZeroToTwo)
{
    Container form(QStringLiteral("form"));
    CheckBox box(QStringLiteral("box"), &form);
    int clicks = 0;
    box.click.connect([&] { ++clicks; });

    box.setValue(1);
    box.setValue(1);
    EXPECT_EQ(clicks, 1);
    box.setValue(2);
    EXPECT_EQ(clicks, 2);

    EXPECT_THROW(box.setValue(3), InvalidValueError);
    EXPECT_THROW(box.setValue(-1), InvalidValueError);
    EXPECT_EQ(box.value(), 2);
    EXPECT_EQ(clicks, 2);

    // A user's click checks a greyed or unchecked box and unchecks a checked one.
    box.userClick();
    EXPECT_EQ(box.value(), 1);
    box.userClick();
    EXPECT_EQ(box.value(), 0);
    box.setEnabled(false);
    box.userClick();
    EXPECT_EQ(box.value(), 0);
    EXPECT_EQ(clicks, 4);
}

TEST(ToolkitEvents, SelectingAnOptionButtonDeselectsTheOthersOfItsContainerOnly)
{
    Container form(QStringLiteral("form"));
    Frame other(QStringLiteral("other"), &form);
    OptionButton a(QStringLiteral("a"), &form);
    OptionButton b(QStringLiteral("b"), &form);
    OptionButton elsewhere(QStringLiteral("elsewhere"), &other);
    std::vector<QString> clicked;
    for (OptionButton* button : {&a, &b, &elsewhere})
        button->click.connect([&clicked, button] { clicked.push_back(button->name()); });

    elsewhere.setValue(true);
    a.setValue(true);
    b.setValue(true);
    EXPECT_FALSE(a.value());
    EXPECT_TRUE(b.value());
    EXPECT_TRUE(elsewhere.value());
    EXPECT_EQ(clicked, (std::vector<QString>{QStringLiteral("elsewhere"), QStringLiteral("a"),
                                             QStringLiteral("b")}));

    // Selecting the selected one again and deselecting raise nothing.
    b.setValue(true);
    b.setValue(false);
    EXPECT_EQ(clicked.size(), 3u);
    EXPECT_EQ(form.selectedOption(), nullptr);

    // A button that goes away leaves no dangling selection behind.
    {
        OptionButton temporary(QStringLiteral("temporary"), &form);
        temporary.setValue(true);
    }
    EXPECT_EQ(form.selectedOption(), nullptr);
    a.setValue(true);
    EXPECT_TRUE(a.value());
}

TEST(ToolkitEvents, ComboListIndexClicksEveryTimeAndTextSelectsOnlyListedEntries)
{
    Container form(QStringLiteral("form"));
    ComboBox combo(QStringLiteral("combo"), &form);
    int clicks = 0;
    combo.click.connect([&] { ++clicks; });
    combo.addItem(QStringLiteral("640x480"));
    combo.addItem(QStringLiteral("800x600"));
    combo.addItem(QStringLiteral("800x600"));

    combo.setListIndex(1);
    combo.setListIndex(1);
    EXPECT_EQ(clicks, 2);
    EXPECT_THROW(combo.setListIndex(3), InvalidValueError);
    EXPECT_THROW(combo.setListIndex(-2), InvalidValueError);
    EXPECT_EQ(combo.listIndex(), 1);

    combo.setListIndex(0);
    combo.setText(QStringLiteral("800x600"));
    EXPECT_EQ(combo.listIndex(), 1) << "the first equal entry is selected";
    EXPECT_THROW(combo.setText(QStringLiteral("1024x768")), InvalidValueError);
    EXPECT_THROW(combo.setText(QStringLiteral("800X600")), InvalidValueError);
    EXPECT_EQ(combo.text(), QStringLiteral("800x600"));

    combo.setListIndex(-1);
    EXPECT_EQ(combo.text(), QString());
    combo.clear();
    EXPECT_EQ(combo.listCount(), 0);
    EXPECT_THROW(combo.setListIndex(0), InvalidValueError);
}

TEST(ToolkitEvents, TextBoxAndLabelReportChangesOnlyWhenTheTextDiffers)
{
    Container form(QStringLiteral("form"));
    TextBox text(QStringLiteral("text"), &form);
    Label label(QStringLiteral("label"), &form);
    int textChanges = 0;
    int labelChanges = 0;
    text.change.connect([&] { ++textChanges; });
    label.change.connect([&] { ++labelChanges; });

    text.setText(QStringLiteral("C:\\Games"));
    text.setText(QStringLiteral("C:\\Games"));
    text.setText(QString());
    label.setCaption(QStringLiteral(" Arena found"));
    label.setCaption(QStringLiteral(" Arena found"));
    EXPECT_EQ(textChanges, 2);
    EXPECT_EQ(labelChanges, 1);

    // Locking a text box or colouring a label is no change of its text.
    text.setLocked(true);
    label.setForeColor(0x0000FF);
    EXPECT_EQ(textChanges, 2);
    EXPECT_EQ(labelChanges, 1);
    EXPECT_THROW(label.setForeColor(0x1000000), InvalidValueError);
    EXPECT_EQ(label.foreColor(), 0x0000FFu);
}

TEST(ToolkitEvents, InvalidGeometryIsRejectedAndObserversSeeEveryRealChange)
{
    Container form(QStringLiteral("form"));
    CheckBox box(QStringLiteral("box"), &form);
    std::vector<Property> seen;
    box.changed.connect([&](Property property) { seen.push_back(property); });

    box.setGeometry(120, 240, 2400, 255);
    EXPECT_THROW(box.setWidth(-1), InvalidValueError);
    EXPECT_THROW(box.setHeight(-0.5f), InvalidValueError);
    EXPECT_THROW(box.setGeometry(0, 0, 10, -10), InvalidValueError);
    EXPECT_EQ(box.left(), 120);
    EXPECT_EQ(box.width(), 2400);
    EXPECT_EQ(box.height(), 255);

    // Negative positions are fine: a widget may stick out of its container.
    box.setLeft(-60);
    box.setLeft(-60);
    box.setValue(1);
    EXPECT_EQ(seen, (std::vector<Property>{Property::Left, Property::Top, Property::Width,
                                           Property::Height, Property::Left, Property::Value}));
}
