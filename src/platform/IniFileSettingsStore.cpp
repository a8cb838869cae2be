#include "platform/IniFileSettingsStore.h"

#include "platform/Errors.h"
#include "platform/FileReplacement.h"
#include "platform/ProfileReader.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>

#include <unistd.h>

namespace qf {

namespace {

[[noreturn]] void failSave(const QString& path, const QString& reason)
{
    throw SaveError(QStringLiteral("Could not write the settings file %1: %2").arg(path, reason));
}

// The system's own words, which tell the player what to do about it.
QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// A process killed between creating its lock file and writing its id into it
// leaves an empty file, which QLockFile takes for stale only after 30 s. Its
// holder keeps an flock on it while alive; an empty file a second old that
// nobody holds is removed at once.
void removeEmptyStaleLock(const QString& lockPath)
{
    const QByteArray path = QFile::encodeName(lockPath);
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return;
    struct stat opened {};
    struct stat named {};
    if (::fstat(fd, &opened) == 0 && opened.st_size == 0 && opened.st_mtime < ::time(nullptr) - 1 &&
        ::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::stat(path.constData(), &named) == 0 &&
        named.st_ino == opened.st_ino && named.st_dev == opened.st_dev)
        ::unlink(path.constData());
    ::close(fd);
}

// Keeps bytes beside the file as "<file>.damaged-<date and time>", and no
// more than a few such copies: the oldest go. The copy's path, or an empty
// text when it could not be written.
QString keepDamagedCopy(const QString& path, const QByteArray& bytes)
{
    constexpr int Kept = 3;
    const QFileInfo file(path);
    QDir folder = file.absoluteDir();
    const QString stem = file.fileName() + QStringLiteral(".damaged-");
    const QString stamp =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss"));
    QString name = stem + stamp;
    for (int n = 2; folder.exists(name); ++n)
        name = stem + stamp + u'-' + QString::number(n);
    QFile copy(folder.filePath(name));
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
        copy.write(bytes) != bytes.size() || !copy.flush())
        return {};
    copy.close();
    QStringList copies = folder.entryList({stem + u'*'}, QDir::Files | QDir::Hidden, QDir::Time);
    while (copies.size() > Kept)
        folder.remove(copies.takeLast());
    return copy.fileName();
}

} // namespace

bool IniFileSettingsStore::Identity::operator==(const Identity& other) const
{
    return device == other.device && inode == other.inode && size == other.size &&
           modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec;
}

