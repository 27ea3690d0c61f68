#include "localplatform/Uploads.h"

#include <QDateTime>

#include <cmath>

namespace palvera::local {

namespace {

constexpr qint64 mostParts = 10'000;

QString textOf(const QJsonObject& body, const char* key)
{
    return body[QLatin1String(key)].toString();
}

qint64 integerOf(const QJsonObject& body, const char* key)
{
    return body[QLatin1String(key)].toInteger();
}

QString isoTime(Clock::WallTime moment)
{
    auto since = std::chrono::floor<std::chrono::milliseconds>(moment).time_since_epoch();
    return QDateTime::fromMSecsSinceEpoch(since.count(), Qt::UTC).toString(Qt::ISODateWithMs);
}

/// Parts grow when the file would have too many of them.
qint64 partSizeFor(qint64 byteSize, qint64 usual)
{
    return std::max(usual, (byteSize + mostParts - 1) / mostParts);
}

void checkStart(const QJsonObject& body)
{
    auto name = textOf(body, "filename");
    if (name.isEmpty() || name.contains(u'/') || name == QStringLiteral(".") || name == QStringLiteral(".."))
        violate(QStringLiteral("the filename is not the last component of a path"));
    if (textOf(body, "contentType").count(u'/') != 1)
        violate(QStringLiteral("the contentType is not a MIME type"));
    if (integerOf(body, "byteSize") < 1)
        violate(QStringLiteral("the byteSize is below 1"));
}

QJsonObject startedJson(const Upload& upload)
{
    QJsonObject json{{QStringLiteral("object"), upload.object},
                     {QStringLiteral("uploadId"), upload.uploadId},
                     {QStringLiteral("partSize"), upload.partSize},
                     {QStringLiteral("partCount"), upload.partCount}};
    if (upload.target.isBin())
        json[QStringLiteral("sessionId")] = upload.session;
    return json;
}

QString storageKey(const Upload& upload)
{
    return upload.target.isBin() ? binStorageKey(upload.target.org, upload.object) : upload.object;
}

/// Every part once, in order, as storage holds it: the parts as they are named in `named`.
void checkParts(const Upload& upload, const QJsonArray& named)
{
    if (named.size() != upload.partCount)
        violate(QStringLiteral("a completion names %1 of %2 parts").arg(named.size()).arg(upload.partCount));
    for (int part = 1; part <= upload.partCount; ++part) {
        auto entry = named[part - 1].toObject();
        auto stored = upload.parts.find(part);
        if (integerOf(entry, "partNumber") != part)
            violate(QStringLiteral("a completion names its parts out of order"));
        if (stored == upload.parts.end())
            violate(QStringLiteral("a completion names part %1, which is not stored").arg(part));
        if (textOf(entry, "etag").toLatin1() != stored->second.tag)
            violate(QStringLiteral("a completion names part %1 with another tag").arg(part));
        if (stored->second.bytes != upload.lengthOf(part))
            violate(QStringLiteral("part %1 has %2 bytes").arg(part).arg(stored->second.bytes));
    }
}

void checkProgress(const QJsonObject& body)
{
    auto sent = integerOf(body, "bytesSent"), total = integerOf(body, "bytesTotal");
    auto rate = body[QStringLiteral("bytesPerSecond")];
    auto status = body[QStringLiteral("status")];
    if (sent < 0 || total < 1 || sent > total)
        violate(QStringLiteral("a progress of %1 of %2 bytes").arg(sent).arg(total));
    if (rate.isDouble() && (rate.toDouble() < 0 || !std::isfinite(rate.toDouble())))
        violate(QStringLiteral("a progress at a negative rate"));
    if (!status.isUndefined() && status.toString() != QStringLiteral("stopped"))
        violate(QStringLiteral("a progress with an unknown status"));
    if (!status.isUndefined() && !rate.isUndefined())
        violate(QStringLiteral("a stop report with a rate"));
}

} // namespace

Uploads::Uploads(Catalogue& catalogue, ByteStore& store, PartsLog& log, qint64 partSize, Tags tags)
    : m_catalogue(catalogue), m_store(store), m_log(log), m_partSize(partSize), m_tags(tags)
{}

Reply Uploads::answer(const Call& call, const QJsonObject& body, const UploadTerms& terms, const Fault& fault)
{
    auto operation = call.route->operation;
    if (operation == Operation::start || operation == Operation::binStart)
        return start(call, body, terms);
    if (operation == Operation::parts)
        return signParts(call, body, terms, fault);
    if (operation == Operation::complete)
        return complete(call, body, terms);
    if (operation == Operation::abort)
        return abort(call, body);
    if (operation == Operation::asset)
        return file(call, body, terms);
    return progress(call, body);
}

Upload* Uploads::withSerial(qint64 serial)
{
    for (auto& upload : m_uploads)
        if (upload.serial == serial)
            return &upload;
    return nullptr;
}

UploadTarget Uploads::rowOf(const Call& call) const
{
    UploadTarget row{.org = call.value("org"),
                     .project = call.value("project"),
                     .deliverable = call.value("deliverable"),
                     .folder = {}};
    m_catalogue.checkRow(row.org, row.project, row.deliverable);
    return row;
}

/// The upload that `body` names and that belongs where `call` points.
Upload& Uploads::find(const Call& call, const QJsonObject& body)
{
    auto session = call.value("session");
    for (auto& upload : m_uploads) {
        if (upload.uploadId != textOf(body, "uploadId"))
            continue;
        if (upload.object != textOf(body, "object"))
            violate(QStringLiteral("an upload's object and uploadId do not belong together"));
        bool here = upload.target.org == call.value("org") &&
                    (upload.target.isBin() ? upload.session == session : upload.target == rowOf(call));
        if (!here)
            violate(QStringLiteral("an upload is spoken of at another's address"));
        if (upload.phase != Upload::Phase::aborted)
            return upload;
    }
    refuse(404, QStringLiteral("upload_not_found"), QStringLiteral("That upload no longer exists."));
}

Reply Uploads::start(const Call& call, const QJsonObject& body, const UploadTerms& terms)
{
    checkStart(body);
    auto name = textOf(body, "filename");
    if (call.route->operation == Operation::binStart) {
        UploadTarget target{
            .org = call.value("org"), .project = {}, .deliverable = {}, .folder = textOf(body, "folder")};
        m_catalogue.checkOrg(target.org);
        if (!target.folder.isEmpty() && !target.folder.endsWith(u'/'))
            target.folder += u'/';
        return begin(target, body, binKey(target, name));
    }
    auto target = rowOf(call);
    if (name.contains(QStringLiteral("draft"), Qt::CaseInsensitive) && !body.contains(QStringLiteral("confirmed")))
        refuse(409, QStringLiteral("delivery_doubt"),
               QStringLiteral("\"%1\" looks like a draft. Is it the file to deliver?").arg(name));
    auto stamp = isoTime(terms.now).left(10);
    return begin(target, body,
                 QStringList{QStringLiteral("deliveries"), target.org, target.project, target.deliverable,
                             stamp + u'-' + QString::number(m_lastSerial + 1), name}
                     .join(u'/'));
}

QString Uploads::binKey(const UploadTarget& target, const QString& filename) const
{
    auto taken = [&](const QString& key) {
        auto isKey = [&](const Upload& upload) { return upload.target.org == target.org && upload.object == key; };
        return m_catalogue.holdsBinKey(target.org, key) || std::any_of(m_uploads.begin(), m_uploads.end(), isKey);
    };
    auto key = target.folder + filename;
    for (int copy = 2; taken(key); ++copy)
        key = target.folder + QString::number(copy) + QStringLiteral(". ") + filename;
    return key;
}

Reply Uploads::begin(const UploadTarget& target, const QJsonObject& body, const QString& object)
{
    auto byteSize = integerOf(body, "byteSize"), partSize = partSizeFor(byteSize, m_partSize);
    auto serial = QString::number(++m_lastSerial);
    m_uploads.push_back({.serial = m_lastSerial,
                         .target = target,
                         .filename = textOf(body, "filename"),
                         .contentType = textOf(body, "contentType"),
                         .object = object,
                         .uploadId = QStringLiteral("up/") + serial + QStringLiteral("+=="),
                         .session = target.isBin() ? QStringLiteral("s ") + serial + QStringLiteral("/a+b") : QString(),
                         .byteSize = byteSize,
                         .partSize = partSize,
                         .partCount = static_cast<int>((byteSize + partSize - 1) / partSize),
                         .completedAt = {}});
    return jsonReply(startedJson(m_uploads.back()));
}

Reply Uploads::signParts(const Call& call, const QJsonObject& body, const UploadTerms& terms, const Fault& fault)
{
    const auto& upload = find(call, body);
    auto from = integerOf(body, "from"), to = integerOf(body, "to");
    if (from < 1 || to < from || to > upload.partCount || to - from >= 16)
        violate(QStringLiteral("the addresses of parts %1 to %2 of %3").arg(from).arg(to).arg(upload.partCount));
    QJsonArray urls;
    for (auto part = static_cast<int>(from); part <= to; ++part) {
        if (fault.kind == Fault::Kind::unsignedPart && fault.part == part)
            continue;
        auto target =
            partTarget({.serial = upload.serial, .part = part}, upload.filename, terms.now + terms.addressLife);
        urls.append(QJsonObject{{QStringLiteral("partNumber"), part},
                                {QStringLiteral("url"), QString::fromLatin1(terms.storageAddress + target)}});
    }
    return jsonReply({{QStringLiteral("urls"), urls}});
}

Reply Uploads::complete(const Call& call, const QJsonObject& body, const UploadTerms& terms)
{
    auto& upload = find(call, body);
    if (upload.phase == Upload::Phase::complete)
        refuse(409, QStringLiteral("already_complete"), QStringLiteral("That upload is complete already."));
    checkParts(upload, body[QStringLiteral("parts")].toArray());
    m_store.assemble(upload.staging());
    upload.phase = Upload::Phase::complete;
    upload.completedAt = isoTime(terms.now);
    if (upload.target.isBin())
        m_catalogue.addToBin(upload.target.org, upload.object, upload.contentType, upload.byteSize, upload.completedAt);
    return jsonReply({{QStringLiteral("object"), upload.object}});
}

Reply Uploads::abort(const Call& call, const QJsonObject& body)
{
    auto& upload = find(call, body);
    if (upload.phase == Upload::Phase::complete)
        refuse(409, QStringLiteral("already_complete"), QStringLiteral("That upload is complete already."));
    upload.phase = Upload::Phase::aborted;
    m_store.drop(upload.staging());
    m_log.remove(upload);
    return jsonReply({});
}

Reply Uploads::file(const Call& call, const QJsonObject& body, const UploadTerms&)
{
    auto row = rowOf(call);
    for (auto& upload : m_uploads) {
        if (upload.object != textOf(body, "object") || upload.target.isBin() || upload.target.org != row.org)
            continue;
        if (!(upload.target == row))
            refuse(409, QStringLiteral("wrong_deliverable"),
                   QStringLiteral("That file belongs to another deliverable."));
        if (upload.filename != textOf(body, "filename"))
            violate(QStringLiteral("a file is filed under another name than it was started with"));
        if (upload.phase != Upload::Phase::complete)
            refuse(409, QStringLiteral("not_complete"), QStringLiteral("That file has not arrived completely."));
        upload.filed = true;
        deliver(upload);
        return jsonReply({});
    }
    refuse(404, QStringLiteral("object_not_found"), QStringLiteral("That file is not in storage."));
}

void Uploads::deliver(const Upload& upload)
{
    m_catalogue.deliver(upload.target.org, {.projectId = upload.target.project,
                                            .rowId = upload.target.deliverable,
                                            .object = upload.object,
                                            .filename = upload.filename,
                                            .bytes = upload.byteSize,
                                            .contentType = upload.contentType,
                                            .deliveredAt = upload.completedAt});
}

Reply Uploads::progress(const Call& call, const QJsonObject& body)
{
    auto row = rowOf(call);
    checkProgress(body);
    auto belongs = [&](const Upload& upload) {
        return upload.target == row && upload.byteSize == integerOf(body, "bytesTotal");
    };
    if (!body.contains(QStringLiteral("status")) && std::none_of(m_uploads.begin(), m_uploads.end(), belongs))
        violate(QStringLiteral("a progress of no upload of that row"));
    m_progress[row.deliverable] = body;
    return jsonReply({});
}

Uploads::Arrival Uploads::openPart(const PartPlace& place, qint64 length)
{
    auto* upload = withSerial(place.serial);
    if (!upload || upload->phase != Upload::Phase::open)
        refuse(404, QStringLiteral("NoSuchUpload"), QStringLiteral("The upload does not exist."));
    if (place.part > upload->partCount)
        violate(QStringLiteral("part %1 of %2").arg(place.part).arg(upload->partCount));
    if (length < 1 || length > upload->lengthOf(place.part))
        violate(QStringLiteral("part %1 with a body of %2 bytes").arg(place.part).arg(length));
    auto& copies = m_arriving[{place.serial, place.part}];
    bool again = copies++ > 0 || upload->parts.contains(place.part);
    Arrival arrival{.serial = place.serial, .part = place.part, .length = length};
    arrival.writer = m_store.openPart(upload->staging(), {.offset = upload->offsetOf(place.part), .length = length},
                                      again ? ByteStore::Part::again : ByteStore::Part::fresh);
    if (m_tags == Tags::md5)
        arrival.md5 = std::make_unique<QCryptographicHash>(QCryptographicHash::Md5);
    return arrival;
}

QByteArray Uploads::tagOf(const Arrival& arrival)
{
    if (arrival.md5)
        return arrival.md5->result().toHex();
    return QByteArray::number(arrival.serial, 16) + '.' + QByteArray::number(arrival.part) + '-' +
           QByteArray::number(arrival.length, 36) + '-' + QByteArray::number(++m_tagCount, 36);
}

Reply Uploads::keepPart(Arrival& arrival)
{
    auto* upload = withSerial(arrival.serial);
    if (!upload || upload->phase != Upload::Phase::open)
        refuse(404, QStringLiteral("NoSuchUpload"), QStringLiteral("The upload does not exist."));
    if (arrival.writer)
        arrival.writer->keep();
    auto& part = upload->parts[arrival.part];
    part = {.bytes = arrival.length, .tag = tagOf(arrival), .times = part.times + 1};
    m_log.append(*upload, arrival.part);
    return {.status = 200, .headers = {{"ETag", '"' + part.tag + '"'}}};
}

void Uploads::closePart(const Arrival& arrival)
{
    auto copies = m_arriving.find({arrival.serial, arrival.part});
    if (copies != m_arriving.end() && --copies->second == 0)
        m_arriving.erase(copies);
}

std::shared_ptr<const StoredObject> Uploads::object(const QString& key) const
{
    for (const auto& upload : m_uploads)
        if (storageKey(upload) == key && upload.phase == Upload::Phase::complete)
            return m_store.object(upload.staging());
    return nullptr;
}

QJsonObject Uploads::toJson() const
{
    QJsonArray uploads;
    for (const auto& upload : m_uploads)
        uploads.append(local::toJson(upload));
    return {{QStringLiteral("uploads"), uploads},
            {QStringLiteral("lastSerial"), m_lastSerial},
            {QStringLiteral("tagCount"), static_cast<qint64>(m_tagCount)}};
}

void Uploads::fromJson(const QJsonObject& json)
{
    m_lastSerial = json[QStringLiteral("lastSerial")].toInteger();
    m_tagCount = static_cast<quint64>(json[QStringLiteral("tagCount")].toInteger());
    for (const auto& entry : json[QStringLiteral("uploads")].toArray()) {
        auto upload = uploadFromJson(entry.toObject());
        m_log.restore(upload);
        if (upload.phase == Upload::Phase::complete && upload.target.isBin())
            m_catalogue.addToBin(upload.target.org, upload.object, upload.contentType, upload.byteSize,
                                 upload.completedAt);
        if (upload.filed)
            deliver(upload);
        m_uploads.push_back(std::move(upload));
    }
}

QJsonObject Uploads::report() const
{
    QJsonArray uploads;
    for (const auto& upload : m_uploads) {
        auto json = local::toJson(upload);
        QJsonObject parts;
        for (const auto& [number, part] : upload.parts)
            parts[QString::number(number)] =
                QJsonObject{{QStringLiteral("bytes"), part.bytes}, {QStringLiteral("times"), part.times}};
        json[QStringLiteral("parts")] = parts;
        if (upload.phase == Upload::Phase::complete)
            json[QStringLiteral("path")] = m_store.object(upload.staging())->path();
        uploads.append(json);
    }
    QJsonObject progress;
    for (const auto& [row, body] : m_progress)
        progress[row] = body;
    return {{QStringLiteral("uploads"), uploads}, {QStringLiteral("progress"), progress}};
}

} // namespace palvera::local
