#pragma once

#include <QString>

// True when the file is a Windows program: an MZ header whose e_lfanew points
// at a PE signature. Told by the header, never by the name.
bool isWindowsProgram(const QString& path);

// The program that runs Windows programs (wine, a Proton or other Wine build):
// $QFORMS_WINE, else the configured one, else wine. A name without a folder is
// looked up in PATH. Empty when that program is not there.
QString findWindowsRunner(const QString& configured);

// The runner findWindowsRunner looked for, to name it when it is missing.
QString wantedWindowsRunner(const QString& configured);
