// The control against a host folder: language texts, captions and the sample games.
#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/IniLanguageTextProvider.h"
#include "support/TestHost.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

TEST(IniLanguageTextProvider, LooksUpEachTextInTheHostsFileThenTheLibrarysThenInLanguageZero)
{
    TestHost host;
    host.writeLanguage(0, "053=Folder\n038=Browse\n077=\"  quoted \"\n");
    host.write(u"Data/Languages/1.ini"_s, "[texts]\n053 = Ordner \n");
    host.writeLanguage(-1, "053=Carpeta\nlong=x\n100=" + QByteArray(2000, 'y') + "\n");
    IniLanguageTextProvider provider;
    const QString full = host.path();

    const std::pair<QString, QString> texts[] = {
        {u"1053"_s, u"Ordner"_s},   {u"1038"_s, u"Suchen..."_s}, {u"0053"_s, u"Folder"_s},
        {u"-1053"_s, u"Carpeta"_s}, {u"9077"_s, u"  quoted "_s}, {u"-1100"_s, QString(2000, u'y')}};
    for (const auto& [key, text] : texts)
        EXPECT_EQ(provider.text(key, full), text) << key.toStdString();
    // The host folder may be written the Windows way.
    EXPECT_EQ(provider.text(u"1053"_s, full + u"\\"_s), u"Ordner"_s);
    for (const QString& key : {u"1999"_s, u"053"_s, u"x053"_s, u"-053"_s, u"1-053"_s, u"+1053"_s})
        EXPECT_THROW(provider.text(key, full), TextLookupError) << key.toStdString();

    // Text by text: the host's file of the language, the library's texts of
    // it, the host's language 0, the library's; a failure names every file.
    const QString bare = host.filePath(u"bare"_s);
    host.write(u"bare/Data/Languages/0.ini"_s, "[Texts]\n053=Folder\n");
    const QString host0 = IniLanguageTextProvider::languageFile(bare, 0);
    const QString builtIn0 = IniLanguageTextProvider::builtInFile(0);
    EXPECT_EQ(provider.text(u"0053"_s, bare), u"Folder"_s);
    EXPECT_EQ(provider.text(u"0038"_s, bare), u"Browse..."_s);
    EXPECT_EQ(provider.text(u"1053"_s, bare), u": Ordner oder Programm"_s);
    EXPECT_EQ(provider.text(u"2053"_s, bare), u"Folder"_s);
    EXPECT_EQ(provider.text(u"2038"_s, bare + u"/elsewhere"_s), u"Browse..."_s);
    const auto failure = [&](LanguageTextProvider& from, const QString& key) {
        try {
            from.text(key, bare);
        } catch (const TextLookupError& error) {
            return error.message();
        }
        return QString();
    };
    EXPECT_EQ(failure(provider, u"1999"_s),
              u"No text for key 1999 in %1, %2, %3"_s.arg(IniLanguageTextProvider::builtInFile(1),
                                                          host0, builtIn0));
    IniLanguageTextProvider hostOnly(IniLanguageTextProvider::Sources::HostFilesOnly);
    EXPECT_EQ(hostOnly.text(u"0053"_s, bare), u"Folder"_s);
    EXPECT_EQ(failure(hostOnly, u"1038"_s),
              u"No text for key 1038 in %1, %2"_s.arg(
                  IniLanguageTextProvider::languageFile(bare, 1), host0));
}

