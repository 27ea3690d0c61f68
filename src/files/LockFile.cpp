#include "files/LockFile.h"

#include "files/FileError.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace palvera {

namespace {

constexpr qsizetype longestNote = 64 << 10;

} // namespace

LockFile LockFile::open(const QString& path)
{
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (file.number() < 0)
        throwFileError(path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be made: %2."), errno);
    return {path, std::move(file)};
}

LockFile::~LockFile()
{
    if (m_isOurs && m_file.number() >= 0)
        ::unlink(
            QFile::encodeName(m_path).constData()); // before the lock goes, so that nobody takes that of a lost file
}

LockFile::Outcome LockFile::tryLock()
{
    if (::flock(m_file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            return Outcome::held;
        throwFileError(m_path, QT_TRANSLATE_NOOP("QObject", "“%1” cannot be locked: %2."), errno);
    }
    m_isOurs = isInPlace();
    if (!m_isOurs)
        ::flock(m_file.number(), LOCK_UN);
    return m_isOurs ? Outcome::taken : Outcome::released;
}

bool LockFile::isInPlace() const
{
    struct stat own{};
    struct stat named{};
    return ::fstat(m_file.number(), &own) == 0 && ::stat(QFile::encodeName(m_path).constData(), &named) == 0 &&
           own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

void LockFile::setNote(const QByteArray& text) const
{
    // One write, so that a reader meets the earlier note or this one, or nothing in between.
    if (::ftruncate(m_file.number(), 0) == 0)
        (void)!::pwrite(m_file.number(), text.constData(), std::size_t(text.size()), 0);
}

QByteArray LockFile::note() const
{
    QByteArray text(longestNote, Qt::Uninitialized);
    const ssize_t count = ::pread(m_file.number(), text.data(), std::size_t(text.size()), 0);
    text.truncate(std::max<qsizetype>(count, 0));
    return text;
}

bool LockFile::isHeld(const QString& path)
{
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    return file.number() >= 0 && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace palvera
