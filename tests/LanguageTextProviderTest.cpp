#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/IniLanguageTextProvider.h"
#include "support/TestHost.h"
#include "support/TraceRecorder.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

TEST(IniLanguageTextProvider, LooksUpTheLanguageThenLanguageZeroThenTheBuiltInTexts)
{
    TestHost host;
    host.writeLanguage(0, "053=Folder\n038=Browse\n077=\"  quoted \"\n");
    host.write(u"Data/Languages/1.ini"_s, "[texts]\n053 = Ordner \n");
    host.writeLanguage(-1, "053=Carpeta\nlong=x\n100=" + QByteArray(2000, 'y') + "\n");
    IniLanguageTextProvider provider;
    const QString full = host.path();

    EXPECT_EQ(provider.text(u"1053"_s, full), u"Ordner"_s);
    EXPECT_EQ(provider.text(u"1038"_s, full), u"Browse"_s);
    EXPECT_EQ(provider.text(u"0053"_s, full), u"Folder"_s);
    EXPECT_EQ(provider.text(u"-1053"_s, full), u"Carpeta"_s);
    EXPECT_EQ(provider.text(u"9077"_s, full), u"  quoted "_s);
    EXPECT_EQ(provider.text(u"-1100"_s, full).size(), 2000);
    // The host folder may be written the Windows way.
    EXPECT_EQ(provider.text(u"1053"_s, QDir::toNativeSeparators(full) + u"\\"_s), u"Ordner"_s);
    for (const QString& key : {u"1999"_s, u"053"_s, u"x053"_s, u"-053"_s, u"1-053"_s})
        EXPECT_THROW(provider.text(key, full), TextLookupError) << key.toStdString();

    EXPECT_TRUE(provider.fileExists(full + u"\\DATA\\languages\\0.INI"_s));
    EXPECT_FALSE(provider.fileExists(full + u"\\Data\\Languages"_s));
    EXPECT_FALSE(provider.fileExists(full + u"\\Data\\Languages\\9.ini"_s));
    TraceRecorder traces;
    provider.trace(u"game found"_s, full);
    EXPECT_EQ(traces.messages, QStringList{u"game found"_s});

    // Built-in texts stand in only for languages without a host file.
    const QString bare = host.filePath(u"bare"_s);
    host.write(u"bare/Data/Languages/0.ini"_s, "[Texts]\n053=Folder\n");
    const QString host0 = IniLanguageTextProvider::languageFile(bare, 0);
    EXPECT_EQ(provider.text(u"0053"_s, bare), u"Folder"_s);
    EXPECT_EQ(provider.text(u"1053"_s, bare), u": Ordner oder Programm"_s);
    EXPECT_EQ(provider.text(u"2053"_s, bare), u"Folder"_s);
    EXPECT_EQ(provider.text(u"0038"_s, bare + u"/elsewhere"_s), u"Browse..."_s);

    // A failed lookup names every file it looked in.
    const auto failure = [&](const QString& key) {
        try {
            provider.text(key, bare);
        } catch (const TextLookupError& error) {
            return error.message();
        }
        return QString();
    };
    EXPECT_EQ(failure(u"0038"_s), u"No text for key 0038 in "_s + host0);
    EXPECT_EQ(failure(u"1999"_s), u"No text for key 1999 in %1, %2"_s.arg(
                                      IniLanguageTextProvider::builtInFile(1), host0));
    EXPECT_EQ(failure(u"2038"_s), u"No text for key 2038 in %1, %2"_s.arg(
                                      IniLanguageTextProvider::languageFile(bare, 2), host0));
}

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

TEST(LanguageCaptions, EachLanguageCaptionsTheSevenFixedWidgetsAndAFailingLookupStopsAtItsRow)
{
    TestHost host;
    host.writeLanguage(0, AllTexts);
    host.writeLanguage(1, "053=Ordner\n049=Bearbeiten\n");

    qForms control;
    control.setAppPath(host.path());
    control.setQpGameName(u"Arena"_s);
    EXPECT_EQ(control.widgets().cmdBrowse.caption(), u"038"_s);

    control.setQpLanguageIndex(0);
    EXPECT_EQ(captions(control),
              (QStringList{u"Arenafolder"_s, u"browse"_s, u"mod"_s, u"parameters"_s, u"config"_s,
                           u"edit"_s, u"Arenastatus"_s}));
    control.setQpLanguageIndex(1);
    EXPECT_EQ(control.widgets().lblPath.caption(), u"ArenaOrdner"_s);
    EXPECT_EQ(control.widgets().cmdEdit.caption(), u"Bearbeiten"_s);

    // Neither language 2 nor the host's language 0 has text 026, so row four fails.
    const QStringList before = captions(control);
    host.writeLanguage(2, "053=neu\n038=neu\n055=neu\n");
    host.writeLanguage(0, "");
    EXPECT_THROW(control.setQpLanguageIndex(2), TextLookupError);
    EXPECT_EQ(control.qpLanguageIndex(), 2);
    const QStringList after = captions(control);
    EXPECT_EQ(after.mid(0, 3), (QStringList{u"Arenaneu"_s, u"neu"_s, u"neu"_s}));
    EXPECT_EQ(after.mid(3), before.mid(3));
}
