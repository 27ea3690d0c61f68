#pragma once

#include "files/SourceIdentity.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

/// Finds a file or folder again that the user once chose, also after it was renamed within its folder.
namespace bookmark {

/// What a bookmark holds.
struct Contents {
    QString path;                           ///< absolute
    std::optional<SourceIdentity> identity; ///< nothing in those of earlier versions

    bool operator==(const Contents&) const = default;
};

struct Resolved {
    QString path;
    bool stale = false; ///< what is there was renamed or is not what it was: make a fresh bookmark of `path`

    bool operator==(const Resolved&) const = default;
};

/// Bytes that stand for what is at `path` at this moment, to be kept as they are; nothing when nothing is there.
std::optional<QByteArray> make(const QString& path);
/// As `make`, for an identity that is known.
QByteArray make(const QString& path, const SourceIdentity& identity);

/// Nothing when `bytes` are no bookmark.
std::optional<Contents> read(const QByteArray& bytes);

/// Where that file or folder is: at its path whenever anything is there, be it another file; else beside it under
/// another name, where a file bears its handle, its size and its time. Nothing when it is at neither place or `bytes`
/// are no bookmark. Reads the folder in the second case. Any thread.
std::optional<Resolved> resolve(const QByteArray& bytes);

} // namespace bookmark

} // namespace palvera
