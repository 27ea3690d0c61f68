#include "transfer/UploadProtocol.h"

#include "service/API.h"

#include <QJsonArray>

#include <cassert>

namespace palvera {

namespace {

QString path(const TransferTarget& target, const std::optional<QString>& sessionId, const QString& operation)
{
    return target.basePath(sessionId) + operation;
}

const TransferTarget::Deliverable& deliverableOf(const TransferTarget& target)
{
    assert(target.asDeliverable());
    return *target.asDeliverable();
}

} // namespace

QJsonObject StartBody::toJson() const
{
    QJsonObject object{{"filename", filename}, {"contentType", contentType}, {"byteSize", byteSize}};
    json::put(object, "confirmed", confirmed);
    return object;
}

QJsonObject BinStartBody::toJson() const
{
    QJsonObject object{{"filename", filename}, {"contentType", contentType}, {"byteSize", byteSize}};
    json::put(object, "folder", folder);
    return object;
}

Started Started::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.object = reader.required<QString>("object"),
            .uploadId = reader.required<QString>("uploadId"),
            .partSize = reader.required<qint64>("partSize"),
            .partCount = reader.required<qint64>("partCount"),
            .sessionId = reader.optional<QString>("sessionId")};
}

QJsonObject PartsBody::toJson() const
{
    return {{"object", object}, {"uploadId", uploadId}, {"from", from}, {"to", to}};
}

PartURL PartURL::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.partNumber = reader.required<qint64>("partNumber"), .url = reader.required<QString>("url")};
}

PartURLs PartURLs::fromJson(const QJsonObject& object)
{
    return {.urls = JsonReader(object).required<QList<PartURL>>("urls")};
}

QJsonObject CompletePart::toJson() const
{
    return {{"partNumber", partNumber}, {"etag", etag}};
}

QJsonObject CompleteBody::toJson() const
{
    QJsonArray list;
    for (const auto& part : parts)
        list.append(part.toJson());
    return {{"object", object}, {"uploadId", uploadId}, {"parts", list}};
}

Completed Completed::fromJson(const QJsonObject& object)
{
    return {.object = JsonReader(object).optional<QString>("object")};
}

QJsonObject AbortBody::toJson() const
{
    return {{"object", object}, {"uploadId", uploadId}};
}

QJsonObject ConfirmBody::toJson() const
{
    QJsonObject members{{"object", object}, {"filename", filename}};
    json::put(members, "durationSeconds", durationSeconds);
    return members;
}

QJsonObject ProgressBody::toJson() const
{
    QJsonObject object{{"bytesSent", bytesSent}, {"bytesTotal", bytesTotal}};
    json::put(object, "bytesPerSecond", bytesPerSecond);
    json::put(object, "status", status);
    return object;
}

Task<Started> startUpload(API& api, const TransferTarget& target, const StartBody& body)
{
    assert(target.asDeliverable());
    return api.fetch<Started>(path(target, {}, "/start"), "POST", body.toJson());
}

Task<Started> startBinUpload(API& api, const TransferTarget::Bin& bin, const BinStartBody& body)
{
    return api.fetch<Started>("orgs/" + pathSegment(bin.orgId) + "/bin/uploads", "POST", body.toJson());
}

Task<PartURLs> signParts(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                         const PartsBody& body)
{
    return api.fetch<PartURLs>(path(target, sessionId, "/parts"), "POST", body.toJson());
}

Task<Completed> completeUpload(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                               const CompleteBody& body)
{
    return api.fetch<Completed>(path(target, sessionId, "/complete"), "POST", body.toJson());
}

Task<void> abortUpload(API& api, const TransferTarget& target, const std::optional<QString>& sessionId,
                       const AbortBody& body)
{
    return api.post(path(target, sessionId, "/abort"), body.toJson());
}

Task<void> confirmAsset(API& api, const TransferTarget& target, const ConfirmBody& body)
{
    return api.post(deliverablePath(deliverableOf(target)) + "/asset", body.toJson());
}

Task<void> reportProgress(API& api, const TransferTarget& target, const ProgressBody& body)
{
    return api.post(deliverablePath(deliverableOf(target)) + "/transfer/progress", body.toJson());
}

} // namespace palvera
