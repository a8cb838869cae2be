// qInitCustomControls on game data files of 4000 and 32767 entries that use
// every widget kind with the keys a real file has, without and with the view;
// and taking such a page down again with the view on screen: qClear, or
// destroying the view. Both should grow with the number of entries, not its
// square.

#include "control/qForms.h"
#include "toolkit/qt/ControlView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <map>
#include <memory>

namespace {

QByteArray entry(int i)
{
    const QByteArray key = "Control" + QByteArray::number(i);
    const QByteArray n = QByteArray::number(i);
    const QByteArray place = key + "Location=" + QByteArray::number(120 + i % 5000) + "x" +
                             QByteArray::number(840 + i % 2000) + "\n" + key + "Size=255x1455\n";
    switch (i % 7) {
    case 0:
        return key + "Type=checkbox\n" + place + key + "Caption=Option " + n + "\n" + key +
               "VisualFunction=combo1;;ifonthendisable\n" + key + "Index=" + n + "\n" + key +
               "ControlKey=Check " + n + "\n" + key + "ControlDefaultValue=1\n";
    case 1:
        return key + "Type=option button\n" + place + key + "Caption=203\n" + key +
               "VisualFunction=checkbox1;;ifonthenoff\n" + key + "Index=" + n + "\n" + key +
               "ControlKey=Option " + n + "\n";
    case 2:
        return key + "Type=frame\n" + place + key + "Caption=Group " + n + "\n";
    case 3:
        return key + "Type=combo\n" + place + key + "Caption=low;;medium;;high;;(medium);;\n" +
               key + "ControlKey=Combo " + n + "\n";
    case 4:
        return key + "Type=label\n" + place + key + "Caption=Label " + n + "\n";
    case 5:
        return key + "Type=line\n" + key + "X-Location=120x6615\n" + key +
               "Y-Location=2580x2580\n" + key + "Width=2\n";
    default:
        return key + "Type=text\n" + place + key + "Caption=player\n" + key + "Locked=0\n" + key +
               "ControlKey=Text " + n + "\n" + key + "ControlDefaultValue=Player\n";
    }
}

// One host folder per entry count, written once.
const QString& hostFolder(int entries)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    auto& folder = folders[entries];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        QDir(folder->path()).mkpath(QStringLiteral("Data/Languages"));
        QFile texts(folder->filePath(QStringLiteral("Data/Languages/0.ini")));
        if (!texts.open(QIODevice::WriteOnly))
            qFatal("cannot write the language file");
        texts.write("[Texts]\n203=Low detail\n");
        QFile data(folder->filePath(QStringLiteral("Data/game.qgd")));
        if (!data.open(QIODevice::WriteOnly))
            qFatal("cannot write the game data file");
        data.write("[Custom Controls]\nCount=" + QByteArray::number(entries) + "\n");
        for (int i = 1; i <= entries; ++i)
            data.write(entry(i));
    }
    static QString path;
    path = folder->path();
    return path;
}

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
