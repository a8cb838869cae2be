#include "platform/Errors.h"
#include "toolkit/CheckBox.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Container.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/OptionButton.h"
#include "toolkit/TextBox.h"
#include "toolkit/WidgetArray.h"

#include <QRectF>
#include <gtest/gtest.h>

#include <vector>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

std::unique_ptr<CheckBox> checkTemplate(Container* form)
{
    auto box = std::make_unique<CheckBox>(u"Check1"_s, form);
    box->setGeometry(120, 1800, 1215, 495);
    box->setCaption(u"template"_s);
    box->setVisible(false);
    return box;
}

} // namespace

TEST(WidgetArray, ElementsAreHiddenCopiesOfTheTemplateLoadedOnceEachWithGapsAllowed)
{
    Container form(u"form"_s);
    WidgetArray<CheckBox> array(checkTemplate(&form));
    std::vector<int> loaded, unloading;
    array.loaded.connect([&](int n) { loaded.push_back(n); });
    array.unloading.connect([&](int n) { unloading.push_back(n); });

    CheckBox& first = array.load(1);
    EXPECT_EQ(first.index(), 1);
    EXPECT_EQ(QRectF(first.left(), first.top(), first.width(), first.height()),
              QRectF(120, 1800, 1215, 495));
    EXPECT_EQ(first.caption(), u"template"_s);
    EXPECT_EQ(first.container(), &form);
    EXPECT_FALSE(first.isVisible());
    first.setCaption(u"mine"_s);
    EXPECT_THROW(array.load(1), ElementExistsError);
    EXPECT_EQ(array.at(1).caption(), u"mine"_s);
    EXPECT_THROW(array.load(0), InvalidValueError);
    EXPECT_THROW(array.load(32768), InvalidValueError);

    array.load(3);
    EXPECT_EQ(array.count(), 3);
    EXPECT_EQ(array.upperBound(), 3);
    EXPECT_THROW(array.at(2), MissingElementError);
    EXPECT_THROW(array.at(-1), MissingElementError);
    EXPECT_THROW(array.unload(2), MissingElementError);
    EXPECT_THROW(array.unload(0), InvalidValueError);
    array.unload(3);
    EXPECT_EQ(array.count(), 2);
    EXPECT_EQ(array.upperBound(), 1);
    EXPECT_THROW(array.unload(3), MissingElementError);
    array.load(3);
    EXPECT_EQ(loaded, (std::vector<int>{1, 3, 3}));
    EXPECT_EQ(unloading, (std::vector<int>{3}));
}

TEST(WidgetArray, ClicksOfElementsAndTemplateArriveWithTheirIndex)
{
    Container form(u"form"_s);
    WidgetArray<OptionButton> array(std::make_unique<OptionButton>(u"Option1"_s, &form));
    std::vector<int> clicks;
    array.click.connect([&](int n) { clicks.push_back(n); });

    array.load(1);
    array.load(2);
    array.at(2).setValue(true);
    array.at(1).setValue(true);
    array.templateWidget().setValue(true);
    EXPECT_EQ(clicks, (std::vector<int>{2, 1, 0}));
    // Copies never start selected: a group has one selected button at most.
    EXPECT_FALSE(array.load(3).value());
    EXPECT_FALSE(array.at(1).value());
    EXPECT_FALSE(array.at(2).value());
}

