#include "service/AssetRecords.h"

#include "service/InternetDate.h"
#include "service/JsonReader.h"

namespace palvera {

std::optional<QDateTime> OrgAssetFile::deliveredDate() const
{
    return deliveredAt ? parseInternetDate(*deliveredAt) : std::nullopt;
}

OrgAssetFile OrgAssetFile::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.key = reader.required<QString>("key"),
            .rowId = reader.required<QString>("rowId"),
            .object = reader.textOrEmpty("object"),
            .filename = reader.lenient<QString>("filename"),
            .label = reader.lenient<QString>("label"),
            .family = reader.textOrEmpty("family"),
            .byteSize = reader.byteCount("byteSize"),
            .deliveredAt = reader.lenient<QString>("deliveredAt")};
}

OrgAssetRow OrgAssetRow::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.deliverable = Deliverable::fromJson(object),
            .projectId = reader.required<QString>("projectId"),
            .projectName = reader.textOrEmpty("projectName"),
            .projectReference = reader.lenient<QString>("projectReference")};
}

OrgAssetsPage OrgAssetsPage::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.files = reader.required<QList<OrgAssetFile>>("files"),
            .rows = reader.required<QList<OrgAssetRow>>("rows"),
            .total = reader.required<qint64>("total"),
            .page = reader.required<qint64>("page"),
            .pageSize = reader.required<qint64>("pageSize")};
}

SignedURL SignedURL::fromJson(const QJsonObject& object)
{
    return {.url = JsonReader(object).required<QString>("url")};
}

} // namespace palvera
