#pragma once

#include "platform/IniDocument.h"

#include <QHash>
#include <QString>

#include <memory>

namespace qf {

// The parsed INI file at the path (resolved by paths::resolve), or nullptr when
// no readable regular file is there. Every call sees the file as it is now; an
// unchanged file (same device, inode, size and modification time) is not parsed
// again but answered from a cache of recently read files. Thread-safe.
std::shared_ptr<const IniDocument> loadProfile(const QString& path);

// While one lives, loadProfile() on this thread answers a path it has
// answered before in the snapshot's life as it did then, without looking at
// the disk again. Each public call of the control takes one, so all its reads
// of a file share one look at it; tools that inspect one state of a set of
// files, such as the game data lint, take one around many calls.
class ProfileSnapshot {
public:
    ProfileSnapshot();
    ~ProfileSnapshot();
    ProfileSnapshot(const ProfileSnapshot&) = delete;
    ProfileSnapshot& operator=(const ProfileSnapshot&) = delete;

    // A number that tells the innermost snapshot living on this thread from
    // every other snapshot; 0 while none lives. Other readers of files (the
    // settings store) use it to look at a file once per snapshot too.
    static quint64 currentId();

private:
    ProfileSnapshot* m_outer;
    quint64 m_id;
    QHash<QString, std::shared_ptr<const IniDocument>> m_documents;
    QString m_lastPath;
    std::shared_ptr<const IniDocument> m_lastDocument;
    friend std::shared_ptr<const IniDocument> loadProfile(const QString& path);
};

// What GetPrivateProfileString puts into its buffer, and the count it returns.
struct ProfileString {
    QString value;
    qint32 length = 0;
};

// The value of the key in the section of the INI file at the path, read as the
// Windows profile function does: quotes stripped, blanks trimmed; when the file,
// section or key is missing, the default without its trailing spaces (and its
// quotes stripped likewise). The result is cut to bufferSize - 1 characters,
// one less when the cut would split a surrogate pair.
ProfileString getPrivateProfileString(const QString& section, const QString& key,
                                      const QString& defaultValue, const QString& path,
                                      qint32 bufferSize = 1024);

} // namespace qf
