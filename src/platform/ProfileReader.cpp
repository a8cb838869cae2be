#include "platform/ProfileReader.h"

#include "platform/Paths.h"
#include "platform/TextDecoding.h"

#include <QFile>
#include <QHash>

#include <atomic>
#include <cerrno>
#include <mutex>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qf {

namespace {

// What tells a file apart from its earlier versions without reading it.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 modifiedNs = 0;

    static FileIdentity of(const struct stat& st)
    {
        return {st.st_dev, st.st_ino, st.st_size,
                qint64(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec};
    }

    bool operator==(const FileIdentity&) const = default;
};

class ProfileCache {
public:
    std::shared_ptr<const IniDocument> find(const QString& path, const FileIdentity& identity)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_entries.find(path);
        if (it == m_entries.end() || !(it->identity == identity))
            return nullptr;
        it->lastUse = ++m_clock;
        return it->document;
    }

    void insert(const QString& path, const FileIdentity& identity,
                std::shared_ptr<const IniDocument> document)
    {
        std::lock_guard lock(m_mutex);
        if (m_entries.size() >= MaxFiles && !m_entries.contains(path))
            evictLeastRecentlyUsed();
        m_entries.insert(path, Entry{identity, std::move(document), ++m_clock});
    }

private:
    static constexpr qsizetype MaxFiles = 64;

    struct Entry {
        FileIdentity identity;
        std::shared_ptr<const IniDocument> document;
        quint64 lastUse = 0;
    };

    void evictLeastRecentlyUsed()
    {
        auto oldest = m_entries.begin();
        for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
            if (it->lastUse < oldest->lastUse)
                oldest = it;
        }
        if (oldest != m_entries.end())
            m_entries.erase(oldest);
    }

    std::mutex m_mutex;
    QHash<QString, Entry> m_entries;
    quint64 m_clock = 0;
};

ProfileCache& profileCache()
{
    static ProfileCache cache;
    return cache;
}

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return m_fd; }

private:
    int m_fd;
};

// Reads the whole file through one descriptor, so the identity recorded is
// that of the bytes read.
std::optional<QByteArray> readRegularFile(const QString& path, FileIdentity& identity)
{
    const FileDescriptor fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    struct stat st {};
    if (fd.get() < 0 || ::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode))
        return std::nullopt;
    identity = FileIdentity::of(st);

    QByteArray bytes;
    bytes.reserve(qsizetype(st.st_size) + 1);
    char chunk[65536];
    for (;;) {
        const ssize_t count = ::read(fd.get(), chunk, sizeof chunk);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return std::nullopt;
        }
        if (count == 0)
            return bytes;
        bytes.append(chunk, qsizetype(count));
    }
}

// Windows' profile copy: one pair of quotes stripped, then cut to fit the
// buffer with its terminating zero.
ProfileString copyEntry(QStringView value, qint32 bufferSize)
{
    if (bufferSize <= 0)
        return {};
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front())
        value = value.sliced(1, value.size() - 2);
    const qsizetype room = bufferSize - 1;
    if (value.size() > room) {
        qsizetype cut = room;
        if (cut > 0 && value.at(cut - 1).isHighSurrogate() && value.at(cut).isLowSurrogate())
            --cut;
        value.truncate(cut);
    }
    return {value.toString(), qint32(value.size())};
}

QString withoutTrailingSpaces(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == u' ')
        --end;
    return text.first(end);
}

} // namespace

namespace {
thread_local ProfileSnapshot* currentSnapshot = nullptr;

std::shared_ptr<const IniDocument> loadFromDisk(const QString& path);
} // namespace

ProfileSnapshot::ProfileSnapshot() : m_outer(currentSnapshot)
{
    static std::atomic<quint64> lastId{0};
    m_id = ++lastId;
    currentSnapshot = this;
}

quint64 ProfileSnapshot::currentId()
{
    return currentSnapshot ? currentSnapshot->m_id : 0;
}

ProfileSnapshot::~ProfileSnapshot()
{
    currentSnapshot = m_outer;
}

std::shared_ptr<const IniDocument> loadProfile(const QString& path)
{
    ProfileSnapshot* snapshot = currentSnapshot;
    if (!snapshot)
        return loadFromDisk(path);
    // A call reads one file many times in a row.
    if (snapshot->m_lastPath == path && !path.isNull())
        return snapshot->m_lastDocument;
    auto known = snapshot->m_documents.constFind(path);
    if (known == snapshot->m_documents.cend())
        known = snapshot->m_documents.insert(path, loadFromDisk(path));
    snapshot->m_lastPath = path;
    snapshot->m_lastDocument = *known;
    return *known;
}

namespace {

std::shared_ptr<const IniDocument> loadFromDisk(const QString& path)
{
    std::optional<struct stat> st;
    const QString resolved = paths::resolve(path, st);
    if (!st || !S_ISREG(st->st_mode))
        return nullptr;
    if (auto cached = profileCache().find(resolved, FileIdentity::of(*st)))
        return cached;

    // Parsed outside the cache's lock: a large file must not hold up readers
    // of other files.
    FileIdentity identity;
    const std::optional<QByteArray> bytes = readRegularFile(resolved, identity);
    if (!bytes)
        return nullptr;
    auto document = std::make_shared<const IniDocument>(IniDocument::parse(decodeText(*bytes)));
    profileCache().insert(resolved, identity, document);
    return document;
}

} // namespace

ProfileString getPrivateProfileString(const QString& section, const QString& key,
                                      const QString& defaultValue, const QString& path,
                                      qint32 bufferSize)
{
    const auto document = loadProfile(path);
    if (document)
        if (const std::optional<QStringView> value = document->rawView(section, key))
            return copyEntry(*value, bufferSize);
    // Windows drops the default's trailing spaces (spaces only, not tabs).
    return copyEntry(withoutTrailingSpaces(defaultValue), bufferSize);
}

} // namespace qf
