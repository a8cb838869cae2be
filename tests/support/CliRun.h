#pragma once

#include <QString>
#include <QStringList>

struct CliResult {
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs the qforms tool, in workingFolder when one is given.
CliResult runCli(const QStringList& args, const QString& workingFolder = {});
