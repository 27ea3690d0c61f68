#pragma once

#include "files/FileDescriptor.h"
#include "files/SourceIdentity.h"

#include <QString>

#include <span>

namespace palvera {

/// A file that is read at any position, by several lanes at once. Every operation may be called from any thread and
/// may block on the disk.
class SourceFile {
public:
    /// Opens the regular file at `path` for reading. Throws FileError.
    static SourceFile open(const QString& path);

    /// What it is at this moment. Throws FileError.
    SourceIdentity identity() const;
    /// Fills `into` with the bytes from `offset` on and returns how many were read: fewer than asked only when the
    /// file ends before. Throws FileError.
    qint64 readAt(qint64 offset, std::span<char> into) const;
    /// Tells the system that `length` bytes from `offset` on are read soon. A hint: returns at once and never fails.
    void willNeed(qint64 offset, qint64 length) const;

private:
    SourceFile(QString path, FileDescriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    QString m_path;
    FileDescriptor m_file;
};

} // namespace palvera
