#pragma once

#include "Finding.h"

#include <QByteArray>
#include <QList>
#include <QString>

// The game data lint: runs the control's own routines on a game data file
// with an observer that records every step they skip, and adds the checks the
// routines cannot make by themselves. Needs a QApplication (the caption
// checks measure with the view's widgets).
namespace qf::lint {

struct Options {
    // The host folder; empty: the folder above the file's "Data" folder.
    QString appPath;
    // The languages to check; empty: every language file of the host.
    QList<int> languages;
    // The game's name, for its game list files; empty: not checked.
    QString gameName;
};

// Throws qf::Error when the file cannot be linted at all (missing, or not
// below AppPath/Data).
Findings lintFile(const QString& qgdPath, const Options& options);

// "path:line:column: severity: message [check]".
QString formatText(const Finding& finding);
// A JSON array of objects with the same fields.
QByteArray formatJson(const Findings& findings);

} // namespace qf::lint