namespace {

QStringList captions(const qForms& control)
{
    const auto& w = control.widgets();
    return {w.lblPath.caption(),    w.cmdBrowse.caption(),       w.chkModCheck.caption(),
            w.lblCLP.caption(),     w.lblSelectConfig.caption(), w.cmdEdit.caption(),
            w.frameStatus.caption()};
}

struct Recorder : qf::SkipObserver {
    void stepSkipped(const qf::SkippedStep&) override { ++steps; }
    int steps = 0;
};

QString place(const qf::Widget& w)
{
    return QString::asprintf("%g,%g,%g,%g,%d", w.left(), w.top(), w.width(), w.height(),
                             int(w.isVisible()));
}

// Everything a player and the settings file see of one sample game after a
// build, a load, a click on every check box and a save.
// The game is its data file, name and version type.
QStringList runSampleGame(const QStringList& game, std::shared_ptr<qf::SkipObserver> observer)
{
    QTemporaryDir config;
    qForms control;
    control.setSettingsStore(std::make_shared<qf::IniFileSettingsStore>(config.path()));
    control.setAppPath(QFORMS_SOURCE_DIR u"/data/host"_s);
    control.setQpGameName(game[1]);
    control.setQpQGD(game[0]);
    control.setQpGameApplication(u"game.exe"_s);
    control.setQpVersionType(game[2]);
    control.setQpUseConfigs(true);
    control.setQpUseModSelection(true);
    control.setQpLanguageIndex(1);
    if (observer)
        control.setSkipObserver(observer);
    control.qInitCustomControls();
    control.qLoadSettings();
    auto& w = control.widgets();
    w.txtPath.setText(QFORMS_SOURCE_DIR u"/data"_s);
    for (int i = 1; i <= w.Check1.upperBound(); ++i)
        if (w.Check1.exists(i))
            w.Check1.at(i).setValue(w.Check1.at(i).value() == 1 ? 0 : 1);
    control.qSaveSettings();

    QStringList seen{control.qpGameStatus(), control.qpGameStatusColour()};
    w.Check1.forEach([&](const qf::CheckBox& b) {
        seen << place(b) + b.caption() + QString::number(b.value()) + b.tag();
    });
    w.Option1.forEach([&](const qf::OptionButton& b) {
        seen << place(b) + b.caption() + QString::number(b.value());
    });
    w.Combo1.forEach([&](const qf::ComboBox& c) { seen << place(c) + c.text(); });
    w.Text1.forEach([&](const qf::TextBox& t) { seen << place(t) + t.text(); });
    w.Label1.forEach([&](const qf::Label& l) { seen << place(l) + l.caption(); });
    w.Frame1.forEach([&](const qf::Frame& f) { seen << place(f) + f.caption(); });
    QFile saved(config.filePath(u"Quillmarsh 2.ini"_s));
    EXPECT_TRUE(saved.open(QIODevice::ReadOnly));
    seen << QString::fromUtf8(saved.readAll());
    return seen;
}

} // namespace

TEST(LanguageCaptions, EachLanguageCaptionsTheSevenFixedWidgetsAndAFailingLookupStopsAtItsRow)
{
    TestHost host;
    host.writeLanguage(0, "053=folder\n038=browse\n055=mod\n026=parameters\n050=config\n"
                          "049=edit\n054=status\n");
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

    // Neither language 2 nor the host's language 0 has text 026, so row four
    // fails for a host that brings every text itself.
    control.setLanguageTextProvider(
        std::make_shared<IniLanguageTextProvider>(IniLanguageTextProvider::Sources::HostFilesOnly));
    const QStringList before = captions(control);
    host.writeLanguage(2, "053=neu\n038=neu\n055=neu\n");
    host.writeLanguage(0, "");
    EXPECT_THROW(control.setQpLanguageIndex(2), TextLookupError);
    EXPECT_EQ(control.qpLanguageIndex(), 2);
    const QStringList after = captions(control);
    EXPECT_EQ(after.mid(0, 3), (QStringList{u"Arenaneu"_s, u"neu"_s, u"neu"_s}));
    EXPECT_EQ(after.mid(3), before.mid(3));
}

TEST(SkipObserver, WatchingTheRoutinesChangesNothingTheyDo)
{
    const QStringList games[] = {{u"emberfall.qgd"_s, u"Emberfall"_s, u"2"_s},
                                 {u"stonewake.qgd"_s, u"Stonewake"_s, u"1"_s},
                                 {u"hollowreach.qgd"_s, u"Hollow Reach"_s, u"0"_s}};
    int reported = 0;
    for (const QStringList& g : games) {
        const auto recorder = std::make_shared<Recorder>();
        EXPECT_EQ(runSampleGame(g, nullptr), runSampleGame(g, recorder)) << g[0].toStdString();
        reported += recorder->steps;
    }
    EXPECT_GT(reported, 0) << "the observer was told nothing, so the test compared nothing";
}
