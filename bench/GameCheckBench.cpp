// The game check of a found game with many mod folders, and reading the
// version of a large program.

#include "PeImage.h"
#include "control/qForms.h"
#include "detect/Function.h"
#include "platform/IniFileSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

void touch(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
}

// A game folder with the program, a base folder and `mods` mod folders of
// three pak files each, written once per size.
const QTemporaryDir& installation(int mods)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    auto& folder = folders[mods];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        QDir root(folder->path());
        root.mkpath(QStringLiteral("game/base"));
        touch(root.filePath(QStringLiteral("game/arena.exe")));
        touch(root.filePath(QStringLiteral("game/base/pak0.pk3")));
        for (int i = 0; i < mods; ++i) {
            const QString mod = QStringLiteral("game/Mod%1").arg(i, 4, 10, QLatin1Char('0'));
            root.mkpath(mod);
            for (int pak = 0; pak < 3; ++pak)
                touch(root.filePath(mod + QStringLiteral("/pak%1.pk3").arg(pak)));
        }
    }
    return *folder;
}

void BM_CheckGameWithMods(benchmark::State& state)
{
    const int mods = int(state.range(0));
    const QTemporaryDir& folder = installation(mods);
    qForms control;
    control.setAppPath(folder.path());
    control.setQpGameName(QStringLiteral("Arena"));
    control.setQpGameApplication(QStringLiteral("arena.exe"));
    control.setQpGameBase(QStringLiteral("base"));
    control.setQpVersionType(QStringLiteral("0"));
    control.setQpUseModSelection(true);
    control.setSettingsStore(
        std::make_shared<qf::IniFileSettingsStore>(folder.filePath(QStringLiteral("config"))));
    control.widgets().txtPath.setText(folder.filePath(QStringLiteral("game")));
    for (auto _ : state)
        control.qCheckGame();
    if (control.widgets().comModSelect.listCount() != mods + 1)
        state.SkipWithError("the mod list is incomplete");
    state.SetComplexityN(mods);
}

void BM_FileVersionText(benchmark::State& state)
{
    static QTemporaryDir folder;
    const qint64 size = state.range(0);
    const QString path = folder.filePath(QStringLiteral("game%1.exe").arg(size));
    if (!qf::PeImage({.fileVersionMS = 0x00040000, .fileVersionLS = 40000}).write(path, size))
        qFatal("cannot write the program");
    for (auto _ : state)
        benchmark::DoNotOptimize(qf::Function::FileVersionText(path));
    state.SetLabel(qf::Function::FileVersionText(path).toStdString());
}

} // namespace

BENCHMARK(BM_CheckGameWithMods)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_FileVersionText)->Arg(0)->Arg(50 << 20)->Unit(benchmark::kMicrosecond);
