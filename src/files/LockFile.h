#pragma once

#include "files/FileDescriptor.h"

#include <QByteArray>
#include <QString>

namespace palvera {

/// A lock that the kernel keeps for whoever holds a file open: it is gone with its owner, however that ends, and what
/// is left of the file means nothing. The owner may leave a short note in it for those who wait. One thread at a time.
class LockFile {
public:
    enum class Outcome {
        taken,    ///< it is ours
        held,     ///< by somebody else, in this process or another
        released, ///< by somebody else, who removed the file: read the note that was left, then open it anew
    };

    /// Opens the file at `path`, made if need be, without taking the lock. Throws FileError.
    static LockFile open(const QString& path);
    LockFile(LockFile&& other) noexcept = default;
    LockFile& operator=(LockFile&&) = delete;
    /// Removes the file and gives the lock up where it is ours.
    ~LockFile();

    /// Never waits. Throws FileError where the file system knows no locks.
    Outcome tryLock();
    /// Leaves `text` for others to read. Only while the lock is ours; a failure is ignored.
    void setNote(const QByteArray& text) const;
    /// What the owner, or the last one, has left; empty when nothing.
    QByteArray note() const;

    /// Whether somebody holds the lock of the file at `path`.
    static bool isHeld(const QString& path);

private:
    LockFile(QString path, FileDescriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    bool isInPlace() const;

    QString m_path;
    FileDescriptor m_file;
    bool m_isOurs = false;
};

} // namespace palvera
