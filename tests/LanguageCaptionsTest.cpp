#include "control/qForms.h"
#include "platform/Errors.h"

#include "support/TestHost.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

const QByteArray AllTexts = "053=folder\n038=browse\n055=mod\n026=parameters\n050=config\n"
                            "049=edit\n054=status\n";

QStringList captions(const qForms& control)
{
    const auto& w = control.widgets();
    return {w.lblPath.caption(),    w.cmdBrowse.caption(),       w.chkModCheck.caption(),
            w.lblCLP.caption(),     w.lblSelectConfig.caption(), w.cmdEdit.caption(),
            w.frameStatus.caption()};
}

} // namespace

TEST(LanguageCaptions, EachLanguageCaptionsTheSevenFixedWidgetsWithTheGameNameBeforeTwoOfThem)
{
    TestHost host;
    host.writeLanguage(0, AllTexts);
    host.writeLanguage(1, "053=Ordner\n038=Durchsuchen\n055=Mod\n026=Parameter\n050=Konfig\n"
                          "049=Bearbeiten\n054=Status\n");
    host.writeLanguage(-1, "053=minus folder\n");

    qForms control;
    control.setAppPath(host.path());
    control.setQpGameName(QStringLiteral("Arena"));
    EXPECT_EQ(control.widgets().cmdBrowse.caption(), QStringLiteral("038"));

    control.setQpLanguageIndex(0);
    EXPECT_EQ(
        captions(control),
        (QStringList{QStringLiteral("Arenafolder"), QStringLiteral("browse"), QStringLiteral("mod"),
                     QStringLiteral("parameters"), QStringLiteral("config"), QStringLiteral("edit"),
                     QStringLiteral("Arenastatus")}));

    control.setQpLanguageIndex(1);
    EXPECT_EQ(control.widgets().lblPath.caption(), QStringLiteral("ArenaOrdner"));
    EXPECT_EQ(control.widgets().cmdEdit.caption(), QStringLiteral("Bearbeiten"));

    // Language -1 forms the key -1053; texts it lacks come from language 0.
    control.setQpGameName(QString());
    control.setQpLanguageIndex(-1);
    EXPECT_EQ(control.widgets().lblPath.caption(), QStringLiteral("minus folder"));
    EXPECT_EQ(control.widgets().cmdBrowse.caption(), QStringLiteral("browse"));
    EXPECT_EQ(control.widgets().frameStatus.caption(), QStringLiteral("status"));
    EXPECT_EQ(control.qpLanguageIndex(), -1);
}

TEST(LanguageCaptions, AFailingLookupStopsAtItsRowKeepsTheNewIndexAndReachesTheCaller)
{
    TestHost host;
    host.writeLanguage(0, AllTexts);
    host.writeLanguage(2, "053=neu\n038=neu\n055=neu\n");
    qForms control;
    control.setAppPath(host.path());
    control.setQpLanguageIndex(0);
    const QStringList before = captions(control);

    // Neither language 2 nor the host's language 0 has text 026, so row four fails.
    host.writeLanguage(0, "");
    EXPECT_THROW(control.setQpLanguageIndex(2), qf::TextLookupError);
    EXPECT_EQ(control.qpLanguageIndex(), 2);
    const QStringList after = captions(control);
    EXPECT_EQ(after.mid(0, 3),
              (QStringList{QStringLiteral("neu"), QStringLiteral("neu"), QStringLiteral("neu")}));
    EXPECT_EQ(after.mid(3), before.mid(3));
}
