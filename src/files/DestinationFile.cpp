#include "files/DestinationFile.h"

#include "files/FileError.h"
#include "files/Quantities.h"

#include <QFile>
#include <QFileInfo>
#include <QObject>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace palvera {

namespace {

/// Bytes of one write. For more, the kernel caches the file in larger pieces of memory, which it has to find: written
/// in one go, 32 MiB were measured on ext4 (Linux 6.18, a virtual machine) to cost twice the processor time.
constexpr std::size_t mostAtOnce = 64 << 10;

constexpr const char* cannotWrite = QT_TRANSLATE_NOOP("QObject", "“%1” cannot be written: %2.");

QString nameOf(const QString& path)
{
    return QFileInfo(path).fileName();
}

/// Reserves the room; false where the file system has no such operation.
bool reserve(int file, qint64 size)
{
    while (::fallocate(file, 0, 0, size) != 0)
        if (errno != EINTR)
            return false;
    return true;
}

} // namespace

DestinationFile DestinationFile::open(const QString& path)
{
    // A link would lead to a file that nobody chose.
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
    if (file.number() < 0)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be opened: %2."), errno);
    struct stat status{};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        throwFileError(path, cannotWrite, EINVAL);
    if (status.st_nlink > 1)
        throw FileError(QObject::tr("“%1” has another name in some folder, so it is not written.").arg(nameOf(path)));
    // Some network file systems know no locks: there, nothing holds the file.
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        throw FileError(QObject::tr("“%1” is being downloaded already.").arg(nameOf(path)));
    return {path, std::move(file)};
}

bool DestinationFile::create(const QString& path)
{
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (file.number() < 0 && errno != EEXIST)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be created: %2."), errno);
    return file.number() >= 0;
}

bool DestinationFile::isSoleFile(const QString& path)
{
    struct stat status{};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_nlink == 1;
}

SourceIdentity DestinationFile::identity() const
{
    auto identity = identityOf(m_file);
    if (!identity)
        throwFileError(m_path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be read: %2."), errno);
    return *std::move(identity);
}

void DestinationFile::reset(qint64 size) const
{
    if (::ftruncate(m_file.number(), 0) != 0)
        throwFileError(m_path, cannotWrite, errno);
    requireRoom(size);
    const bool reserved = reserve(m_file.number(), size);
    if (!reserved && errno == ENOSPC)
        throwFileError(m_path, cannotWrite, errno);
    if (!reserved && ::ftruncate(m_file.number(), size) != 0)
        throwFileError(m_path, cannotWrite, errno);
}

void DestinationFile::requireRoom(qint64 size) const
{
    struct statvfs room{};
    if (::fstatvfs(m_file.number(), &room) != 0 || room.f_blocks == 0) // some file systems do not say
        return;
    const auto free = static_cast<qint64>(room.f_bavail) * static_cast<qint64>(room.f_frsize);
    if (free < size)
        throw FileError(QObject::tr("There is not enough room for “%1”: it needs %2, and %3 is free.")
                            .arg(nameOf(m_path), byteCountText(size), byteCountText(free)));
}

void DestinationFile::writeAt(qint64 offset, std::span<const char> bytes) const
{
    const auto length = static_cast<qint64>(bytes.size());
    for (qint64 done = 0; done < length;) {
        const auto rest = bytes.subspan(static_cast<std::size_t>(done));
        const ssize_t count = ::pwrite(m_file.number(), rest.data(), std::min(rest.size(), mostAtOnce), offset + done);
        if (count >= 0)
            done += count;
        else if (errno != EINTR)
            throwFileError(m_path, cannotWrite, errno);
    }
}

void DestinationFile::startStoring(qint64 offset, qint64 length) const
{
    ::sync_file_range(m_file.number(), offset, length, SYNC_FILE_RANGE_WRITE);
}

void DestinationFile::sync() const
{
    if (::fdatasync(m_file.number()) != 0)
        throwFileError(m_path, cannotWrite, errno);
    requireInPlace();
}

void DestinationFile::requireInPlace() const
{
    struct stat own{};
    struct stat named{};
    const bool same = ::fstat(m_file.number(), &own) == 0 &&
                      ::stat(QFile::encodeName(m_path).constData(), &named) == 0 && own.st_dev == named.st_dev &&
                      own.st_ino == named.st_ino;
    if (!same)
        throw FileError(QObject::tr("“%1” was moved or removed while it was being downloaded.").arg(nameOf(m_path)));
}

} // namespace palvera
