#include "control/qForms.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

namespace {

class CustomControlBuilderTest : public ::testing::Test {
protected:
    CustomControlBuilderTest()
    {
        // The fixed widgets' texts come from language 0; text 053 exists in both.
        host.writeLanguage(0, "053=Sound on\n038=b\n055=m\n026=p\n050=c\n049=e\n054=s\n");
        host.writeLanguage(1, "053=Ton an\n");
        control.setAppPath(host.path());
        control.setQpQGD(QStringLiteral("game.qgd"));
    }

    void build(const QByteArray& lines)
    {
        host.writeCustomControls(QStringLiteral("game.qgd"), lines);
        control.qInitCustomControls();
    }

    TestHost host;
    qForms control;
    qf::ControlWidgets& w = control.widgets();
};

} // namespace

TEST_F(CustomControlBuilderTest, TheDocumentedExampleBuildsExactlyItsFiveWidgets)
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

    const qf::CheckBox& box = w.Check1.at(1);
    EXPECT_EQ(box.left(), 120);
    EXPECT_EQ(box.top(), 240);
    EXPECT_EQ(box.width(), 2400);
    EXPECT_EQ(box.height(), 255);
    EXPECT_EQ(box.caption(), QStringLiteral("Ton an"));
    EXPECT_EQ(box.tag(), QStringLiteral("option2;;ifonthenoff"));
    EXPECT_TRUE(box.isVisible());

    EXPECT_EQ(w.Option1.at(1).caption(), QStringLiteral("low detail"));
    EXPECT_EQ(w.Option1.at(2).caption(), QStringLiteral("high detail"));
    EXPECT_EQ(w.Option1.at(2).left(), 2040);
    EXPECT_FALSE(w.Option1.at(1).value());

    const qf::ComboBox& combo = w.Combo1.at(1);
    EXPECT_EQ(combo.items(), (QStringList{QStringLiteral("640x480"), QStringLiteral("800x600")}));
    EXPECT_EQ(combo.text(), QStringLiteral("800x600"));
    EXPECT_EQ(combo.width(), 2400);
    EXPECT_EQ(combo.height(), 315) << "a combo keeps the template's height";

    const qf::Line& line = w.Line1.at(1);
    EXPECT_EQ(line.x1(), 120);
    EXPECT_EQ(line.x2(), 6600);
    EXPECT_EQ(line.y1(), 1440);
    EXPECT_EQ(line.y2(), 1440);
    EXPECT_EQ(line.borderWidth(), 2);
    EXPECT_TRUE(line.isVisible());

    EXPECT_FALSE(w.Check1.templateWidget().isVisible());
    EXPECT_EQ(w.Check1.templateWidget().left(), 120);
    EXPECT_EQ(w.Check1.templateWidget().top(), 1800);
}

TEST_F(CustomControlBuilderTest, EachKindCountsItsOwnEntriesAndUnknownKindsCreateNothing)
{
    build("Count=6\n"
          "Control1Type=checkbox\nControl1Caption=First\n"
          "Control2Type=label\nControl2Caption=Heading\n"
          "Control3Type=button\n"
          "Control4Type=CHECKBOX\nControl4Caption=Second\n"
          "Control5Type=line\nControl5Y-Location=100x500\nControl5X-Location=100X500\n"
          "Control6Type=check box\n");

    EXPECT_EQ(w.Check1.count(), 3);
    EXPECT_EQ(w.Check1.at(1).caption(), QStringLiteral("first"));
    EXPECT_EQ(w.Check1.at(2).caption(), QStringLiteral("second"));
    EXPECT_EQ(w.Label1.at(1).caption(), QStringLiteral("heading"));
    const qf::Line& line = w.Line1.at(1);
    EXPECT_EQ(line.x1(), 100);
    EXPECT_EQ(line.x2(), 500);
    EXPECT_EQ(line.y1(), 500) << "Y-Location names the second end first";
    EXPECT_EQ(line.y2(), 100);
    EXPECT_EQ(line.borderWidth(), 1);
    // Without a location the first check box stays where the template is.
    EXPECT_EQ(w.Check1.at(1).left(), 120);
    EXPECT_EQ(w.Check1.at(1).top(), 1800);
}

