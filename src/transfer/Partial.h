#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <set>

namespace palvera {

/// The resume record of one download, in a file beside its destination: which chunks are on the disk.
struct Partial {
    std::set<qint64> done; ///< indexes of chunks, from 0
    qint64 total = 0;      ///< bytes of the whole file when the record was written; 0 while that is not known
    QString tag = {};      ///< storage's tag of the object then; empty when it gave none
    QString source = {};   ///< the object that is downloaded, as whoever asked for it names it
    QByteArray file = {};  ///< the kernel's handle of the destination, see SourceIdentity; empty where it has none

    /// Bytes on the disk, of chunks of `chunkSize` bytes.
    qint64 received(qint64 chunkSize) const;

    bool operator==(const Partial&) const = default;
};

QByteArray encodePartial(const Partial& partial);
/// Nothing when `bytes` are no record.
std::optional<Partial> decodePartial(const QByteArray& bytes);

/// The record's file: that of `destination` with ".pvpart" after the whole name.
QString recordPath(const QString& destination);
/// Nothing when there is no record that reads and decodes. A link is no record.
std::optional<Partial> loadPartial(const QString& destination);
/// Replaces the record in one step. Throws FileError.
void savePartial(const QString& destination, const Partial& partial);
/// Whether it is gone.
bool removePartial(const QString& destination);

} // namespace palvera
