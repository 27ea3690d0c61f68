#pragma once

#include "files/SourceIdentity.h"
#include "transfer/Partial.h"

#include <QString>

#include <optional>

namespace palvera {

/// A file name for what the platform calls `name`: its last component, in NFC, without characters that nobody sees or
/// that turn others round, without blanks at its ends, not hidden, never empty, a folder's name or that of a record,
/// and short enough for the record's extension and a number.
QString safeFileName(const QString& name);

/// The file that one download writes, claimed so that no other file is touched: an existing file is taken only when the
/// record beside it says that this very file is the unfinished download of the same `source`; any other makes the name
/// "Name 2.mov", "Name 3.mov" and so on. A record without its file means nothing. Any thread; blocks on the disk.
class DownloadPlace {
public:
    /// Claims a place in `folder`, which must exist, creating an empty file and its record if it is new. Throws
    /// FileError.
    static DownloadPlace claim(const QString& folder, const QString& name, const QString& source);

    /// What is on the disk of the unfinished download of `source` to `path`; nothing where that is another file, or
    /// none.
    static std::optional<Partial> progressOf(const QString& path, const QString& source);
    /// Removes such a file and its record, unless another program writes it. Does nothing to any other file. Throws
    /// FileError.
    static void discard(const QString& path, const QString& source);

    const QString& path() const { return m_path; }
    /// Removes the file and its record again if this claim made them and no chunk is on the disk: a download that never
    /// began leaves nothing behind.
    void removeIfEmpty() const;

private:
    explicit DownloadPlace(QString path) : m_path(std::move(path)) {}

    /// Nothing when something stands there.
    static std::optional<DownloadPlace> create(const QString& path);

    QString m_path;
    std::optional<SourceIdentity> m_made; // the file, where this claim made it
};

} // namespace palvera
