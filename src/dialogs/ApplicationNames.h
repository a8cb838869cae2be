#pragma once

#include <QString>

namespace qf {

// The game's program names as the browse dialog shows them: the "Game
// Application" value, one name or names each closed by ";;", reduced to the
// file names and joined with "; ".
QString applicationNameList(const QString& gameApplication);

} // namespace qf
