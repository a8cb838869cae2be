// The game data lint on files of 4000 and 32767 entries: every routine of the
// control run once, the checks of its own, and the captions measured.

#include "GeneratedGame.h"
#include "Lint.h"

#include <benchmark/benchmark.h>

namespace {

void BM_Lint(benchmark::State& state)
{
    const int entries = int(state.range(0));
    const QString file = hostFolder(entries) + QStringLiteral("/Data/game.qgd");
    size_t findings = 0;
    for (auto _ : state)
        findings = qf::lint::lintFile(file, {}).size();
    state.counters["findings"] = double(findings);
    state.SetItemsProcessed(state.iterations() * entries);
}

} // namespace

BENCHMARK(BM_Lint)->Arg(4000)->Arg(32767)->Unit(benchmark::kMillisecond)->MinTime(2);
