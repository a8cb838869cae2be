#include "support/CliRun.h"

#include <QProcess>
#include <gtest/gtest.h>

CliResult runCli(const QStringList& args, const QString& workingFolder)
{
    QProcess process;
    if (!workingFolder.isEmpty())
        process.setWorkingDirectory(workingFolder);
    process.start(QStringLiteral(QFORMS_CLI_PATH), args);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
