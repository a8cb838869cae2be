#include "PeImage.h"
#include "support/CliRun.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Cli, ReadPrintsTheProfileValue)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"game.qgd"_s);
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write("[Custom Controls]\nCount = 12\nCaption=\"Caf\xE9\"\nLong=" +
                  QByteArray(1500, 'z') + "\n");
    }
    EXPECT_EQ(runCli({u"read"_s, file, u"custom controls"_s, u"count"_s}).out, u"12\n"_s);
    EXPECT_EQ(runCli({u"read"_s, u"--length"_s, file, u"Custom Controls"_s, u"caption"_s}).out,
              u"Café\n4\n"_s);
    EXPECT_EQ(runCli({u"read"_s, file, u"Custom Controls"_s, u"none"_s, u"dflt  "_s}).out,
              u"dflt\n"_s);
    const CliResult cut = runCli({u"read"_s, file, u"Custom Controls"_s, u"Long"_s, u"--length"_s});
    EXPECT_EQ(cut.exitCode, 0);
    EXPECT_EQ(cut.out, QString(1023, u'z') + u"\n1023\n"_s);
}

TEST(Cli, HelpAndUsageErrors)
{
    for (const QString& help : {u"--help"_s, u"-h"_s, u"help"_s}) {
        const CliResult result = runCli({help});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_TRUE(result.out.contains(u"qforms read [--length] FILE SECTION KEY [DEFAULT]"_s));
        EXPECT_TRUE(result.out.contains(u"qforms preview --watch FILE.qgd"_s));
    }
    for (const QStringList& args :
         {QStringList{}, QStringList{u"frobnicate"_s}, QStringList{u"read"_s, u"f"_s, u"s"_s},
          QStringList{u"read"_s, u"--size"_s, u"f"_s, u"s"_s, u"k"_s},
          QStringList{u"read"_s, u"f"_s, u"s"_s, u"k"_s, u"d"_s, u"extra"_s}}) {
        const CliResult result = runCli(args);
        EXPECT_EQ(result.exitCode, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_TRUE(result.err.startsWith(u"qforms: "_s));
    }
}

TEST(Cli, VersionPrintsTheProgramsFileVersion)
{
    QTemporaryDir dir;
    const QString program = dir.filePath(u"Game.exe"_s);
    ASSERT_TRUE(
        qf::PeImage({.pe32Plus = true, .fileVersionMS = 0x0001FFFF, .fileVersionLS = 0x00020003})
            .write(program));
    EXPECT_EQ(runCli({u"version"_s, dir.path() + u"\\GAME.EXE"_s}).out, u"1.65535.2.3\n"_s);
    EXPECT_EQ(runCli({u"version"_s}).exitCode, 2);
}

TEST(Cli, MissingFilesAreErrorsAndTheToolTellsItsVersion)
{
    QTemporaryDir dir;
    const QStringList commands[] = {
        {u"read"_s, dir.filePath(u"no.qgd"_s), u"a"_s, u"b"_s, u"dflt"_s},
        {u"read"_s, dir.path(), u"a"_s, u"b"_s},
        {u"version"_s, dir.filePath(u"missing.exe"_s)},
    };
    for (const QStringList& args : commands) {
        const CliResult result = runCli(args);
        EXPECT_EQ(result.exitCode, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_EQ(result.err, u"qforms: "_s + args.at(1) + u": no such file\n"_s);
    }
    const CliResult version = runCli({u"--version"_s});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(
        QRegularExpression(u"^qforms \\d+\\.\\d+\\.\\d+\n$"_s).match(version.out).hasMatch())
        << version.out.toStdString();
}
