#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

class FileDescriptor;

/// What tells a file from every other, and from what it was before somebody wrote into it. A plain value.
struct SourceIdentity {
    /// The kernel's own name of the file, with the generation that tells it from an earlier file of its inode number.
    /// Empty where the file system has none or makes its numbers up.
    QByteArray handle;
    qint64 size = 0;    ///< bytes; 0 for a folder, whose size and time change with what lies in it
    qint64 changed = 0; ///< when its contents last changed, nanoseconds since 1970-01-01 UTC; 0 for a folder

    /// Whether both are one and the same file, known by its handle, and not written to in between.
    bool isSameFileAs(const SourceIdentity& other) const { return !handle.isEmpty() && *this == other; }

    bool operator==(const SourceIdentity&) const = default;
};

/// Of the file or folder at `path`, links followed; nothing when none can be looked at. Any thread, may block.
std::optional<SourceIdentity> identityOf(const QString& path);
/// Of an open file; nothing when it cannot be looked at.
std::optional<SourceIdentity> identityOf(const FileDescriptor& file);

} // namespace palvera
