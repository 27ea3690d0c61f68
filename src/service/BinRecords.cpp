#include "service/BinRecords.h"

#include "service/InternetDate.h"
#include "service/JsonReader.h"

namespace palvera {

namespace {

/// The last component of a storage key, past any "/" that it ends in.
QString lastComponent(QStringView key)
{
    while (key.size() > 1 && key.endsWith(u'/'))
        key.chop(1);
    return key.sliced(key.lastIndexOf(u'/') + 1).toString();
}

} // namespace

std::optional<QDateTime> BinObject::updatedDate() const
{
    return updatedAt ? parseInternetDate(*updatedAt) : std::nullopt;
}

BinObject BinObject::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    const auto key = reader.required<QString>("key");
    return {.key = key,
            .name = reader.lenient<QString>("name").value_or(lastComponent(key)),
            .size = reader.byteCount("size").value_or(0),
            .contentType = reader.lenient<QString>("contentType"),
            .updatedAt = reader.lenient<QString>("updatedAt"),
            .family = reader.lenient<QString>("family"),
            .previewUrl = reader.lenient<QString>("previewUrl")};
}

BinPage BinPage::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.objects = reader.required<QList<BinObject>>("objects"),
            .folders = reader.optional<QList<QString>>("folders"),
            .nextCursor = reader.optional<QString>("nextCursor")};
}

BinDownload BinDownload::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    return {.url = reader.required<QString>("url"),
            .filename = reader.optional<QString>("filename"),
            .expiresInSeconds = reader.optional<qint64>("expiresInSeconds")};
}

} // namespace palvera
