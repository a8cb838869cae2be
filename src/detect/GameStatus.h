#pragma once

#include <QString>
#include <QtGlobal>

// The three outcomes of a game check: the colour name the host reads, the
// status line's text colour (0xBBGGRR) and the text number of the status text.
namespace qf::status {

struct Outcome {
    QString colourName;
    quint32 textColour;
};

inline const Outcome NotConfigured{QStringLiteral("yellow"), 0x00FFFF};
inline const Outcome NotFound{QStringLiteral("red"), 0x0000FF};
inline const Outcome Found{QStringLiteral("green"), 0x00FF00};

inline const QString TextNotConfigured = QStringLiteral("000");
inline const QString TextFoundWithoutVersion = QStringLiteral("001");
inline const QString TextNotFound = QStringLiteral("002");
inline const QString TextFoundWithVersion = QStringLiteral("003");

} // namespace qf::status