IniFileSettingsStore::IniFileSettingsStore()
    : IniFileSettingsStore(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
{
}

IniFileSettingsStore::IniFileSettingsStore(const QString& configFolder)
    : m_configFolder(configFolder)
{
}

QString IniFileSettingsStore::fileName(const QString& application) const
{
    if (application.isEmpty() || application.contains(u'/') || application.contains(QChar::Null))
        throw InvalidValueError(
            QStringLiteral("\"%1\" cannot name a settings file").arg(application));
    return QDir(m_configFolder).filePath(application + QStringLiteral(".ini"));
}

void IniFileSettingsStore::saveValue(const QString& application, const QString& section,
                                     const QString& key, const QString& value)
{
    const QString fullKey = settingsini::settingsKey(section, key);
    File& target = file(application);
    const auto found = target.unwrittenIndex.constFind(fullKey);
    if (found != target.unwrittenIndex.constEnd()) {
        target.unwritten[*found].second = value;
        return;
    }
    target.unwrittenIndex.insert(fullKey, target.unwritten.size());
    target.unwritten.emplace_back(fullKey, value);
}

QStringList IniFileSettingsStore::takeDamagedCopies()
{
    return std::exchange(m_damagedCopies, {});
}

QString IniFileSettingsStore::readValue(const QString& application, const QString& section,
                                        const QString& key, const QString& defaultValue) const
{
    const QString fullKey = settingsini::settingsKey(section, key);
    File& source = file(application);
    const auto collected = source.unwrittenIndex.constFind(fullKey);
    if (collected != source.unwrittenIndex.constEnd())
        return source.unwritten[*collected].second;
    refresh(source);
    return source.document.value(fullKey).value_or(defaultValue);
}

void IniFileSettingsStore::sync()
{
    QStringList failures;
    for (auto& [application, target] : m_files) {
        if (target.unwritten.empty())
            continue;
        try {
            write(target);
        } catch (const Error& error) {
            failures.append(error.message());
        }
    }
    if (!failures.isEmpty())
        throw SaveError(failures.join(QStringLiteral("; ")));
}

IniFileSettingsStore::Identity IniFileSettingsStore::identityOf(const struct stat& status)
{
    return Identity{status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

IniFileSettingsStore::File& IniFileSettingsStore::file(const QString& application) const
{
    auto it = m_files.find(application);
    if (it == m_files.end()) {
        File opened;
        opened.path = fileName(application);
        it = m_files.emplace(application, std::move(opened)).first;
    }
    return it->second;
}

void IniFileSettingsStore::refresh(File& file) const
{
    const quint64 snapshot = ProfileSnapshot::currentId();
    if (file.read && snapshot != 0 && file.snapshot == snapshot)
        return;
    file.snapshot = snapshot;
    const QByteArray nativePath = QFile::encodeName(file.path);
    struct stat status {};
    if (::stat(nativePath.constData(), &status) != 0) {
        // A configuration folder that is a file holds no settings either.
        if (errno != ENOENT && errno != ENOTDIR)
            throw PathError(QStringLiteral("Cannot read the settings file %1: %2")
                                .arg(file.path, reasonOf(errno)));
        file.identity.reset();
        file.document = {};
        file.read = true;
        return;
    }
    if (file.read && file.identity && *file.identity == identityOf(status))
        return;

    // The identity comes from the open file, so it belongs to the bytes read
    // even when the file is replaced meanwhile.
    QFile input(file.path);
    if (!S_ISREG(status.st_mode) || !input.open(QIODevice::ReadOnly) ||
        ::fstat(input.handle(), &status) != 0)
        throw PathError(QStringLiteral("Cannot read the settings file %1: %2")
                            .arg(file.path, S_ISREG(status.st_mode)
                                                ? input.errorString()
                                                : QStringLiteral("not a regular file")));
    const QByteArray bytes = input.readAll();
    if (input.error() != QFileDevice::NoError)
        throw PathError(QStringLiteral("Cannot read the settings file %1: %2")
                            .arg(file.path, input.errorString()));
    file.document = settingsini::Document(bytes);
    file.identity = identityOf(status);
    file.read = true;
}

void IniFileSettingsStore::write(File& file)
{
    if (!QDir().mkpath(m_configFolder))
        failSave(file.path, reasonOf(errno));

    // QLockFile's own wait sleeps 100 ms and more between tries; saves are short,
    // so tries come every few milliseconds. A lock left by a process that died
    // is taken over.
    QLockFile lock(file.path + QStringLiteral(".lock"));
    const QDeadlineTimer deadline(m_lockTimeout);
    while (true) {
        errno = 0;
        if (lock.tryLock(0))
            break;
        // QLockFile tells no reason; its failed open() left it in errno.
        const int error = errno;
        if (lock.error() != QLockFile::LockFailedError)
            failSave(file.path,
                     error != 0 ? reasonOf(error) : QStringLiteral("cannot create its lock file"));
        if (deadline.hasExpired())
            failSave(file.path, QStringLiteral("another program holds its lock"));
        removeEmptyStaleLock(lock.fileName());
        QThread::usleep(QRandomGenerator::system()->bounded(500, 3000));
    }

    // Only the lock holder writes temporary files: any there now are left from
    // a save that was killed.
    removeStaleReplacements(file.path);
    file.snapshot = 0; // under the lock the file is looked at anew, whatever the call
    try {
        refresh(file);
    } catch (const PathError& error) {
        failSave(file.path, error.message());
    }
    // Only the lines of the keys set change; a file whose other lines must
    // change too is kept as found beside it first.
    settingsini::Document::Saved saved = file.document.withValues(file.unwritten);
    if (saved.altered) {
        const QString copy = keepDamagedCopy(file.path, file.document.bytes());
        if (copy.isEmpty())
            failSave(file.path, QStringLiteral("its damaged lines could not be kept in a copy"));
        m_damagedCopies.append(copy);
    }
    struct stat written {};
    if (const int error = replaceFileContents(file.path, saved.bytes, &written))
        failSave(file.path, reasonOf(error));

    ++m_writeCount;
    file.unwritten.clear();
    file.unwrittenIndex.clear();
    // What was written is what the next read would parse, unless the file
    // changes meanwhile, which its identity tells.
    if (saved.document) {
        file.document = std::move(*saved.document);
        file.identity = identityOf(written);
    } else {
        file.read = false;
    }
}

} // namespace qf
