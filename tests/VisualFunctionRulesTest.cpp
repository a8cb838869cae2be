#include "platform/Errors.h"
#include "support/HostedControl.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Builds check boxes, option buttons and combos whose rules the tests give.
class VisualFunctionRulesTest : public HostedControl {
protected:
    // checks[i] is the VisualFunction of check box i + 1, options likewise.
    void rules(const std::vector<QByteArray>& checks, const std::vector<QByteArray>& options = {},
               int combos = 1)
    {
        QByteArray lines;
        int entry = 0;
        const auto add = [&](const QByteArray& type, const QByteArray& rule) {
            const QByteArray key = "Control" + QByteArray::number(++entry);
            lines += key + "Type=" + type + "\n" + key + "VisualFunction=" + rule + "\n";
        };
        for (const QByteArray& rule : checks)
            add("checkbox", rule);
        for (const QByteArray& rule : options)
            add("option button", rule);
        for (int i = 0; i < combos; ++i)
            add("combo", "");
        build("Count=" + QByteArray::number(entry) + "\n" + lines);
    }

    qf::CheckBox& check(int n) { return w.Check1.at(n); }
    qf::OptionButton& option(int n) { return w.Option1.at(n); }
};

} // namespace

TEST_F(VisualFunctionRulesTest, ValueKeywordsActOnlyInTheirDirectionAndNeverUndoThemselves)
{
    rules({"option2;;ifonthenoff", "checkbox3;;ifoffthenon", "", "checkbox3;;ifonthenon",
           "Option1;;IfOffThenOff"},
          {"", ""});
    option(2).setValue(true);
    check(1).setValue(1);
    EXPECT_FALSE(option(2).value());
    option(2).setValue(true);
    check(1).setValue(0);
    EXPECT_TRUE(option(2).value()) << "unticking does nothing";

    check(2).setValue(1);
    EXPECT_EQ(check(3).value(), 0) << "ticking a box whose rule wants off does nothing";
    check(2).setValue(0);
    EXPECT_EQ(check(3).value(), 1);

    check(3).setValue(0);
    check(4).setValue(1);
    EXPECT_EQ(check(3).value(), 1);

    // Upper case in the file does not matter: the rule is kept lower-cased.
    option(1).setValue(true);
    check(5).setValue(1);
    check(5).setValue(0);
    EXPECT_FALSE(option(1).value());
}

TEST_F(VisualFunctionRulesTest, TheWholeDigitRunIsTheIndexAndCombosTakeOnlyEnableAndDisable)
{
    std::vector<QByteArray> checks(12, "");
    checks[0] = "checkbox12;;ifonthendisable";
    checks[1] = "combo1;;ifonthendisable";
    checks[2] = "combo1;;ifonthenoff";
    checks[3] = "combo1;;ifoffthenenable";
    checks[4] = "combo1;;ifoffthenon";
    checks[5] = "combo1;;ifonthenon";
    checks[6] = "combo1;;ifoffthenoff";
    rules(checks, {"checkbox1;;ifonthenenable"});

    check(1).setValue(1);
    EXPECT_FALSE(check(12).isEnabled());
    EXPECT_TRUE(check(1).isEnabled());

    check(2).setValue(1);
    EXPECT_FALSE(w.Combo1.at(1).isEnabled());
    check(2).setValue(0);
    EXPECT_FALSE(w.Combo1.at(1).isEnabled()) << "a rule never reverses itself";
    check(4).setValue(1);
    check(4).setValue(0);
    EXPECT_TRUE(w.Combo1.at(1).isEnabled());
    // Value keywords do nothing to a combo.
    for (int box : {3, 5, 6, 7}) {
        for (bool enabled : {false, true}) {
            w.Combo1.at(1).setEnabled(enabled);
            check(box).setValue(1);
            check(box).setValue(0);
            EXPECT_EQ(w.Combo1.at(1).isEnabled(), enabled) << box;
        }
    }

    check(1).setEnabled(false);
    option(1).setValue(true);
    EXPECT_TRUE(check(1).isEnabled());
}

TEST_F(VisualFunctionRulesTest, RulesChainThroughTheValuesTheyChangeAndStopWhereNothingChanges)
{
    rules({"checkbox2;;ifonthenon", "checkbox3;;ifonthenon", "combo1;;ifonthendisable",
           "checkbox1;;ifonthenon", "checkbox3;;ifonthenon"},
          {"checkbox4;;ifonthenon"});
    int thirdClicks = 0;
    w.Check1.click.connect([&](int index) { thirdClicks += index == 3; });

    check(1).setValue(1);
    EXPECT_EQ(check(2).value(), 1);
    EXPECT_EQ(check(3).value(), 1);
    EXPECT_FALSE(w.Combo1.at(1).isEnabled());
    EXPECT_EQ(thirdClicks, 1);

    // Box 5 sets box 3, which is on already: its rule does not run again.
    w.Combo1.at(1).setEnabled(true);
    check(5).setValue(1);
    EXPECT_EQ(thirdClicks, 1);
    EXPECT_TRUE(w.Combo1.at(1).isEnabled());

    // An option button's rule starts a chain as well: 4 sets 1, which is on.
    check(1).setValue(0);
    option(1).setValue(true);
    EXPECT_EQ(check(4).value(), 1);
    EXPECT_EQ(check(1).value(), 1);
}

TEST_F(VisualFunctionRulesTest, GreyedBoxesAndMalformedRulesDoNothing)
{
    rules({"combo1;;ifonthendisable", "combo1;;ifoffthendisable", "combo1;;ifonthendisable;;",
           "combo1;;ifonthendisable;;combo1;;ifonthenenable", "combo1ifonthendisable",
           "comboone;;ifonthendisable", "combo9;;ifonthendisable", "button1;;ifonthendisable",
           "combo;;ifonthendisable", "checkbox0;;ifonthenon"});
    check(2).setValue(1);
    check(1).setValue(2);
    check(2).setValue(2);
    EXPECT_TRUE(w.Combo1.at(1).isEnabled()) << "a greyed box is neither on nor off";
    for (int n = 3; n <= 9; ++n) {
        EXPECT_NO_THROW(check(n).setValue(1)) << n;
        EXPECT_TRUE(w.Combo1.at(1).isEnabled()) << n;
    }
    // Index 0 is the hidden template.
    check(10).setValue(1);
    EXPECT_EQ(w.Check1.templateWidget().value(), 1);
    EXPECT_FALSE(w.Check1.templateWidget().isVisible());
}

TEST_F(VisualFunctionRulesTest, OptionButtonsThatSelectEachOtherEndWithAnErrorInsteadOfACrash)
{
    rules({}, {"option2;;ifonthenon", "option1;;ifonthenon"}, 0);
    EXPECT_THROW(option(1).setValue(true), qf::Error);
    // The control stays usable afterwards.
    rules({"combo1;;ifonthendisable"}, {}, 1);
    check(1).setValue(1);
    EXPECT_FALSE(w.Combo1.at(1).isEnabled());
}
