#include "transfers/StoredObject.h"

#include "service/API.h"
#include "service/BrowsingOperations.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace palvera {

namespace {

QString identityOf(const TransferTarget& target, const QString& key)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{target.toJson(), key}).toJson(QJsonDocument::Compact));
}

Task<std::optional<qint64>> deliveredSize(std::shared_ptr<API> api, TransferTarget::Deliverable where, QString object)
{
    const auto all = co_await listDeliverables(*api, where.orgId, where.projectId);
    for (const auto& deliverable : all)
        if (deliverable.id == where.deliverableId && deliverable.assetObject() == object)
            co_return deliverable.expectedBytes();
    co_return std::nullopt;
}

Task<QString> deliveredAddress(std::shared_ptr<API> api, TransferTarget::Deliverable where, QString object)
{
    co_return co_await assetURL(*api, where.orgId, where.projectId, where.deliverableId, object);
}

Task<QString> binAddress(std::shared_ptr<API> api, QString orgId, QString key)
{
    co_return (co_await binDownloadURL(*api, orgId, key)).url;
}

} // namespace

StoredObject deliveredFile(API& api, const TransferTarget::Deliverable& deliverable, const QString& object)
{
    return {
        .target = deliverable,
        .identity = identityOf(deliverable, object),
        .key = object,
        .address = [api = api.pinned(), deliverable, object] { return deliveredAddress(api, deliverable, object); },
        .listedSize = [api = api.pinned(), deliverable, object] { return deliveredSize(api, deliverable, object); }};
}

StoredObject binObject(API& api, const QString& orgId, const QString& key)
{
    TransferTarget bin = TransferTarget::Bin{.orgId = orgId, .folder = {}};
    return {.target = bin, .identity = identityOf(bin, key), .key = key, .address = [api = api.pinned(), orgId, key] {
                return binAddress(api, orgId, key);
            }};
}

} // namespace palvera
