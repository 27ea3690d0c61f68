#pragma once

#include <QString>

namespace palvera {

/// A file name for what the platform calls `name`: its last component, in NFC, without control characters, not hidden,
/// never empty or a folder's name, and short enough for the record's extension and a number.
QString safeFileName(const QString& name);

/// The file that one download writes, claimed so that no other file is touched: an existing file is taken only when the
/// record beside it says that it is the unfinished download of the same `source`; any other makes the name
/// "Name 2.mov", "Name 3.mov" and so on. Any thread; blocks on the disk.
class DownloadPlace {
public:
    /// Claims a place in `folder`, which must exist, creating an empty file and its record if it is new. Throws
    /// FileError.
    static DownloadPlace claim(const QString& folder, const QString& name, const QString& source);

    const QString& path() const { return m_path; }
    /// Removes the file and its record again if no chunk of it is on the disk: a download that never began leaves
    /// nothing behind.
    void removeIfEmpty() const;

private:
    explicit DownloadPlace(QString path) : m_path(std::move(path)) {}

    QString m_path;
};

} // namespace palvera
