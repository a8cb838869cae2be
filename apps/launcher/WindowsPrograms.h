#pragma once

#include <QString>

// The program that runs Windows programs (wine, a Proton or other Wine build):
// $QFORMS_WINE, else the configured one, else wine. A name without a folder is
// looked up in PATH. Empty when that program is not there.
QString findWindowsRunner(const QString& configured);

// The runner findWindowsRunner looked for, to name it when it is missing.
QString wantedWindowsRunner(const QString& configured);