TEST(ToolkitEvents, CheckBoxClicksOnlyWhenItsValueChangesAndRejectsValuesOutsideZeroToTwo)
{
    Container form(u"form"_s);
    CheckBox box(u"box"_s, &form);
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
    Container form(u"form"_s);
    Frame other(u"other"_s, &form);
    OptionButton a(u"a"_s, &form);
    OptionButton b(u"b"_s, &form);
    OptionButton elsewhere(u"elsewhere"_s, &other);
    std::vector<QString> clicked;
    for (OptionButton* button : {&a, &b, &elsewhere})
        button->click.connect([&clicked, button] { clicked.push_back(button->name()); });

    elsewhere.setValue(true);
    a.setValue(true);
    b.setValue(true);
    EXPECT_FALSE(a.value());
    EXPECT_TRUE(b.value());
    EXPECT_TRUE(elsewhere.value());
    EXPECT_EQ(clicked, (std::vector<QString>{u"elsewhere"_s, u"a"_s, u"b"_s}));

    // Selecting the selected one again and deselecting raise nothing.
    b.setValue(true);
    b.setValue(false);
    EXPECT_EQ(clicked.size(), 3u);
    EXPECT_EQ(form.selectedOption(), nullptr);

    // A button that goes away leaves no dangling selection behind, and takes
    // only its own.
    {
        OptionButton temporary(u"temporary"_s, &form);
        temporary.setValue(true);
    }
    EXPECT_EQ(form.selectedOption(), nullptr);
    a.setValue(true);
    {
        OptionButton unselected(u"unselected"_s, &form);
    }
    EXPECT_EQ(form.selectedOption(), &a);
}

TEST(ToolkitEvents, ComboListIndexClicksEveryTimeAndTextSelectsOnlyListedEntries)
{
    Container form(u"form"_s);
    ComboBox combo(u"combo"_s, &form);
    int clicks = 0;
    combo.click.connect([&] { ++clicks; });
    combo.addItem(u"640x480"_s);
    combo.addItem(u"800x600"_s);
    combo.addItem(u"800x600"_s);

    combo.setListIndex(1);
    combo.setListIndex(1);
    EXPECT_EQ(clicks, 2);
    EXPECT_THROW(combo.setListIndex(3), InvalidValueError);
    EXPECT_THROW(combo.setListIndex(-2), InvalidValueError);
    EXPECT_EQ(combo.listIndex(), 1);

    combo.setListIndex(0);
    combo.setText(u"800x600"_s);
    EXPECT_EQ(combo.listIndex(), 1) << "the first equal entry is selected";
    EXPECT_THROW(combo.setText(u"1024x768"_s), InvalidValueError);
    EXPECT_THROW(combo.setText(u"800X600"_s), InvalidValueError);
    EXPECT_EQ(combo.text(), u"800x600"_s);

    combo.setListIndex(-1);
    EXPECT_EQ(combo.text(), QString());
    combo.clear();
    EXPECT_EQ(combo.listCount(), 0);
    EXPECT_THROW(combo.setListIndex(0), InvalidValueError);
}

TEST(ToolkitEvents, TextBoxAndLabelReportChangesOnlyWhenTheTextDiffers)
{
    Container form(u"form"_s);
    TextBox text(u"text"_s, &form);
    Label label(u"label"_s, &form);
    int changes = 0;
    text.change.connect([&] { changes += 1; });
    label.change.connect([&] { changes += 100; });

    text.setText(u"C:\\Games"_s);
    text.setText(u"C:\\Games"_s);
    text.setText(QString());
    label.setCaption(u" Arena found"_s);
    label.setCaption(u" Arena found"_s);
    // Locking a text box or colouring a label is no change of its text.
    text.setLocked(true);
    label.setForeColor(0x0000FF);
    EXPECT_EQ(changes, 102);
    EXPECT_THROW(label.setForeColor(0x1000000), InvalidValueError);
    EXPECT_EQ(label.foreColor(), 0x0000FFu);
}

TEST(ToolkitEvents, InvalidGeometryIsRejectedAndObserversSeeEveryRealChange)
{
    Container form(u"form"_s);
    CheckBox box(u"box"_s, &form);
    std::vector<Property> seen;
    box.changed.connect([&](Property property) { seen.push_back(property); });

    box.setGeometry(120, 240, 2400, 255);
    EXPECT_THROW(box.setWidth(-1), InvalidValueError);
    EXPECT_THROW(box.setHeight(-0.5f), InvalidValueError);
    EXPECT_THROW(box.setGeometry(0, 0, 10, -10), InvalidValueError);

    // A rejected value changes nothing, so no observer hears of it. Negative
    // positions are fine: a widget may stick out of its container.
    box.setLeft(-60);
    box.setLeft(-60);
    box.setValue(1);
    EXPECT_EQ(seen, (std::vector<Property>{Property::Left, Property::Top, Property::Width,
                                           Property::Height, Property::Left, Property::Value}));
}
