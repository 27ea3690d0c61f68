#pragma once

#include "files/FileDescriptor.h"
#include "files/SourceIdentity.h"

#include <QString>

#include <span>

namespace palvera {

/// A file that is written at any position, by several lanes at once, and held against other programs of ours while it
/// is open. Every operation may be called from any thread, blocks on the disk and throws FileError.
class DestinationFile {
public:
    /// Opens the regular file at `path`, making it if there is none. Fails when another DestinationFile, in this
    /// process or another, holds it, and when the file has a second name, under which somebody may keep it.
    static DestinationFile open(const QString& path);
    /// Makes an empty file at `path`; false when something stands there.
    static bool create(const QString& path);
    /// Whether a regular file stands at `path`, no link, with no second name.
    static bool isSoleFile(const QString& path);

    SourceIdentity identity() const;
    /// Empties the file and gives it `size` bytes again, all zero, with real room for them where the file system can
    /// reserve it. Fails before that when the file system has less room.
    void reset(qint64 size) const;
    /// The bytes may be in the system's memory only until `sync`. One thread at a time writes to a file; the others
    /// spin until it is their turn.
    void writeAt(qint64 offset, std::span<const char> bytes) const;
    /// Sends bytes that are written on their way to the disk, so that `sync` finds little left to wait for. Only a
    /// hint.
    void startStoring(qint64 offset, qint64 length) const;
    /// Returns once everything written so far is on the disk and the file still is the one that its path names.
    void sync() const;

private:
    DestinationFile(QString path, FileDescriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    void requireRoom(qint64 size) const;
    void requireInPlace() const;

    QString m_path;
    FileDescriptor m_file;
};

} // namespace palvera
