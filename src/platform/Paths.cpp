#include "platform/Paths.h"

#include "platform/Errors.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include <algorithm>
#include <mutex>

namespace qf::paths {

namespace {

std::optional<struct stat> statNative(const QByteArray& path)
{
    struct stat st {};
    if (::stat(path.constData(), &st) != 0)
        return std::nullopt;
    return st;
}

std::optional<struct stat> statPath(const QString& path)
{
    return statNative(QFile::encodeName(path));
}

// A path in normal form, and its bytes for the system.
struct PreparedPath {
    QString normalized;
    QByteArray native;
};

// The control reads every value through the same few paths: their normal form
// and its bytes are kept, so a read costs one lookup and one stat() instead of
// rebuilding both. What the path names is never kept here.
class PreparedPathCache {
public:
    PreparedPath find(const QString& path)
    {
        {
            std::lock_guard lock(m_mutex);
            const auto it = m_entries.constFind(path);
            if (it != m_entries.cend())
                return *it;
        }
        PreparedPath prepared;
        prepared.normalized = normalize(path);
        prepared.native = QFile::encodeName(prepared.normalized);
        std::lock_guard lock(m_mutex);
        if (m_entries.size() >= MaxEntries)
            m_entries.clear();
        m_entries.insert(path, prepared);
        return prepared;
    }

private:
    static constexpr qsizetype MaxEntries = 256;
    std::mutex m_mutex;
    QHash<QString, PreparedPath> m_entries;
};

PreparedPathCache& preparedPathCache()
{
    static PreparedPathCache cache;
    return cache;
}

QString joinPath(const QString& base, const QString& rest)
{
    if (base.isEmpty())
        return rest;
    if (base == u'/')
        return base + rest;
    return base + u'/' + rest;
}

// The entry of the folder whose name equals the component without regard to
// case; among several, the first in case-sensitive order, so the choice does
// not depend on the order the file system lists them in.
QString findEntry(const QString& folder, const QString& component)
{
    const QStringList entries =
        QDir(folder.isEmpty() ? QStringLiteral(".") : folder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::NoSort);
    QString best;
    for (const QString& entry : entries) {
        if (entry.compare(component, Qt::CaseInsensitive) != 0)
            continue;
        if (best.isNull() || entry < best)
            best = entry;
    }
    return best;
}

QString resolveByCase(const QString& normalized)
{
    const QStringList parts = normalized.split(u'/', Qt::SkipEmptyParts);
    QString resolved = normalized.startsWith(u'/') ? QStringLiteral("/") : QString();
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts.at(i);
        const QString asWritten = joinPath(resolved, part);
        if (part == u"." || part == u".." || statPath(asWritten)) {
            resolved = asWritten;
            continue;
        }
        const QString match = findEntry(resolved, part);
        if (match.isNull())
            return joinPath(resolved, parts.mid(i).join(u'/'));
        resolved = joinPath(resolved, match);
    }
    return resolved;
}

// The control reads every value of a game data file through its path, so a
// path that needs case resolution would list its folders on every read. The
// cache maps such a path to its last resolution, which stays valid while the
// path as written is still missing and the resolution still exists.
class ResolutionCache {
public:
    std::optional<QString> find(const QString& normalized)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_entries.constFind(normalized);
        if (it == m_entries.cend())
            return std::nullopt;
        return *it;
    }

    void insert(const QString& normalized, const QString& resolved)
    {
        std::lock_guard lock(m_mutex);
        if (m_entries.size() >= MaxEntries)
            m_entries.clear();
        m_entries.insert(normalized, resolved);
    }

private:
    static constexpr qsizetype MaxEntries = 256;
    std::mutex m_mutex;
    QHash<QString, QString> m_entries;
};

ResolutionCache& resolutionCache()
{
    static ResolutionCache cache;
    return cache;
}

bool matchesFrom(QStringView name, QStringView pattern)
{
    // Iterative matching with one backtrack point: the last '*' seen.
    qsizetype n = 0;
    qsizetype p = 0;
    qsizetype starPattern = -1;
    qsizetype starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starPattern = p++;
            starName = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == u'?' || pattern[p].toCaseFolded() == name[n].toCaseFolded())) {
            ++p;
            ++n;
        } else if (starPattern >= 0) {
            p = starPattern + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

// Without regard to case, ties in case-sensitive order, so that the order
// does not depend on the file system's.
void sortByName(QStringList& names)
{
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int folded = a.compare(b, Qt::CaseInsensitive);
        return folded != 0 ? folded < 0 : a < b;
    });
}

QString resolveFolder(const QString& folder)
{
    std::optional<struct stat> st;
    const QString resolved = resolve(folder, st);
    if (!st || !S_ISDIR(st->st_mode))
        throw PathError(QStringLiteral("Folder not found: %1").arg(folder));
    return resolved;
}

} // namespace

QString normalize(const QString& path)
{
    QString result(path.size(), Qt::Uninitialized);
    QChar* const begin = result.data();
    QChar* out = begin;
    for (const QChar c : path) {
        if (c == u'/' || c == u'\\') {
            if (out == begin || out[-1] != u'/')
                *out++ = u'/';
        } else {
            *out++ = c;
        }
    }
    qsizetype size = out - begin;
    if (size > 1 && begin[size - 1] == u'/')
        --size;
    result.truncate(size);
    return result;
}

QString resolve(const QString& path, std::optional<struct stat>& st)
{
    const PreparedPath prepared = preparedPathCache().find(path);
    const QString& normalized = prepared.normalized;
    st.reset();
    if (normalized.isEmpty())
        return normalized;
    st = statNative(prepared.native);
    if (st)
        return normalized;

    if (const std::optional<QString> cached = resolutionCache().find(normalized)) {
        st = statPath(*cached);
        if (st)
            return *cached;
    }
    const QString resolved = resolveByCase(normalized);
    st = statPath(resolved);
    if (st)
        resolutionCache().insert(normalized, resolved);
    return resolved;
}

QString resolve(const QString& path)
{
    std::optional<struct stat> st;
    return resolve(path, st);
}

bool isFile(const QString& path)
{
    std::optional<struct stat> st;
    resolve(path, st);
    return st && S_ISREG(st->st_mode);
}

bool isDirectory(const QString& path)
{
    std::optional<struct stat> st;
    resolve(path, st);
    return st && S_ISDIR(st->st_mode);
}

bool matchesWildcard(const QString& name, const QString& pattern)
{
    if (matchesFrom(name, pattern))
        return true;
    // As on Windows, "name.*" also matches a name without any extension, so
    // "*.*" lists every file.
    if (pattern.endsWith(u".*") && !name.contains(u'.'))
        return matchesFrom(name, QStringView(pattern).chopped(2));
    return false;
}

QStringList listFiles(const QString& folder, const QString& pattern)
{
    const QString resolved = resolveFolder(folder);
    // QDir::Hidden: dot-files are ordinary files to Windows-authored data.
    const QStringList entries = QDir(resolved).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
    QStringList names;
    for (const QString& entry : entries) {
        if (matchesWildcard(entry, pattern))
            names.append(entry);
    }
    sortByName(names);
    return names;
}

QStringList listEntries(const QString& folder)
{
    const QString resolved = resolveFolder(folder);
    QStringList names = QDir(resolved).entryList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::NoSort);
    sortByName(names);
    return names;
}

} // namespace qf::paths
