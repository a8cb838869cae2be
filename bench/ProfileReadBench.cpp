// Reading a game data file of the largest size the control accepts: 32767
// custom control entries of ten keys each.

#include "platform/IniDocument.h"
#include "platform/ProfileReader.h"
#include "platform/TextDecoding.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <sys/stat.h>

namespace {

constexpr int EntryCount = 32767;

const char* const Suffixes[] = {"Type",    "Location",   "Size",
                                "Caption", "Index",      "VisualFunction",
                                "Visible", "ControlKey", "ControlDefaultValue",
                                "Locked"};

struct GameDataFile {
    QTemporaryDir dir;
    QString path;
    QByteArray bytes;
    QStringList keys;

    GameDataFile()
    {
        bytes = "[Quillmarsh Game]\r\nGame Application=game.exe\r\n[Custom Controls]\r\n"
                "Count=32767\r\n";
        for (int i = 1; i <= EntryCount; ++i) {
            const QByteArray prefix = "Control" + QByteArray::number(i);
            bytes += prefix + "Type=CheckBox\r\n" + prefix + "Location=120x" +
                     QByteArray::number(i % 4000) + "\r\n" + prefix + "Size=255x2400\r\n" + prefix +
                     "Caption=Enable option " + QByteArray::number(i) + "\r\n" + prefix +
                     "Index=" + QByteArray::number(i) + "\r\n" + prefix +
                     "VisualFunction=option2;;ifonthenoff\r\n" + prefix + "Visible=True\r\n" +
                     prefix + "ControlKey=\"Option " + QByteArray::number(i) + "\"\r\n" + prefix +
                     "ControlDefaultValue=0\r\n" + prefix + "Locked=0\r\n";
        }
        path = dir.filePath(QStringLiteral("Game.qgd"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write the game data file");
        file.close();
        for (int i = 1; i <= EntryCount; ++i) {
            for (const char* suffix : Suffixes)
                keys.append(QStringLiteral("Control%1%2").arg(i).arg(QLatin1String(suffix)));
        }
    }
};

const GameDataFile& gameDataFile()
{
    static const GameDataFile file;
    return file;
}

// One value read as the control does it, with the file's parse cached.
void BM_CachedLookup(benchmark::State& state)
{
    const GameDataFile& file = gameDataFile();
    const QString section = QStringLiteral("Custom Controls");
    const QString fallback;
    qf::getPrivateProfileString(section, file.keys.first(), fallback, file.path);
    qsizetype next = 0;
    for (auto _ : state) {
        const qf::ProfileString value =
            qf::getPrivateProfileString(section, file.keys.at(next), fallback, file.path);
        benchmark::DoNotOptimize(value.length);
        next = (next + 1) % file.keys.size();
    }
}
BENCHMARK(BM_CachedLookup);

// The one stat() a read keeps, so that it sees the file as it is now: the floor
// under BM_CachedLookup.
void BM_BareStat(benchmark::State& state)
{
    const QByteArray path = QFile::encodeName(gameDataFile().path);
    for (auto _ : state) {
        struct stat st {};
        benchmark::DoNotOptimize(::stat(path.constData(), &st));
    }
}
BENCHMARK(BM_BareStat);

// Decoding and parsing the whole file, as on its first read.
void BM_FirstParse(benchmark::State& state)
{
    const GameDataFile& file = gameDataFile();
    for (auto _ : state) {
        const qf::IniDocument document = qf::IniDocument::parse(qf::decodeText(file.bytes));
        benchmark::DoNotOptimize(&document);
    }
    state.SetBytesProcessed(state.iterations() * file.bytes.size());
}
BENCHMARK(BM_FirstParse)->Unit(benchmark::kMillisecond);

} // namespace
