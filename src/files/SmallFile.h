#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

/// The contents of the ordinary file at `path`, a record of ours of at most `limit` bytes. Nothing when there is no
/// such file, when it is larger or cannot be read, and where the path is a link, a pipe or a device, which others may
/// have put there. Any thread, may block on the disk.
std::optional<QByteArray> readSmallFile(const QString& path, qint64 limit);

/// Adds `bytes` to the end of the ordinary file at `path` in one write, making it for its owner alone if need be.
/// Failures are ignored; a link, a pipe or a device is left alone.
void appendToFile(const QString& path, const QByteArray& bytes);

} // namespace palvera
