#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

/// Finds a file or folder again that the user once chose, also after it was renamed within its folder.
namespace bookmark {

struct Resolved {
    QString path;
    bool stale = false; ///< it was renamed: make a fresh bookmark of `path` and keep that

    bool operator==(const Resolved&) const = default;
};

/// Bytes that stand for what is at `path` at this moment, to be kept as they are; nothing when nothing is there.
std::optional<QByteArray> make(const QString& path);

/// Where that file or folder is: at its path while that still names it, else beside it under another name. Nothing
/// when it is at neither place or `bytes` are no bookmark. Reads the folder in the second case. Any thread.
std::optional<Resolved> resolve(const QByteArray& bytes);

} // namespace bookmark

} // namespace palvera
