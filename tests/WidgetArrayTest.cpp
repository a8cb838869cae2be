#include "toolkit/WidgetArray.h"
#include "platform/Errors.h"
#include "toolkit/CheckBox.h"
#include "toolkit/Container.h"
#include "toolkit/OptionButton.h"

#include <gtest/gtest.h>

using namespace qf;

namespace {

std::unique_ptr<CheckBox> checkTemplate(Container* form)
{
    auto box = std::make_unique<CheckBox>(QStringLiteral("Check1"), form);
    box->setGeometry(120, 1800, 1215, 495);
    box->setCaption(QStringLiteral("template"));
    box->setVisible(false);
    return box;
}

} // namespace

TEST(WidgetArray, LoadedElementsAreHiddenCopiesOfTheTemplateAndLoadingTwiceFails)
{
    Container form(QStringLiteral("form"));
    WidgetArray<CheckBox> array(checkTemplate(&form));
    array.templateWidget().setValue(1);

    CheckBox& first = array.load(1);
    EXPECT_EQ(first.index(), 1);
    EXPECT_EQ(first.left(), 120);
    EXPECT_EQ(first.height(), 495);
    EXPECT_EQ(first.caption(), QStringLiteral("template"));
    EXPECT_EQ(first.container(), &form);
    EXPECT_FALSE(first.isVisible());

    first.setCaption(QStringLiteral("mine"));
    EXPECT_THROW(array.load(1), ElementExistsError);
    EXPECT_EQ(array.at(1).caption(), QStringLiteral("mine"));
    EXPECT_THROW(array.load(0), InvalidValueError);
    EXPECT_THROW(array.load(32768), InvalidValueError);
    EXPECT_EQ(array.count(), 2);
}

TEST(WidgetArray, AddressingOrUnloadingAMissingElementFailsAndGapsAreAllowed)
{
    Container form(QStringLiteral("form"));
    WidgetArray<CheckBox> array(checkTemplate(&form));
    std::vector<int> loaded, unloading;
    array.loaded.connect([&](int n) { loaded.push_back(n); });
    array.unloading.connect([&](int n) { unloading.push_back(n); });

    array.load(1);
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
    Container form(QStringLiteral("form"));
    WidgetArray<OptionButton> array(
        std::make_unique<OptionButton>(QStringLiteral("Option1"), &form));
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