TEST_F(CustomControlBuilderTest, CountDecidesHowManyEntriesAreReadAndBadCountsBuildNothing)
{
    build("Count=3\nControl1Type=label\nControl3Type=label\nControl4Type=label\n");
    EXPECT_EQ(w.Label1.count(), 3) << "entry 2 has no type and entry 4 is past Count";

    for (const char* count : {"0", "-2", "abc", "", "32768", "1e9"}) {
        qForms fresh;
        fresh.setAppPath(host.path());
        fresh.setQpQGD(QStringLiteral("other.qgd"));
        host.writeCustomControls(QStringLiteral("other.qgd"),
                                 QByteArray("Count=") + count + "\nControl1Type=label\n");
        fresh.qInitCustomControls();
        EXPECT_EQ(fresh.widgets().Label1.count(), 1) << count;
    }

    qForms missing;
    missing.setAppPath(host.path());
    missing.setQpQGD(QStringLiteral("missing.qgd"));
    missing.qInitCustomControls();
    missing.setQpQGD(QString());
    missing.qInitCustomControls();
    EXPECT_EQ(missing.widgets().Label1.count(), 1);

    // A fraction rounds half to even: 2.5 reads two entries.
    build("Count=2.5\nControl1Type=text\nControl2Type=text\nControl3Type=text\n");
    EXPECT_EQ(w.Text1.count(), 3);
}

TEST_F(CustomControlBuilderTest, CheckBoxesAreShownUnlessVisibleSaysOtherwiseOrIsNoBoolean)
{
    build("Count=6\n"
          "Control1Type=checkbox\nControl1Visible=False\n"
          "Control2Type=checkbox\n"
          "Control3Type=checkbox\nControl3Visible=\n"
          "Control4Type=checkbox\nControl4Visible=0\n"
          "Control5Type=checkbox\nControl5Visible=yes\n"
          "Control6Type=checkbox\nControl6Visible=-1\n");
    const bool expected[] = {false, true, false, false, false, true};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(w.Check1.at(i + 1).isVisible(), expected[i]) << "entry " << i + 1;
}

TEST_F(CustomControlBuilderTest, MalformedValuesLeaveOnlyTheirOwnPropertyUnchanged)
{
    build("Count=4\n"
          "Control1Type=label\nControl1Location=100x200\nControl1Size=300x-5\n"
          "Control2Type=label\nControl2Location=700\nControl2Size=abcx900\n"
          "Control3Type=text\nControl3Location=x\nControl3Caption=ABC\nControl3Locked=1\n"
          "Control4Type=line\nControl4Width=0\nControl4X-Location=1x2x3\n");

    const qf::Label& first = w.Label1.at(1);
    EXPECT_EQ(first.left(), 100);
    EXPECT_EQ(first.top(), 200);
    EXPECT_EQ(first.height(), 300);
    EXPECT_EQ(first.width(), 1215) << "a negative width is rejected";

    // A pair without "x" has no first number: the left edge is not taken from
    // the entry before.
    const qf::Label& second = w.Label1.at(2);
    EXPECT_EQ(second.left(), 5400);
    EXPECT_EQ(second.top(), 700);
    EXPECT_EQ(second.width(), 900);
    EXPECT_EQ(second.height(), 375);

    const qf::TextBox& text = w.Text1.at(1);
    EXPECT_EQ(text.text(), QStringLiteral("abc"));
    EXPECT_TRUE(text.isLocked());
    EXPECT_EQ(text.left(), 2760);

    const qf::Line& line = w.Line1.at(1);
    EXPECT_EQ(line.borderWidth(), 1);
    EXPECT_EQ(line.x1(), 1);
    EXPECT_EQ(line.x2(), 5280) << "\"2x3\" is no number";
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
    EXPECT_EQ(w.Label1.at(1).caption(), QStringLiteral("Ton an"));
    EXPECT_EQ(w.Frame1.at(1).caption(), QStringLiteral("05"));
    EXPECT_EQ(w.Option1.at(1).caption(), QStringLiteral("enable sound"));
    EXPECT_EQ(w.Text1.at(1).text(), QStringLiteral("Ton an"));
    EXPECT_EQ(w.Label1.at(2).caption(), QString())
        << "a failed lookup leaves the caption as it was";
    EXPECT_TRUE(w.Label1.at(2).isVisible());
}

