#include "support/CliRun.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString readFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

const QString Cases = QStringLiteral(QFORMS_SOURCE_DIR "/tests/lint/");

} // namespace

// Each folder under tests/lint holds a broken game data file of one family of
// checks and the exact findings, line and column included.
TEST(Lint, EachFamilyOfBrokenFilesGivesItsExactFindings)
{
    const struct {
        const char* name;
        QStringList extra;
        int exitCode;
    } cases[] = {
        {"entries", {}, 1}, {"values", {}, 1}, {"rules", {}, 1},
        {"storage", {}, 1}, {"layout", {}, 0}, {"game", {u"--game"_s, u"Arena"_s}, 0},
    };
    for (const auto& c : cases) {
        const QString folder = Cases + QLatin1String(c.name);
        const QString file = u"Data/"_s + QLatin1String(c.name) + u".qgd"_s;
        const CliResult result =
            runCli(QStringList{u"lint"_s} + c.extra + QStringList{file}, folder);
        EXPECT_EQ(result.out, readFile(folder + u"/expected.txt"_s)) << c.name;
        EXPECT_EQ(result.exitCode, c.exitCode) << c.name;
    }

    const CliResult json =
        runCli({u"lint"_s, u"--format"_s, u"json"_s, u"Data/entries.qgd"_s}, Cases + u"entries"_s);
    EXPECT_EQ(json.out, readFile(Cases + u"entries/expected.json"_s));
}

TEST(Lint, WarningsFailOnlyUnderWerrorAndACommandThatCannotRunExitsTwo)
{
    const QString layout = Cases + u"layout"_s;
    EXPECT_EQ(runCli({u"lint"_s, u"--werror"_s, u"Data/layout.qgd"_s}, layout).exitCode, 1);
    EXPECT_EQ(runCli({u"lint"_s, u"Data/missing.qgd"_s}, layout).exitCode, 2);
    EXPECT_EQ(runCli({u"lint"_s, u"--format"_s, u"xml"_s, u"Data/layout.qgd"_s}, layout).exitCode,
              2);
    const CliResult outside = runCli({u"lint"_s, u"expected.txt"_s}, layout);
    EXPECT_EQ(outside.exitCode, 2);
    EXPECT_TRUE(outside.err.contains(u"--app-path"_s)) << outside.err.toStdString();
}

TEST(Lint, TheSampleGameDataFilesAreClean)
{
    const QString host = QStringLiteral(QFORMS_SOURCE_DIR "/data/host");
    const std::pair<const char*, const char*> games[] = {{"emberfall.qgd", "Emberfall"},
                                                         {"stonewake.qgd", "Stonewake"},
                                                         {"hollowreach.qgd", "Hollow Reach"}};
    for (const auto& [file, game] : games) {
        const CliResult result = runCli(
            {u"lint"_s, u"--game"_s, QLatin1String(game), u"Data/"_s + QLatin1String(file)}, host);
        EXPECT_EQ(result.out, QString()) << file;
        EXPECT_EQ(result.exitCode, 0) << file;
    }
}
