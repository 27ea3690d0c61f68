#pragma once

#include "transfer/TransferTarget.h"
#include "transfer/UploadRules.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

/// The record of one unfinished upload: which multipart upload of the platform a file belongs to, how it is cut into
/// parts, which of them storage confirmed, and how to find the file again and tell that it is still the same.
struct Journal {
    QString key; ///< the journal's identity, and its file's name
    QString orgId;
    QString projectId; ///< empty for an upload into the bin
    QString object;
    QString uploadId;
    qint64 partSize = 0;
    int partCount = 0;
    qint64 byteSize = 0; ///< of the file when the upload began
    QString filePath;
    QString filename;
    std::optional<QByteArray> bookmark;
    QString fileStamp; ///< of the file when the upload began, see `fileStamp`
    ConfirmedParts done;
    std::optional<TransferTarget> target;
    std::optional<QString> sessionId; ///< of an upload into the bin
    std::optional<QString> service;   ///< the service address that it was begun at; nothing in earlier versions
    // Nothing in earlier versions, and where it is not known.
    std::optional<QString> account; ///< id of the user who began it
    std::optional<QString> label;   ///< what its place is called
    std::optional<QString> client;  ///< the organisation's name

    bool operator==(const Journal&) const = default;

    /// Where the upload goes; a journal that does not say belongs to the deliverable that its key names.
    TransferTarget destination() const;
};

/// Bytes that storage has confirmed, where the last part counts as a whole one, as the engine has it.
qint64 confirmedBytes(const Journal& journal);

/// The journal as one line of JSON.
QByteArray encodeJournal(const Journal& journal);

/// Throws DecodingError when a key that every journal has is missing or holds the wrong type, or when the parts it
/// speaks of cannot be those of a file of its size.
Journal decodeJournal(const QByteArray& bytes);

/// Whether an upload can be recorded under `key`: no segment of it, between slashes, is empty, "." or "..", and its
/// file's name is not longer than file systems take.
bool isUsableKey(const QString& key);

/// The name of the journal's file, without its folder: the key and ".json", where characters that no file name can hold
/// are escaped with "%", and "%" with them. A key without such characters stays as it is.
QString journalFileName(const QString& key);

/// The journal key of the file at `path` on its way into the bin of `orgId`: the same file sent to the same folder of
/// the same bin finds its earlier journal. The number is FNV-1a, 64 bits (Fowler, Noll, Vo).
QString binJournalKey(const QString& orgId, const std::optional<QString>& folder, const QString& path);

} // namespace palvera
