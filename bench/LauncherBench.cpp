// The sample launcher with a library of 1000 games: the check behind one dot
// of the list, showing another game, and the language switch.

#include "GameStatusCheck.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "SampleInstallations.h"
#include "context/SettingsKeys.h"
#include "platform/IniFileSettingsStore.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

const QString HostFolder = QStringLiteral(QFORMS_SOURCE_DIR "/data/host");

// 1000 games made from the three sample definitions, each with a stored folder.
struct Library {
    Library()
    {
        const SampleInstallations samples(home.filePath(QStringLiteral("games")));
        samples.create();
        const QList<GameEntry> sampleGames =
            readLauncherConfig(HostFolder + QStringLiteral("/launcher.ini")).games;
        for (int i = 0; i < 1000; ++i) {
            GameEntry game = sampleGames.at(i % 3);
            game.name += QStringLiteral(" %1").arg(i);
            store->saveValue(qf::settings::Application, game.name, qf::settings::Path,
                             samples.installationOf(game));
            config.games << game;
        }
        store->sync();
    }
    QTemporaryDir home;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(home.filePath(QStringLiteral("config")));
    LauncherConfig config;
};

Library& library()
{
    static Library shared;
    return shared;
}

void BM_LauncherListColour(benchmark::State& state)
{
    GameStatusCheck check(HostFolder, library().store);
    int row = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(check.colourOf(library().config.games.at(row++ % 1000)));
}
BENCHMARK(BM_LauncherListColour)->Unit(benchmark::kMicrosecond);

// Between games whose pages are built already.
void BM_LauncherSwitchGame(benchmark::State& state)
{
    LauncherWindow window(HostFolder, library().config, library().store);
    window.showGame(0);
    window.showGame(1);
    int row = 0;
    for (auto _ : state)
        window.showGame(row++ % 2);
}
BENCHMARK(BM_LauncherSwitchGame)->Unit(benchmark::kMicrosecond);

// Two pages open, 998 not built yet.
void BM_LauncherLanguageSwitch(benchmark::State& state)
{
    LauncherWindow window(HostFolder, library().config, library().store);
    window.showGame(0);
    window.showGame(1);
    int language = 0;
    for (auto _ : state)
        window.setLanguageIndex(++language % 2);
}
BENCHMARK(BM_LauncherLanguageSwitch)->Unit(benchmark::kMillisecond);

} // namespace
