#include "platform/FileReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qf {

namespace {

int writeAll(int fd, QByteArrayView bytes)
{
    const char* data = bytes.data();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, size_t(left));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return written < 0 ? errno : ENOSPC;
        data += written;
        left -= written;
    }
    return 0;
}

// An fsync the file system does not offer (EINVAL) cannot be had otherwise.
int syncToDisk(int fd)
{
    return ::fsync(fd) != 0 && errno != EINVAL ? errno : 0;
}

// The temporary file of a replacement: the target's name, the infix, base-36
// digits and the suffix.
const QString TemporaryInfix = QStringLiteral(".qforms-save-");
constexpr char TemporarySuffix[] = ".tmp";

QString targetOf(const QString& path)
{
    const QFileInfo info(path);
    return info.isSymLink() ? info.symLinkTarget() : info.absoluteFilePath();
}

} // namespace

int removeStaleReplacements(const QString& path)
{
    const QFileInfo target(targetOf(path));
    const QString prefix = target.fileName() + TemporaryInfix;
    static const QRegularExpression digits(QStringLiteral("^[0-9a-z]+$"));
    int removed = 0;
    QDir folder = target.absoluteDir();
    for (const QString& name :
         folder.entryList({prefix + u'*'}, QDir::Files | QDir::Hidden | QDir::System)) {
        const QString middle = name.mid(prefix.size(), name.size() - prefix.size() -
                                                           qsizetype(strlen(TemporarySuffix)));
        if (name.endsWith(QLatin1String(TemporarySuffix)) && digits.match(middle).hasMatch() &&
            folder.remove(name))
            ++removed;
    }
    return removed;
}

int replaceFileContents(const QString& path, QByteArrayView bytes, struct stat* written)
{
    const QString target = targetOf(path);
    const QByteArray nativeTarget = QFile::encodeName(target);
    const QByteArray temporary = QFile::encodeName(target + TemporaryInfix) +
                                 QByteArray::number(QRandomGenerator::system()->generate64(), 36) +
                                 TemporarySuffix;

    struct stat old {};
    const bool existed = ::stat(nativeTarget.constData(), &old) == 0;
    const int fd = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                          existed ? 0600 : 0666);
    if (fd < 0)
        return errno;
    int error = existed && ::fchmod(fd, old.st_mode & 07777) != 0 ? errno : 0;
    if (error == 0)
        error = writeAll(fd, bytes);
    if (error == 0)
        error = syncToDisk(fd);
    if (error == 0 && written && ::fstat(fd, written) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0 && errno != EINTR)
        error = errno;
    if (error == 0 && ::rename(temporary.constData(), nativeTarget.constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        return error;
    }

    const QByteArray folder = QFile::encodeName(QFileInfo(target).absolutePath());
    const int folderFd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderFd < 0)
        return errno;
    error = syncToDisk(folderFd);
    ::close(folderFd);
    return error;
}

} // namespace qf
