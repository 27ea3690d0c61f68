#pragma once

#include "localplatform/ByteStore.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <map>
#include <optional>

namespace palvera::local {

/// One part that storage holds.
struct StoredPart {
    qint64 bytes = 0;
    QByteArray tag; ///< without quotes
    int times = 0;  ///< how often it was stored
};

/// Where an upload goes: a deliverable, or the bin of an organisation when `deliverable` is empty.
struct UploadTarget {
    QString org;
    QString project;
    QString deliverable;
    QString folder; ///< of the bin: empty, or ending in a slash

    bool isBin() const { return deliverable.isEmpty(); }
    bool operator==(const UploadTarget&) const = default;
};

/// One multipart upload, from its start on.
struct Upload {
    enum class Phase { open, complete, aborted };

    qint64 serial = 0;
    UploadTarget target;
    QString filename;
    QString contentType;
    QString object;
    QString uploadId;
    QString session; ///< of the bin; empty for a deliverable
    qint64 byteSize = 0;
    qint64 partSize = 0;
    int partCount = 0;
    Phase phase = Phase::open;
    bool filed = false;
    QString completedAt; ///< ISO 8601
    std::map<int, StoredPart> parts = {};

    qint64 offsetOf(int part) const { return (part - 1) * partSize; }
    /// The length that `part` must have.
    qint64 lengthOf(int part) const { return std::min(partSize, byteSize - offsetOf(part)); }
    Staging staging() const { return {.serial = serial, .byteSize = byteSize, .filename = filename}; }
};

/// What survives a restart, but for the parts (see PartsLog).
QJsonObject toJson(const Upload& upload);
Upload uploadFromJson(const QJsonObject& json);

} // namespace palvera::local
