#pragma once

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace palvera {

/// Bytes in which every position can be told by its neighbours; another `seed` gives others.
inline QByteArray patterned(qint64 size, quint32 seed = 1)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (auto& byte : bytes)
        byte = char((seed = seed * 1'664'525 + 1'013'904'223) >> 24);
    return bytes;
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be opened");
}

inline void writeFile(const QString& path, const QByteArray& bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly)
{
    QFile file(path);
    if (!file.open(mode) || file.write(bytes) != bytes.size())
        throw std::runtime_error("the test cannot write " + path.toStdString());
}

/// The names of all that stands in a folder.
inline QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace palvera
