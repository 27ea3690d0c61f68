#pragma once

#include "async/Task.h"
#include "transfer/TransferTarget.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace palvera {

class API;

/// Opens an upload to a deliverable.
struct StartBody {
    QString filename;    ///< last path component, with its extension
    QString contentType; ///< MIME type
    qint64 byteSize = 0;
    std::optional<bool> confirmed = {}; ///< true when the user answered the platform's doubt; never false

    QJsonObject toJson() const;
    bool operator==(const StartBody&) const = default;
};

/// Opens an upload into the bin.
struct BinStartBody {
    QString filename;
    QString contentType;
    qint64 byteSize = 0;
    std::optional<QString> folder = {};

    QJsonObject toJson() const;
    bool operator==(const BinStartBody&) const = default;
};

/// How the platform opened an upload. `object` and `uploadId` go back unchanged in every later call.
struct Started {
    QString object; ///< the file's storage key
    QString uploadId;
    qint64 partSize = 0; ///< bytes
    qint64 partCount = 0;
    std::optional<QString> sessionId = {}; ///< of an upload into the bin

    static Started fromJson(const QJsonObject& object);
    bool operator==(const Started&) const = default;
};

/// Asks for the addresses of the parts `from` to `to`, counted from 1, both included.
struct PartsBody {
    QString object;
    QString uploadId;
    qint64 from = 0;
    qint64 to = 0;

    QJsonObject toJson() const;
    bool operator==(const PartsBody&) const = default;
};

struct PartURL {
    qint64 partNumber = 0; ///< from 1
    QString url;           ///< signed; what it holds is for storage alone

    static PartURL fromJson(const QJsonObject& object);
    bool operator==(const PartURL&) const = default;
};

struct PartURLs {
    QList<PartURL> urls;

    static PartURLs fromJson(const QJsonObject& object);
    bool operator==(const PartURLs&) const = default;
};

struct CompletePart {
    qint64 partNumber = 0; ///< from 1
    QString etag;          ///< storage's tag, without its quotes

    QJsonObject toJson() const;
    bool operator==(const CompletePart&) const = default;
};

/// Closes an upload: every part of it, in ascending order.
struct CompleteBody {
    QString object;
    QString uploadId;
    QList<CompletePart> parts;

    QJsonObject toJson() const;
    bool operator==(const CompleteBody&) const = default;
};

struct Completed {
    std::optional<QString> object;

    static Completed fromJson(const QJsonObject& object);
    bool operator==(const Completed&) const = default;
};

/// Gives an upload up.
struct AbortBody {
    QString object;
    QString uploadId;

    QJsonObject toJson() const;
    bool operator==(const AbortBody&) const = default;
};

/// Files a completed upload on its deliverable.
struct ConfirmBody {
    QString object;
    QString filename;
    std::optional<double> durationSeconds = {};

    QJsonObject toJson() const;
    bool operator==(const ConfirmBody&) const = default;
};

/// Tells the platform how far an upload is.
struct ProgressBody {
    qint64 bytesSent = 0;
    qint64 bytesTotal = 0;
    std::optional<double> bytesPerSecond = {};
    std::optional<QString> status = {};

    QJsonObject toJson() const;
    bool operator==(const ProgressBody&) const = default;
};

// The operations. Each is one call to the service and throws what API::send and API::fetch throw. `api` must live
// until the operation ends; the other arguments are used up at once. `sessionId` is that of an upload into the bin.

/// `target` must be a deliverable.
Task<Started> startUpload(API& api, const TransferTarget& target, const StartBody& body);
Task<Started> startBinUpload(API& api, const TransferTarget::Bin& bin, const BinStartBody& body);
Task<PartURLs> signParts(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                         const PartsBody& body);
Task<Completed> completeUpload(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                               const CompleteBody& body);
Task<void> abortUpload(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                       const AbortBody& body);
/// `target` must be a deliverable.
Task<void> confirmAsset(API& api, const TransferTarget& target, const ConfirmBody& body);
/// `target` must be a deliverable.
Task<void> reportProgress(API& api, const TransferTarget& target, const ProgressBody& body);

} // namespace palvera
