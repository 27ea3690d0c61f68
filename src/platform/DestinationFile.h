#pragma once

#include "platform/FileDescriptor.h"

#include <QString>

#include <memory>
#include <mutex>
#include <span>

namespace palvera {

/// A file that is written at any position, by several lanes at once, and held against other programs of ours while it
/// is open. Every operation may be called from any thread, blocks on the disk and throws FileError.
class DestinationFile {
public:
    /// Opens the regular file at `path`, making it if there is none. Fails when another DestinationFile, in this
    /// process or another, holds it.
    static DestinationFile open(const QString& path);
    /// Makes an empty file at `path`; false when something stands there.
    static bool create(const QString& path);

    qint64 size() const;
    /// Empties the file and gives it `size` bytes again, all zero, with real room for them where the file system can
    /// reserve it. Fails before that when the file system has less room.
    void reset(qint64 size) const;
    /// The bytes may be in the system's memory only until `sync`.
    void writeAt(qint64 offset, std::span<const char> bytes) const;
    /// Returns once everything written so far is on the disk and the file still is the one that its path names.
    void sync() const;

private:
    DestinationFile(QString path, FileDescriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    void requireRoom(qint64 size) const;
    void requireInPlace() const;

    QString m_path;
    FileDescriptor m_file;
    // Held while bytes are written: the kernel lets one thread at a time write to a file, and the others would spin
    // until it is their turn (measured on ext4: up to three times the processor time).
    std::unique_ptr<std::mutex> m_writing = std::make_unique<std::mutex>();
};

} // namespace palvera
