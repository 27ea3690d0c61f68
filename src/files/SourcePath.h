#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

// Paths of files that are sent. To the system they are bytes, of which not all are UTF-8: in a path as a text, a byte
// that is none stands as a character of its own, U+DC00 and its value, which no text from elsewhere holds (as in
// Python, PEP 383). visibleText makes U+FFFD of it, for people and for other machines.

/// The path as a text.
QString pathFromBytes(const QByteArray& bytes);
/// The path as the system takes it.
QByteArray pathToBytes(const QString& path);
/// The absolute path of what `path` names from the folder in which the program works.
QString absolutePath(const QString& path);

/// The last component for people and other machines: with U+FFFD for each such byte.
QString readableName(const QString& path);

/// What is at a path, links followed.
struct PathStatus {
    bool isFolder = false;
    bool isOrdinary = false; ///< a file, and no pipe or device
    qint64 size = 0;         ///< bytes
};

/// Nothing when nothing is there, or nobody may look. Any thread, may block.
std::optional<PathStatus> statusOf(const QString& path);

} // namespace palvera
