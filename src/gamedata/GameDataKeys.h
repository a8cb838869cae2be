#pragma once

#include <QString>

// Section, keys and kind words of a game data file.
namespace qf::gamedata {

inline const QString Section = QStringLiteral("Custom Controls");
inline const QString Count = QStringLiteral("Count");

inline const QString Type = QStringLiteral("Type");
inline const QString Location = QStringLiteral("Location");
inline const QString Size = QStringLiteral("Size");
inline const QString Caption = QStringLiteral("Caption");
inline const QString VisualFunction = QStringLiteral("VisualFunction");
inline const QString Visible = QStringLiteral("Visible");
inline const QString Locked = QStringLiteral("Locked");
inline const QString XLocation = QStringLiteral("X-Location");
inline const QString YLocation = QStringLiteral("Y-Location");
inline const QString Width = QStringLiteral("Width");
inline const QString Index = QStringLiteral("Index");
inline const QString ControlKey = QStringLiteral("ControlKey");
inline const QString ControlDefaultValue = QStringLiteral("ControlDefaultValue");

// The section that names the game's program, for the browse dialog.
inline const QString GameSection = QStringLiteral("Quillmarsh Game");
inline const QString GameApplication = QStringLiteral("Game Application");

inline const QString KindCheckBox = QStringLiteral("checkbox");
inline const QString KindOptionButton = QStringLiteral("option button");
inline const QString KindFrame = QStringLiteral("frame");
inline const QString KindCombo = QStringLiteral("combo");
inline const QString KindLabel = QStringLiteral("label");
inline const QString KindLine = QStringLiteral("line");
inline const QString KindText = QStringLiteral("text");

// The key of an entry: "Control", the entry number, the suffix ("Control12Type").
inline QString entryKey(int entry, const QString& suffix)
{
    QString key;
    key.reserve(12 + suffix.size());
    key += QLatin1StringView("Control");
    key += QString::number(entry);
    key += suffix;
    return key;
}

} // namespace qf::gamedata
