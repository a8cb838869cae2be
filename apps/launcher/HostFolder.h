#pragma once

#include <QString>

// The sample host folder (the launcher's AppPath): beside the program in a
// build tree, or under share/qforms once installed. Empty when neither exists.
QString findHostFolder();
