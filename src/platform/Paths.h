#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include <sys/stat.h>

// Paths in game data and language files are authored on Windows: they use "\"
// and their letter case need not match the files on disk. These functions
// turn such a path into one that works on a case-sensitive file system.
namespace qf::paths {

// "\" and "/" both separate; runs of separators collapse into one "/"; a
// trailing separator is dropped except for the root "/".
QString normalize(const QString& path);

// The normalized path, with every component that does not exist as written
// replaced by the entry of its folder whose name matches without regard to
// case. When a component has no match at all, the rest is kept as written, so
// the result names nothing. Relative paths stay relative to the current folder.
QString resolve(const QString& path);

// resolve(), also reporting what the result names (nullopt: nothing) from the
// same stat() call, for callers that need the file's identity.
QString resolve(const QString& path, std::optional<struct stat>& status);

// True when the resolved path is a regular file (or a link to one).
bool isFile(const QString& path);

// True when the resolved path is a folder (or a link to one).
bool isDirectory(const QString& path);

// Names of the regular files in the folder whose names match the wildcard
// pattern ('*' and '?') without regard to case, ordered by name without regard
// to case. Throws qf::PathError when the folder does not exist.
QStringList listFiles(const QString& folder, const QString& pattern);

// Names of the files and folders in the folder, without "." and "..", in the
// order of listFiles(). Throws qf::PathError when the folder does not exist.
QStringList listEntries(const QString& folder);

// Whether a name matches a wildcard pattern ('*' any run, '?' one character)
// without regard to case.
bool matchesWildcard(const QString& name, const QString& pattern);

} // namespace qf::paths
