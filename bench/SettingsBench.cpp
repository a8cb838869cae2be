// qSaveSettings and qLoadSettings for a game of 5000 valued widgets (check
// boxes, option buttons, combos and text boxes in turn), with the settings file
// in a temporary folder. file_writes counts the writes of the settings file per
// call: one, whatever the number of values. For scale, the same number of
// values written and read by a plain QSettings loop over an INI file.

#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int Entries = 5000;

QByteArray entry(int i)
{
    const QByteArray key = "Control" + QByteArray::number(i);
    // The n-th entry of a kind becomes element n of its array.
    const QByteArray n = QByteArray::number((i + 3) / 4);
    const QByteArray common = key + "Index=" + n + "\n" + key + "ControlKey=Value " +
                              QByteArray::number(i) + "\n" + key + "Location=120x" +
                              QByteArray::number(240 + i % 3000) + "\n";
    switch (i % 4) {
    case 0:
        return common + key + "Type=checkbox\n" + key + "ControlDefaultValue=1\n";
    case 1:
        return common + key + "Type=option button\n" + key + "ControlDefaultValue=False\n";
    case 2:
        return common + key + "Type=combo\n" + key + "Caption=low;;medium;;high;;(medium);;\n";
    default:
        return common + key + "Type=text\n" + key + "ControlDefaultValue=Player\n";
    }
}

// A host folder with the game data file, the settings folder inside it, and a
// control built from it whose widgets all differ from their defaults.
struct Game {
    Game()
    {
        QDir(folder.path()).mkpath(QStringLiteral("Data/Languages"));
        QFile data(folder.filePath(QStringLiteral("Data/game.qgd")));
        if (!data.open(QIODevice::WriteOnly))
            qFatal("cannot write the game data file");
        data.write("[Custom Controls]\nCount=" + QByteArray::number(Entries) + "\n");
        for (int i = 0; i < Entries; ++i)
            data.write(entry(i + 1));
        data.close();

        control.setSettingsStore(store);
        control.setAppPath(folder.path());
        control.setQpQGD(QStringLiteral("game.qgd"));
        control.setQpGameName(QStringLiteral("Arena"));
        control.qInitCustomControls();
        qf::ControlWidgets& w = control.widgets();
        w.txtPath.setText(QStringLiteral("/games/arena"));
        w.Check1.forEach([](qf::CheckBox& box) { box.setValue(qf::CheckBox::Greyed); });
        w.Combo1.forEach([](qf::ComboBox& combo) {
            if (combo.listCount() > 0)
                combo.setText(QStringLiteral("high"));
        });
        w.Text1.forEach(
            [](qf::TextBox& text) { text.setText(QStringLiteral("Zed; \"the\" one")); });
    }

    QTemporaryDir folder;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(folder.filePath(QStringLiteral("config")));
    qForms control;
};

void BM_SaveSettings(benchmark::State& state)
{
    Game game;
    const qint64 writesBefore = game.store->writeCount();
    for (auto _ : state)
        game.control.qSaveSettings();
    state.counters["file_writes"] =
        double(game.store->writeCount() - writesBefore) / double(state.iterations());
    state.counters["file_KB"] =
        double(QFile(game.store->fileName(QStringLiteral("Quillmarsh 2"))).size()) / 1024.0;
    state.SetItemsProcessed(state.iterations() * Entries);
}

void BM_LoadSettings(benchmark::State& state)
{
    Game game;
    game.control.qSaveSettings();
    const qint64 writesBefore = game.store->writeCount();
    for (auto _ : state)
        game.control.qLoadSettings();
    state.counters["file_writes"] =
        double(game.store->writeCount() - writesBefore) / double(state.iterations());
    state.SetItemsProcessed(state.iterations() * Entries);
}

QStringList plainKeys()
{
    QStringList keys;
    for (int i = 1; i <= Entries; ++i)
        keys << QStringLiteral("Value %1").arg(i);
    return keys;
}

void BM_PlainQSettingsSave(benchmark::State& state)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("plain.ini"));
    const QStringList keys = plainKeys();
    for (auto _ : state) {
        QSettings settings(file, QSettings::IniFormat);
        settings.beginGroup(QStringLiteral("Arena"));
        for (const QString& key : keys)
            settings.setValue(key, QStringLiteral("high"));
        settings.endGroup();
        settings.sync();
    }
    state.SetItemsProcessed(state.iterations() * Entries);
}

void BM_PlainQSettingsLoad(benchmark::State& state)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("plain.ini"));
    const QStringList keys = plainKeys();
    {
        QSettings settings(file, QSettings::IniFormat);
        for (const QString& key : keys)
            settings.setValue(QStringLiteral("Arena/") + key, QStringLiteral("high"));
    }
    for (auto _ : state) {
        QSettings settings(file, QSettings::IniFormat);
        settings.beginGroup(QStringLiteral("Arena"));
        for (const QString& key : keys)
            benchmark::DoNotOptimize(settings.value(key));
    }
    state.SetItemsProcessed(state.iterations() * Entries);
}

} // namespace

BENCHMARK(BM_PlainQSettingsSave)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainQSettingsLoad)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveSettings)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadSettings)->Unit(benchmark::kMillisecond);