TEST_F(CustomControlBuilderTest, ItemListsFillCombosAndSelectOnlyListedEntries)
{
    build("Count=5\n"
          "Control1Type=combo\nControl1Caption=low;;high;;(high);;\n"
          "Control2Type=combo\nControl2Caption=low;;high\n"
          "Control3Type=combo\nControl3Caption=low;;(ultra);;\n"
          "Control4Type=combo\nControl4Caption=;;Small;;(small);;\n"
          "Control5Type=combo\n");
    EXPECT_EQ(w.Combo1.at(1).items(), (QStringList{QStringLiteral("low"), QStringLiteral("high")}));
    EXPECT_EQ(w.Combo1.at(1).text(), QStringLiteral("high"));
    EXPECT_EQ(w.Combo1.at(2).items(), QStringList{QStringLiteral("low")});
    EXPECT_EQ(w.Combo1.at(2).listIndex(), -1);
    EXPECT_EQ(w.Combo1.at(3).items(), QStringList{QStringLiteral("low")});
    EXPECT_EQ(w.Combo1.at(3).listIndex(), -1) << "a selection that is not listed is skipped";
    EXPECT_EQ(w.Combo1.at(4).items(), (QStringList{QString(), QStringLiteral("small")}));
    EXPECT_EQ(w.Combo1.at(4).listIndex(), 1);
    EXPECT_EQ(w.Combo1.at(5).listCount(), 0);
}

TEST_F(CustomControlBuilderTest, ASecondBuildReusesTheElementsAndAppendsToComboLists)
{
    const QByteArray lines = "Count=2\nControl1Type=combo\nControl1Caption=a;;b;;\n"
                             "Control2Type=checkbox\nControl2Caption=one\n";
    build(lines);
    host.writeCustomControls(QStringLiteral("game.qgd"),
                             "Count=2\nControl1Type=combo\nControl1Caption=a;;b;;\n"
                             "Control2Type=checkbox\nControl2Caption=two\n");
    control.qInitCustomControls();
    EXPECT_EQ(w.Combo1.count(), 2);
    EXPECT_EQ(w.Check1.count(), 2);
    EXPECT_EQ(w.Combo1.at(1).listCount(), 4);
    EXPECT_EQ(w.Check1.at(1).caption(), QStringLiteral("two"));
}

TEST_F(CustomControlBuilderTest, ClearForgetsTheGameUnloadsEveryDynamicWidgetAndAllowsAFreshBuild)
{
    control.setQpGameName(QStringLiteral("Arena"));
    control.setQpGameApplication(QStringLiteral("arena.exe"));
    control.setQpGamePath(QStringLiteral("/games/arena"));
    control.setQpGameBase(QStringLiteral("base"));
    control.setQpVersionType(QStringLiteral("1"));
    control.qClear();
    EXPECT_EQ(control.qpGameName(), QString());
    EXPECT_EQ(control.qpVersionType(), QString());
    EXPECT_EQ(control.qpGameApplication(), QStringLiteral("arena.exe"));
    EXPECT_EQ(control.AppPath(), host.path());

    control.setQpQGD(QStringLiteral("game.qgd"));
    const QByteArray lines =
        "Count=7\nControl1Type=checkbox\nControl2Type=checkbox\nControl3Type=combo\n"
        "Control4Type=line\nControl5Type=label\nControl6Type=frame\n"
        "Control7Type=text\n";
    build(lines);
    w.txtPath.setText(QStringLiteral("/games/arena"));
    control.qClear();
    for (int count : {w.Check1.count(), w.Option1.count(), w.Combo1.count(), w.Line1.count(),
                      w.Label1.count(), w.Frame1.count(), w.Text1.count()})
        EXPECT_EQ(count, 1);
    EXPECT_EQ(control.qpQGD(), QString());
    EXPECT_EQ(w.txtPath.text(), QStringLiteral("/games/arena")) << "no widget is touched";

    // Without a game data file nothing is built; with one the build starts at 1.
    control.qInitCustomControls();
    EXPECT_EQ(w.Check1.count(), 1);
    control.setQpQGD(QStringLiteral("game.qgd"));
    control.qInitCustomControls();
    EXPECT_EQ(w.Check1.count(), 3);
    EXPECT_TRUE(w.Check1.at(2).isVisible());
}
