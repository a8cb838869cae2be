#pragma once

#include <QString>

/// Where the control keeps the user's choices: one application area for all
/// games, a section per game name, these fixed keys and one key per valued
/// option widget (its ControlKey).
namespace qf::settings {

/// The application of every value the control stores.
inline const QString Application = QStringLiteral("Quillmarsh 2");

/// The folder box's text.
inline const QString Path = QStringLiteral("Path");
/// The chosen mod.
inline const QString ModName = QStringLiteral("Mod Name");
/// The mod check box: "0", "1" or "2".
inline const QString LoadModAlways = QStringLiteral("Load Mod Always");
/// The extra command-line parameters.
inline const QString CommandLineParameters = QStringLiteral("Command Line Parameters");
/// The chosen config file's name.
inline const QString ConfigName = QStringLiteral("Config Name");

} // namespace qf::settings
