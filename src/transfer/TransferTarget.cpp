#include "transfer/TransferTarget.h"

#include "service/Addresses.h"
#include "service/JsonReader.h"

#include <QHash>
#include <QObject>

namespace palvera {

namespace {

const QString deliverableKey = QStringLiteral("deliverable");
const QString binKey = QStringLiteral("bin");
const QString orgIdKey = QStringLiteral("orgId");
const QString projectIdKey = QStringLiteral("projectId");
const QString deliverableIdKey = QStringLiteral("deliverableId");
const QString folderKey = QStringLiteral("folder");

} // namespace

const QString& TransferTarget::orgId() const
{
    return std::visit([](const auto& fields) -> const QString& { return fields.orgId; }, m_case);
}

QString TransferTarget::projectId() const
{
    const auto* deliverable = asDeliverable();
    return deliverable ? deliverable->projectId : QString();
}

QString TransferTarget::basePath(const std::optional<QString>& sessionId) const
{
    if (const auto* deliverable = asDeliverable())
        return deliverablePath(*deliverable) + QStringLiteral("/transfer");
    return QStringLiteral("orgs/") + pathSegment(orgId()) + QStringLiteral("/bin/uploads/") +
           alphanumericSegment(sessionId.value_or(QString()));
}

QJsonObject TransferTarget::toJson() const
{
    if (const auto* deliverable = asDeliverable())
        return {{deliverableKey, QJsonObject{{orgIdKey, deliverable->orgId},
                                             {projectIdKey, deliverable->projectId},
                                             {deliverableIdKey, deliverable->deliverableId}}}};
    QJsonObject fields{{orgIdKey, orgId()}};
    json::put(fields, folderKey, asBin()->folder);
    return {{binKey, fields}};
}

TransferTarget TransferTarget::fromJson(const QJsonObject& object)
{
    const JsonReader reader(object);
    if (reader.contains(deliverableKey) == reader.contains(binKey))
        throw DecodingError({}, QObject::tr("Invalid number of keys found, expected one."));
    const bool isBin = reader.contains(binKey);
    const auto fields = reader.required<QJsonObject>(isBin ? binKey : deliverableKey);
    const JsonReader inner(fields);
    if (isBin)
        return Bin{.orgId = inner.required<QString>(orgIdKey), .folder = inner.optional<QString>(folderKey)};
    return Deliverable{.orgId = inner.required<QString>(orgIdKey),
                       .projectId = inner.required<QString>(projectIdKey),
                       .deliverableId = inner.required<QString>(deliverableIdKey)};
}

std::size_t qHash(const TransferTarget& target, std::size_t seed) noexcept
{
    if (const auto* deliverable = target.asDeliverable())
        return qHashMulti(seed, 0, deliverable->orgId, deliverable->projectId, deliverable->deliverableId);
    const auto& folder = target.asBin()->folder;
    return qHashMulti(seed, 1, target.orgId(), folder.has_value(), folder.value_or(QString()));
}

QString deliverablePath(const TransferTarget::Deliverable& deliverable)
{
    return QStringLiteral("orgs/") + pathSegment(deliverable.orgId) + QStringLiteral("/projects/") +
           pathSegment(deliverable.projectId) + QStringLiteral("/deliverables/") +
           pathSegment(deliverable.deliverableId);
}

} // namespace palvera
