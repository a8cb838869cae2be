#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

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
