#include "platform/Errors.h"
#include "support/HostedControl.h"

#include <QLineF>
#include <QRectF>

using namespace Qt::Literals::StringLiterals;

namespace {

class CustomControlBuilderTest : public HostedControl {
protected:
    CustomControlBuilderTest()
    {
        // The fixed widgets' texts come from language 0; text 053 exists in both.
        host.writeLanguage(0, "053=Sound on\n038=b\n055=m\n026=p\n050=c\n049=e\n054=s\n");
        host.writeLanguage(1, "053=Ton an\n");
    }
};

QRectF box(const qf::Widget& w)
{
    return {w.left(), w.top(), w.width(), w.height()};
}

QLineF ends(const qf::Line& line)
{
    return {line.x1(), line.y1(), line.x2(), line.y2()};
}

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

TEST_F(CustomControlBuilderTest, TheDocumentedExampleBuildsExactlyItsFiveWidgetsAndShowsThem)
{
    control.setQpLanguageIndex(1);
    build("Count=5\n"
          "Control1Type=CheckBox\nControl1Location=120x240\nControl1Size=255x2400\n"
          "Control1Caption=053\nControl1VisualFunction=option2;;ifonthenoff\nControl1Index=1\n"
          "Control2Type=option button\nControl2Location=120x600\nControl2Size=255x1800\n"
          "Control2Caption=Low detail\nControl2Index=1\n"
          "Control3Type=option button\nControl3Location=2040x600\nControl3Size=255x1800\n"
          "Control3Caption=High detail\nControl3Index=2\n"
          "Control4Type=combo\nControl4Location=120x960\nControl4Size=315x2400\n"
          "Control4Caption=640x480;;800x600;;(800x600);;\nControl4Index=1\n"
          "Control5Type=line\nControl5X-Location=120x6600\nControl5Y-Location=1440x1440\n"
          "Control5Width=2\n");

    EXPECT_EQ(w.Check1.count(), 2);
    EXPECT_EQ(w.Option1.count(), 3);
    EXPECT_EQ(w.Combo1.count(), 2);
    EXPECT_EQ(w.Line1.count(), 2);
    EXPECT_EQ(w.Label1.count() + w.Frame1.count() + w.Text1.count(), 3);
    for (const qf::Widget* built : std::initializer_list<const qf::Widget*>{
             &w.Check1.at(1), &w.Option1.at(1), &w.Option1.at(2), &w.Combo1.at(1), &w.Line1.at(1)})
        EXPECT_TRUE(built->isVisible()) << built->name() << built->index();
    EXPECT_FALSE(w.Check1.templateWidget().isVisible());

    EXPECT_EQ(box(w.Check1.at(1)), QRectF(120, 240, 2400, 255));
    EXPECT_EQ(w.Check1.at(1).caption(), u"Ton an"_s);
    EXPECT_EQ(w.Check1.at(1).tag(), u"option2;;ifonthenoff"_s);
    EXPECT_EQ(w.Option1.at(1).caption(), u"low detail"_s);
    EXPECT_EQ(box(w.Option1.at(2)), QRectF(2040, 600, 1800, 255));
    EXPECT_FALSE(w.Option1.at(1).value());

    const qf::ComboBox& combo = w.Combo1.at(1);
    EXPECT_EQ(combo.items(), (QStringList{u"640x480"_s, u"800x600"_s}));
    EXPECT_EQ(combo.text(), u"800x600"_s);
    EXPECT_EQ(box(combo), QRectF(120, 960, 2400, 315)) << "a combo keeps the template's height";
    EXPECT_EQ(ends(w.Line1.at(1)), QLineF(120, 1440, 6600, 1440));
    EXPECT_EQ(w.Line1.at(1).borderWidth(), 2);
}

TEST_F(CustomControlBuilderTest,
       EachKindCountsItsOwnEntriesUnknownKindsCreateNothingAndVisibleHidesBoxes)
{
    build("Count=8\n"
          "Control1Type=checkbox\nControl1Caption=First\n"
          "Control2Type=label\nControl2Caption=Heading\n"
          "Control3Type=button\n"
          "Control4Type=CHECKBOX\nControl4Caption=Second\n"
          "Control5Type=line\nControl5Y-Location=100x500\nControl5X-Location=100X500\n"
          "Control6Type=check box\nControl7Type=frame\nControl8Type=text\n");

    EXPECT_EQ(w.Check1.count(), 3);
    EXPECT_EQ(w.Check1.at(2).caption(), u"second"_s);
    EXPECT_EQ(w.Label1.at(1).caption(), u"heading"_s);
    EXPECT_TRUE(w.Label1.at(1).isVisible() && w.Frame1.at(1).isVisible() &&
                w.Text1.at(1).isVisible());
    EXPECT_EQ(ends(w.Line1.at(1)), QLineF(100, 500, 500, 100))
        << "Y-Location names the second end first";
    // Without a location the first check box stays where the template is.
    EXPECT_EQ(box(w.Check1.at(1)), box(w.Check1.templateWidget()));

    // Check boxes are shown unless Visible says otherwise or is no boolean.
    build(
        "Count=6\n"
        "Control1Type=checkbox\nControl1Visible=False\nControl2Type=checkbox\n"
        "Control3Type=checkbox\nControl3Visible=\nControl4Type=checkbox\nControl4Visible=0\n"
        "Control5Type=checkbox\nControl5Visible=yes\nControl6Type=checkbox\nControl6Visible=-1\n");
    const bool shown[] = {false, true, false, false, false, true};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(w.Check1.at(i + 1).isVisible(), shown[i]) << "entry " << i + 1;
}

TEST_F(CustomControlBuilderTest, CountDecidesHowManyEntriesAreReadAndBadCountsBuildNothing)
{
    build("Count=3\nControl1Type=label\nControl3Type=label\nControl4Type=label\n");
    EXPECT_EQ(w.Label1.count(), 3) << "entry 2 has no type and entry 4 is past Count";
    // A fraction rounds half to even: 2.5 reads two entries.
    build("Count=2.5\nControl1Type=text\nControl2Type=text\nControl3Type=text\n");
    EXPECT_EQ(w.Text1.count(), 3);

    for (const char* count : {"0", "-2", "abc", "", "32768", "1e9"}) {
        qForms fresh;
        fresh.setAppPath(host.path());
        fresh.setQpQGD(u"other.qgd"_s);
        host.writeCustomControls(u"other.qgd"_s,
                                 QByteArray("Count=") + count + "\nControl1Type=label\n");
        fresh.qInitCustomControls();
        EXPECT_EQ(fresh.widgets().Label1.count(), 1) << count;
    }
    qForms missing;
    missing.setAppPath(host.path());
    missing.setQpQGD(u"missing.qgd"_s);
    missing.qInitCustomControls();
    missing.setQpQGD(QString());
    missing.qInitCustomControls();
    EXPECT_EQ(missing.widgets().Label1.count(), 1);
}

TEST_F(CustomControlBuilderTest, MalformedValuesLeaveOnlyTheirOwnPropertyUnchanged)
{
    build("Count=4\n"
          "Control1Type=label\nControl1Location=100x200\nControl1Size=300x-5\n"
          "Control2Type=label\nControl2Location=700\nControl2Size=abcx900\n"
          "Control3Type=text\nControl3Location=x\nControl3Caption=ABC\nControl3Locked=1\n"
          "Control4Type=line\nControl4Width=0\nControl4X-Location=1x2x3\n");

    EXPECT_EQ(box(w.Label1.at(1)), QRectF(100, 200, 1215, 300)) << "a negative width is rejected";
    // A pair without "x" has no first number: the left edge is not taken from
    // the entry before.
    EXPECT_EQ(box(w.Label1.at(2)), QRectF(5400, 700, 900, 375));
    EXPECT_EQ(w.Text1.at(1).text(), u"abc"_s);
    EXPECT_TRUE(w.Text1.at(1).isLocked());
    EXPECT_EQ(w.Text1.at(1).left(), 2760);
    EXPECT_EQ(w.Line1.at(1).borderWidth(), 1);
    EXPECT_EQ(w.Line1.at(1).x1(), 1);
    EXPECT_EQ(w.Line1.at(1).x2(), 5280) << "\"2x3\" is no number";
}

TEST_F(CustomControlBuilderTest, CaptionsNameLanguageTextsOnlyWithThreeCharacterNumbers)
{
    control.setQpLanguageIndex(1);
    build("Count=5\n"
          "Control1Type=label\nControl1Caption=053\n"
          "Control2Type=frame\nControl2Caption=05\n"
          "Control3Type=option button\nControl3Caption=Enable Sound\n"
          "Control4Type=text\nControl4Caption=053\n"
          "Control5Type=label\nControl5Caption=999\n");
    EXPECT_EQ(w.Label1.at(1).caption(), u"Ton an"_s);
    EXPECT_EQ(w.Frame1.at(1).caption(), u"05"_s);
    EXPECT_EQ(w.Option1.at(1).caption(), u"enable sound"_s);
    EXPECT_EQ(w.Text1.at(1).text(), u"Ton an"_s);
    EXPECT_EQ(w.Label1.at(2).caption(), QString()) << "a failed lookup leaves the caption";
    EXPECT_TRUE(w.Label1.at(2).isVisible());
}

TEST_F(CustomControlBuilderTest, ItemListsFillCombosSelectOnlyListedEntriesAndAppendOnRebuild)
{
    const QByteArray entries = "Count=6\n"
                               "Control1Type=combo\nControl1Caption=low;;high;;(high);;\n"
                               "Control2Type=combo\nControl2Caption=low;;high\n"
                               "Control3Type=combo\nControl3Caption=low;;(ultra);;\n"
                               "Control4Type=combo\nControl4Caption=;;Small;;(small);;\n"
                               "Control5Type=combo\nControl6Type=checkbox\n";
    build(entries);
    const qf::WidgetArray<qf::ComboBox>& c = w.Combo1;
    EXPECT_EQ(c.at(1).items(), (QStringList{u"low"_s, u"high"_s}));
    EXPECT_EQ(c.at(1).text(), u"high"_s);
    EXPECT_EQ(c.at(2).items(), QStringList{u"low"_s});
    EXPECT_EQ(c.at(2).listIndex(), -1);
    EXPECT_EQ(c.at(3).listIndex(), -1) << "a selection that is not listed is skipped";
    EXPECT_EQ(c.at(4).items(), (QStringList{QString(), u"small"_s}));
    EXPECT_EQ(c.at(4).listIndex(), 1);
    EXPECT_EQ(c.at(5).listCount(), 0);

    // A second build reuses the elements: lists grow, captions are replaced.
    build(QByteArray(entries).replace("checkbox", "checkbox\nControl6Caption=two"));
    EXPECT_EQ(c.count(), 6);
    EXPECT_EQ(w.Check1.count(), 2);
    EXPECT_EQ(c.at(1).listCount(), 4);
    EXPECT_EQ(w.Check1.at(1).caption(), u"two"_s);
}

TEST_F(CustomControlBuilderTest, ClearForgetsTheGameUnloadsEveryDynamicWidgetAndAllowsAFreshBuild)
{
    control.setQpGameApplication(u"arena.exe"_s);
    control.setQpVersionType(u"1"_s);
    build("Count=7\nControl1Type=checkbox\nControl2Type=checkbox\nControl3Type=combo\n"
          "Control4Type=line\nControl5Type=label\nControl6Type=frame\nControl7Type=text\n");
    w.txtPath.setText(u"/games/arena"_s);
    control.qClear();
    EXPECT_EQ(control.qpGameName(), QString());
    EXPECT_EQ(control.qpVersionType(), QString());
    EXPECT_EQ(control.qpQGD(), QString());
    EXPECT_EQ(control.qpGameApplication(), u"arena.exe"_s);
    EXPECT_EQ(control.AppPath(), host.path());
    for (int count : {w.Check1.count(), w.Option1.count(), w.Combo1.count(), w.Line1.count(),
                      w.Label1.count(), w.Frame1.count(), w.Text1.count()})
        EXPECT_EQ(count, 1);
    EXPECT_EQ(w.txtPath.text(), u"/games/arena"_s) << "no widget is touched";

    // Without a game data file nothing is built; with one the build starts at 1.
    control.qInitCustomControls();
    EXPECT_EQ(w.Check1.count(), 1);
    control.setQpQGD(u"game.qgd"_s);
    control.qInitCustomControls();
    EXPECT_EQ(w.Check1.count(), 3);
}

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
