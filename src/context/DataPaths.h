#pragma once

#include <QLatin1String>
#include <QString>

// The places below a base folder (the host's or the control's own) where a
// game's files lie, joined with "\" as the game data was written for.
namespace qf::datapaths {

// base + "\Data\" + below.
inline QString dataPath(const QString& base, const QString& below)
{
    return base + QStringLiteral("\\Data\\") + below;
}

// The folder of a game's config files.
inline QString configFolder(const QString& base, const QString& gameName)
{
    return dataPath(base, gameName + QStringLiteral("\\Configs"));
}

// The folder of a game's game list files.
inline QString gameListFolder(const QString& base, const QString& gameName)
{
    return dataPath(base, gameName + QStringLiteral("\\AVA"));
}

// Whether a path names a program: it ends in ".exe", in any letter case.
inline bool namesProgram(const QString& path)
{
    return path.right(4).toLower() == QLatin1String(".exe");
}

} // namespace qf::datapaths
