#include "PeImage.h"
#include "support/TestHost.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct CliResult {
    int exitCode = -1;
    QString out;
    QString err;
};

CliResult runCli(const QStringList& args, const QString& workingFolder = {})
{
    QProcess process;
    process.setWorkingDirectory(workingFolder);
    process.start(QStringLiteral(QFORMS_CLI_PATH), args);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString readFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

const QString LintCases = QFORMS_SOURCE_DIR u"/tests/lint/"_s;

} // namespace

TEST(Cli, ReadVersionHelpAndErrors)
{
    TestHost host;
    const QString file = host.filePath(u"game.qgd"_s);
    host.write(u"game.qgd"_s,
               "[Custom Controls]\nCaption=\"Caf\xE9\"\nLong=" + QByteArray(1500, 'z') + "\n");
    EXPECT_EQ(runCli({u"read"_s, u"--length"_s, file, u"custom controls"_s, u"caption"_s}).out,
              u"Café\n4\n"_s);
    EXPECT_EQ(runCli({u"read"_s, file, u"Custom Controls"_s, u"none"_s, u"dflt  "_s}).out,
              u"dflt\n"_s);
    EXPECT_EQ(runCli({u"read"_s, file, u"Custom Controls"_s, u"Long"_s, u"--length"_s}).out,
              QString(1023, u'z') + u"\n1023\n"_s);

    ASSERT_TRUE(
        qf::PeImage({.pe32Plus = true, .fileVersionMS = 0x0001FFFF, .fileVersionLS = 0x00020003})
            .write(host.filePath(u"Game.exe"_s)));
    EXPECT_EQ(runCli({u"version"_s, host.path() + u"\\GAME.EXE"_s}).out, u"1.65535.2.3\n"_s);

    for (const QString& help : {u"--help"_s, u"-h"_s, u"help"_s}) {
        const CliResult result = runCli({help});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_TRUE(result.out.contains(u"qforms preview --watch FILE.qgd"_s));
    }
    const CliResult version = runCli({u"--version"_s});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(
        QRegularExpression(u"^qforms \\d+\\.\\d+\\.\\d+\n$"_s).match(version.out).hasMatch());

    // Usage errors and missing files exit with 2 and a message.
    const QString noFile = host.filePath(u"no.qgd"_s);
    const auto missing = [](const QString& f) { return u"qforms: %1: no such file\n"_s.arg(f); };
    const std::pair<QStringList, QString> cases[] = {
        {{}, u"qforms: "_s},
        {{u"frobnicate"_s}, u"qforms: "_s},
        {{u"read"_s, u"f"_s, u"s"_s}, u"qforms: "_s},
        {{u"read"_s, u"--size"_s, u"f"_s, u"s"_s, u"k"_s}, u"qforms: "_s},
        {{u"read"_s, u"f"_s, u"s"_s, u"k"_s, u"d"_s, u"extra"_s}, u"qforms: "_s},
        {{u"version"_s}, u"qforms: "_s},
        {{u"read"_s, noFile, u"a"_s, u"b"_s, u"dflt"_s}, missing(noFile)},
        {{u"read"_s, host.path(), u"a"_s, u"b"_s}, missing(host.path())},
        {{u"version"_s, noFile}, missing(noFile)},
        {{u"lint"_s, noFile}, missing(noFile)},
        {{u"lint"_s, u"--format"_s, u"xml"_s, noFile}, u"qforms: --format"_s},
        // Outside a host folder lint cannot run.
        {{u"lint"_s, LintCases + u"layout/expected.txt"_s}, u"--app-path"_s}};
    for (const auto& [args, error] : cases) {
        const CliResult result = runCli(args);
        EXPECT_EQ(result.exitCode, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_TRUE(result.err.contains(error)) << result.err.toStdString();
    }
}

// Each folder under tests/lint holds a broken game data file of one family of
// checks and its exact findings, line and column included. The sample games lint clean.
TEST(Lint, FindingsExitCodesAndTheCleanSampleGames)
{
    const std::tuple<QString, QStringList, int> cases[] = {
        {u"entries"_s, {}, 1},
        {u"values"_s, {}, 1},
        {u"rules"_s, {}, 1},
        {u"storage"_s, {}, 1},
        {u"routes"_s, {}, 1},
        {u"layout"_s, {}, 0},
        {u"game"_s, {u"--game"_s, u"Arena"_s}, 0},
        {u"section"_s, {}, 1},
        {u"host"_s, {u"--game"_s, u"Ridg"_s}, 0},
    };
    for (const auto& [name, options, exitCode] : cases) {
        const CliResult result =
            runCli(QStringList{u"lint"_s} + options + QStringList{u"Data/%1.qgd"_s.arg(name)},
                   LintCases + name);
        EXPECT_EQ(result.out, readFile(LintCases + name + u"/expected.txt"_s))
            << name.toStdString();
        EXPECT_EQ(result.exitCode, exitCode) << name.toStdString();
    }
    const CliResult json = runCli({u"lint"_s, u"--format"_s, u"json"_s, u"Data/entries.qgd"_s},
                                  LintCases + u"entries"_s);
    EXPECT_EQ(json.out, readFile(LintCases + u"entries/expected.json"_s));
    // Warnings fail only under --werror.
    EXPECT_EQ(
        runCli({u"lint"_s, u"--werror"_s, u"Data/layout.qgd"_s}, LintCases + u"layout"_s).exitCode,
        1);

    for (const QString& game : {u"Emberfall"_s, u"Stonewake"_s, u"Hollow Reach"_s}) {
        const QString file = u"Data/%1.qgd"_s.arg(game.toLower().remove(u' '));
        const CliResult result =
            runCli({u"lint"_s, u"--game"_s, game, file}, QFORMS_SOURCE_DIR u"/data/host"_s);
        EXPECT_EQ(result.out, QString()) << file.toStdString();
        EXPECT_EQ(result.exitCode, 0) << file.toStdString();
    }
}
