#include "cli/Listing.h"

#include "files/Quantities.h"
#include "service/JsonReader.h"

#include <QHash>

namespace palvera::cli {

namespace {

using Room = Column::Room;
using Side = Column::Side;

Column identifier(const QString& title)
{
    return {.title = title, .side = Side::left, .room = Room::whole};
}

Column text(const QString& title)
{
    return {.title = title, .side = Side::left, .room = Room::some};
}

Column quantity(const QString& title)
{
    return {.title = title, .side = Side::right, .room = Room::whole};
}

/// "2026-01-01 12:00" of an ISO 8601 moment, else what there is of it.
QString momentText(const std::optional<QDateTime>& moment, const std::optional<QString>& raw)
{
    return moment ? moment->toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")) : raw.value_or(QString());
}

QString filedName(const Deliverable& row)
{
    return row.spec ? row.spec->value(QStringLiteral("assetFilename")) : QString();
}

QJsonObject recordOf(const OrgAssetFile& file, const OrgAssetRow* row)
{
    QJsonObject record{{QStringLiteral("key"), file.key},
                       {QStringLiteral("rowId"), file.rowId},
                       {QStringLiteral("object"), file.object},
                       {QStringLiteral("family"), file.family}};
    json::put(record, QStringLiteral("filename"), file.filename);
    json::put(record, QStringLiteral("label"), file.label);
    json::put(record, QStringLiteral("byteSize"), file.byteSize);
    json::put(record, QStringLiteral("deliveredAt"), file.deliveredAt);
    if (row) {
        record[QStringLiteral("projectId")] = row->projectId;
        record[QStringLiteral("projectName")] = row->projectName;
    }
    return record;
}

QJsonObject recordOf(const BinObject& object)
{
    QJsonObject record{{QStringLiteral("key"), object.key},
                       {QStringLiteral("name"), object.name},
                       {QStringLiteral("size"), object.size}};
    json::put(record, QStringLiteral("contentType"), object.contentType);
    json::put(record, QStringLiteral("updatedAt"), object.updatedAt);
    json::put(record, QStringLiteral("family"), object.family);
    return record;
}

QJsonObject recordOf(const Journal& journal)
{
    auto record = cli::recordOf(journal.destination());
    record[QStringLiteral("key")] = journal.key;
    record[QStringLiteral("file")] = journal.filePath;
    record[QStringLiteral("sent")] = confirmedBytes(journal);
    record[QStringLiteral("total")] = journal.byteSize;
    return record;
}

} // namespace

QJsonObject recordOf(const User& user)
{
    QJsonObject record{{QStringLiteral("id"), user.id}, {QStringLiteral("email"), user.email}};
    json::put(record, QStringLiteral("name"), user.name);
    return record;
}

QJsonObject recordOf(const TransferTarget& target)
{
    QJsonObject record{{QStringLiteral("orgId"), target.orgId()}};
    if (const auto* deliverable = target.asDeliverable()) {
        record[QStringLiteral("projectId")] = deliverable->projectId;
        record[QStringLiteral("deliverableId")] = deliverable->deliverableId;
    } else {
        json::put(record, QStringLiteral("folder"), target.asBin()->folder);
    }
    return record;
}

QString personText(const User& user)
{
    return user.name ? QStringLiteral("%1 <%2>").arg(*user.name, user.email) : user.email;
}

QString placeText(const TransferTarget& target)
{
    if (const auto* deliverable = target.asDeliverable())
        return QStringLiteral("deliverable “%1”").arg(deliverable->deliverableId);
    return QStringLiteral("Uploads bin of “%1”").arg(target.orgId());
}

Listing listingOf(const QList<Org>& orgs)
{
    Listing listing{.columns = {identifier(QStringLiteral("ORG")), text(QStringLiteral("NAME"))},
                    .whenEmpty = QStringLiteral("No organisation shares work with you.")};
    for (const auto& org : orgs) {
        listing.rows.append({org.id, org.name});
        listing.records.append(org.toJson());
    }
    return listing;
}

Listing listingOf(const QList<Project>& projects)
{
    Listing listing{.columns = {identifier(QStringLiteral("PROJECT")), text(QStringLiteral("NAME")),
                                text(QStringLiteral("REFERENCE")), text(QStringLiteral("STATUS"))},
                    .whenEmpty = QStringLiteral("That organisation has no projects.")};
    for (const auto& project : projects) {
        listing.rows.append(
            {project.id, project.name, project.reference.value_or(QString()), project.status.value_or(QString())});
        listing.records.append(project.toJson());
    }
    return listing;
}

Listing listingOf(const QList<Deliverable>& deliverables)
{
    Listing listing{.columns = {identifier(QStringLiteral("DELIVERABLE")), text(QStringLiteral("STATUS")),
                                text(QStringLiteral("LABEL")), text(QStringLiteral("LANGUAGE")),
                                text(QStringLiteral("TITLE")), text(QStringLiteral("FILE"))},
                    .whenEmpty = QStringLiteral("That project has no deliverables.")};
    for (const auto& row : deliverables) {
        listing.rows.append({row.id, row.status, row.label, row.language.value_or(QString()),
                             row.contextLine().value_or(QString()), filedName(row)});
        listing.records.append(row.toJson());
    }
    return listing;
}

Listing listingOf(const QList<OrgAssetFile>& files, const QList<OrgAssetRow>& rows)
{
    Listing listing{.columns = {identifier(QStringLiteral("DELIVERABLE")), text(QStringLiteral("FILE")),
                                text(QStringLiteral("FAMILY")), quantity(QStringLiteral("SIZE")),
                                text(QStringLiteral("DELIVERED")), text(QStringLiteral("PROJECT"))},
                    .whenEmpty = QStringLiteral("No delivered files.")};
    QHash<QString, const OrgAssetRow*> byId;
    for (const auto& row : rows)
        byId.insert(row.deliverable.id, &row);
    for (const auto& file : files) {
        const auto* row = byId.value(file.rowId);
        listing.rows.append({file.rowId, file.filename.value_or(file.label.value_or(QString())), file.family,
                             file.byteSize ? byteCountText(*file.byteSize) : QString(),
                             momentText(file.deliveredDate(), file.deliveredAt), row ? row->projectName : QString()});
        listing.records.append(recordOf(file, row));
    }
    return listing;
}

Listing listingOf(const QString& prefix, const QStringList& folders, const QList<BinObject>& objects)
{
    Listing listing{.columns = {identifier(QStringLiteral("KEY")), quantity(QStringLiteral("SIZE")),
                                text(QStringLiteral("FAMILY")), text(QStringLiteral("ADDED"))},
                    .whenEmpty = QStringLiteral("Nothing there.")};
    for (const auto& folder : folders) {
        auto path = folder.startsWith(prefix) ? folder : prefix + folder;
        listing.rows.append({path, {}, QStringLiteral("folder"), {}});
        listing.records.append({{QStringLiteral("folder"), path}});
    }
    for (const auto& object : objects) {
        listing.rows.append({object.key, byteCountText(object.size), object.family.value_or(QString()),
                             momentText(object.updatedDate(), object.updatedAt)});
        listing.records.append(recordOf(object));
    }
    return listing;
}

Listing listingOf(const std::vector<Journal>& journals)
{
    Listing listing{.columns = {identifier(QStringLiteral("KEY")), quantity(QStringLiteral("SENT")),
                                quantity(QStringLiteral("OF")), text(QStringLiteral("FILE")),
                                text(QStringLiteral("TO"))},
                    .whenEmpty = QStringLiteral("No interrupted uploads.")};
    for (const auto& journal : journals) {
        listing.rows.append({journal.key, byteCountText(confirmedBytes(journal)), byteCountText(journal.byteSize),
                             journal.filePath, placeText(journal.destination())});
        listing.records.append(recordOf(journal));
    }
    return listing;
}

} // namespace palvera::cli
