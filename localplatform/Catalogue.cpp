#include "localplatform/Catalogue.h"

#include <QJsonArray>
#include <QSet>

namespace palvera::local {

namespace {

QString idOf(const QJsonObject& row)
{
    return row[QStringLiteral("id")].toString();
}

QJsonObject* findRow(OrganisationData& org, const QString& project, const QString& id)
{
    for (auto& candidate : org.projects)
        if (candidate.id == project)
            for (auto& row : candidate.deliverables)
                if (idOf(row) == id)
                    return &row;
    return nullptr;
}

template <class Items>
QJsonArray jsonOf(const Items& items)
{
    QJsonArray array;
    for (const auto& item : items)
        array.append(item.json);
    return array;
}

bool holds(const QString& text, const QString& query)
{
    return text.contains(query, Qt::CaseInsensitive);
}

QJsonObject assetJson(const DeliveredFile& file, const QJsonObject& row, int index)
{
    QJsonObject json{{QStringLiteral("key"), QString(file.rowId + u'|' + file.object)},
                     {QStringLiteral("rowId"), file.rowId},
                     {QStringLiteral("object"), file.object},
                     {QStringLiteral("filename"), file.filename},
                     {QStringLiteral("label"), row[QStringLiteral("label")]},
                     {QStringLiteral("family"), familyOf(file.contentType)},
                     {QStringLiteral("byteSize"), file.bytes},
                     {QStringLiteral("deliveredAt"), file.deliveredAt}};
    if (index % 4 == 1)
        json[QStringLiteral("byteSize")] = QString::number(file.bytes);
    if (index % 9 == 7)
        json.remove(QStringLiteral("filename"));
    return json;
}

/// The direct members of `prefix` and the folders below it, or every member below that `query` finds.
struct BinListing {
    QList<BinEntry> objects;
    QStringList folders;
};

BinListing listBin(const QList<BinEntry>& bin, const QString& prefix, const QString& query)
{
    BinListing listing;
    for (const auto& entry : bin) {
        if (!entry.key.startsWith(prefix))
            continue;
        auto rest = entry.key.mid(prefix.size());
        if (!query.isEmpty()) {
            if (holds(rest, query))
                listing.objects.append(entry);
        } else if (auto slash = rest.indexOf(u'/'); slash < 0) {
            listing.objects.append(entry);
        } else if (auto folder = prefix + rest.left(slash + 1); !listing.folders.contains(folder)) {
            listing.folders.append(folder);
        }
    }
    return listing;
}

const QString cursorStart = QStringLiteral("after ");
const QString cursorEnd = QStringLiteral("/+==");

qsizetype readCursor(const QString& cursor)
{
    if (cursor.isEmpty())
        return 0;
    auto number = cursor.mid(cursorStart.size(), cursor.size() - cursorStart.size() - cursorEnd.size());
    bool isNumber = false;
    auto from = number.toLongLong(&isNumber);
    if (!isNumber || cursor != cursorStart + number + cursorEnd)
        violate(QStringLiteral("the cursor is not one that was given out"));
    return from;
}

} // namespace

Catalogue::Catalogue() : m_orgs(sampleOrganisations())
{
    for (const auto& org : m_orgs) {
        for (const auto& file : org.files)
            m_samples[file.object] = file.bytes;
        for (const auto& entry : org.bin)
            m_samples[binStorageKey(org.id, entry.key)] = entry.bytes;
    }
}

const OrganisationData& Catalogue::org(const QString& id) const
{
    for (const auto& candidate : m_orgs)
        if (candidate.id == id)
            return candidate;
    refuse(404, QStringLiteral("org_not_found"), QStringLiteral("That client does not exist."));
}

const ProjectData& Catalogue::project(const OrganisationData& org, const QString& id) const
{
    for (const auto& candidate : org.projects)
        if (candidate.id == id)
            return candidate;
    refuse(404, QStringLiteral("project_not_found"), QStringLiteral("That project does not exist."));
}

Reply Catalogue::orgs() const
{
    return jsonReply({{QStringLiteral("orgs"), jsonOf(m_orgs)}});
}

Reply Catalogue::projects(const Call& call) const
{
    return jsonReply({{QStringLiteral("projects"), jsonOf(org(call.value("org")).projects)}});
}

Reply Catalogue::deliverables(const Call& call) const
{
    QJsonArray rows;
    for (const auto& row : project(org(call.value("org")), call.value("project")).deliverables)
        rows.append(row);
    return jsonReply({{QStringLiteral("deliverables"), rows}});
}

Reply Catalogue::assetFiles(const Call& call) const
{
    auto owner = org(call.value("org"));
    auto query = call.value("q"), family = call.value("family");
    qint64 page = call.value("page").toLongLong(), pageSize = call.value("pageSize").toLongLong();
    QJsonArray files, rows;
    QSet<QString> shown;
    qint64 total = 0;
    for (auto file = owner.files.crbegin(); file != owner.files.crend(); ++file) {
        auto row = *findRow(owner, file->projectId, file->rowId);
        auto label = row[QStringLiteral("label")].toString();
        if ((!family.isEmpty() && familyOf(file->contentType) != family) || !holds(file->filename + label, query))
            continue;
        auto index = total++;
        if (index / pageSize != page - 1)
            continue;
        files.append(assetJson(*file, row, static_cast<int>(index)));
        const auto& home = project(owner, file->projectId);
        row[QStringLiteral("projectId")] = home.id;
        row[QStringLiteral("projectName")] = home.json[QStringLiteral("name")];
        row[QStringLiteral("projectReference")] = home.json[QStringLiteral("reference")];
        if (!shown.contains(file->rowId))
            rows.append(row);
        shown.insert(file->rowId);
    }
    return jsonReply({{QStringLiteral("files"), files},
                      {QStringLiteral("rows"), rows},
                      {QStringLiteral("total"), total},
                      {QStringLiteral("page"), page},
                      {QStringLiteral("pageSize"), pageSize}});
}

Reply Catalogue::bin(const Call& call) const
{
    auto listing = listBin(org(call.value("org")).bin, call.value("prefix"), call.value("q"));
    auto from = readCursor(call.value("cursor"));
    auto page = listing.objects.mid(from, call.value("limit").toLongLong());
    QJsonObject answer{{QStringLiteral("objects"), jsonOf(page)}};
    if (from == 0 && !listing.folders.isEmpty())
        answer[QStringLiteral("folders")] = QJsonArray::fromStringList(listing.folders);
    if (auto next = from + page.size(); next < listing.objects.size())
        answer[QStringLiteral("nextCursor")] = QString(cursorStart + QString::number(next) + cursorEnd);
    return jsonReply(answer);
}

QString Catalogue::binObject(const Call& call) const
{
    if (!holdsBinKey(call.value("org"), call.value("key")))
        refuse(404, QStringLiteral("object_not_found"), QStringLiteral("That file is no longer in Uploads."));
    return binStorageKey(call.value("org"), call.value("key"));
}

QString Catalogue::rowObject(const Call& call) const
{
    checkRow(call.value("org"), call.value("project"), call.value("deliverable"));
    for (const auto& file : org(call.value("org")).files)
        if (file.rowId == call.value("deliverable") && file.object == call.value("object"))
            return file.object;
    refuse(404, QStringLiteral("object_not_found"), QStringLiteral("That file is not filed here."));
}

void Catalogue::checkOrg(const QString& id) const
{
    org(id);
}

void Catalogue::checkRow(const QString& orgId, const QString& projectId, const QString& row) const
{
    for (const auto& candidate : project(org(orgId), projectId).deliverables)
        if (idOf(candidate) == row)
            return;
    refuse(404, QStringLiteral("deliverable_not_found"), QStringLiteral("That deliverable does not exist."));
}

bool Catalogue::holdsBinKey(const QString& orgId, const QString& key) const
{
    const auto& bin = org(orgId).bin;
    return std::any_of(bin.begin(), bin.end(), [&](const BinEntry& entry) { return entry.key == key; });
}

void Catalogue::deliver(const QString& orgId, const DeliveredFile& file)
{
    for (auto& owner : m_orgs) {
        if (owner.id != orgId)
            continue;
        auto& row = *findRow(owner, file.projectId, file.rowId);
        row[QStringLiteral("spec")] = filedSpec(row[QStringLiteral("spec")].toObject(), file);
        row[QStringLiteral("status")] = QStringLiteral("delivered");
        owner.files.removeIf([&](const DeliveredFile& old) { return old.rowId == file.rowId; });
        owner.files.append(file);
    }
}

void Catalogue::addToBin(const QString& orgId, const QString& key, const QString& contentType, qint64 bytes,
                         const QString& when)
{
    QJsonObject json{{QStringLiteral("key"), key},        {QStringLiteral("name"), key.section(u'/', -1)},
                     {QStringLiteral("size"), bytes},     {QStringLiteral("contentType"), contentType},
                     {QStringLiteral("updatedAt"), when}, {QStringLiteral("family"), familyOf(contentType)}};
    for (auto& owner : m_orgs)
        if (owner.id == orgId)
            owner.bin.prepend({.key = key, .bytes = bytes, .json = json});
}

std::shared_ptr<const StoredObject> Catalogue::sample(const QString& key) const
{
    auto found = m_samples.find(key);
    if (found == m_samples.end())
        return nullptr;
    return std::make_shared<PatternObject>(qHash(key, 0), *found);
}

} // namespace palvera::local
