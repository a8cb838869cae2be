#pragma once

#include <QString>

// Where the control keeps the user's choices: one application area for all
// games, a section per game name, these fixed keys and one key per valued
// option widget.
namespace qf::settings {

inline const QString Application = QStringLiteral("Quillmarsh 2");

inline const QString Path = QStringLiteral("Path");
inline const QString ModName = QStringLiteral("Mod Name");
inline const QString LoadModAlways = QStringLiteral("Load Mod Always");
inline const QString CommandLineParameters = QStringLiteral("Command Line Parameters");
inline const QString ConfigName = QStringLiteral("Config Name");

} // namespace qf::settings
