// qInitCustomControls on game data files of 4000 and 32767 entries that use
// every widget kind with the keys a real file has, without and with the view;
// and taking such a page down again with the view on screen: qClear, or
// destroying the view. Both should grow with the number of entries, not its
// square.

#include "control/qForms.h"
#include "view/ControlView.h"

#include "GeneratedGame.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <map>
#include <memory>

namespace {

void reportPeakMemory(benchmark::State& state)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_MB"] = double(usage.ru_maxrss) / 1024.0;
}

// One build per iteration on a fresh control; tearing it down is not timed.
void build(benchmark::State& state, bool withView)
{
    const int entries = int(state.range(0));
    const QString host = hostFolder(entries);
    for (auto _ : state) {
        auto control = std::make_unique<qForms>();
        control->setAppPath(host);
        control->setQpQGD(QStringLiteral("game.qgd"));
        std::unique_ptr<qf::ControlView> view;
        if (withView)
            view = std::make_unique<qf::ControlView>(*control);
        control->qInitCustomControls();
        state.PauseTiming();
        view.reset();
        control.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * entries);
    reportPeakMemory(state);
}

void BM_BuildHeadless(benchmark::State& state)
{
    build(state, false);
}

void BM_BuildWithView(benchmark::State& state)
{
    build(state, true);
}

enum class TakeDown { Clear, DestroyView };

// One built page per iteration; only taking it down is timed.
void takeDown(benchmark::State& state, TakeDown how)
{
    const int entries = int(state.range(0));
    const QString host = hostFolder(entries);
    for (auto _ : state) {
        state.PauseTiming();
        auto control = std::make_unique<qForms>();
        control->setAppPath(host);
        control->setQpQGD(QStringLiteral("game.qgd"));
        auto view = std::make_unique<qf::ControlView>(*control);
        control->qInitCustomControls();
        // What the event loop does before a user can ask for the page to go:
        // every new widget has a polish request queued, and Qt looks through
        // the whole queue for each widget deleted while it still has one.
        QCoreApplication::sendPostedEvents();
        state.ResumeTiming();
        if (how == TakeDown::Clear)
            control->qClear();
        else
            view.reset();
        state.PauseTiming();
        view.reset();
        control.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * entries);
}

void BM_ClearWithView(benchmark::State& state)
{
    takeDown(state, TakeDown::Clear);
}

void BM_DestroyView(benchmark::State& state)
{
    takeDown(state, TakeDown::DestroyView);
}

} // namespace

BENCHMARK(BM_ClearWithView)->Arg(4000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DestroyView)->Arg(4000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildHeadless)->Arg(4000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildWithView)->Arg(4000)->Arg(32767)->Unit(benchmark::kMillisecond);
