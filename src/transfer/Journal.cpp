#include "transfer/Journal.h"

#include "files/SourcePath.h"
#include "service/JsonReader.h"

#include <QJsonDocument>

#include <algorithm>

namespace palvera {

namespace {

/// Appends `utf8` as the inside of a JSON string.
void appendEscaped(QByteArray& text, const QByteArray& utf8)
{
    bool isPlain = std::ranges::none_of(utf8, [](char c) { return uchar(c) < 0x20 || c == '"' || c == '\\'; });
    if (isPlain) {
        text.append(utf8);
        return;
    }
    for (char c : utf8) {
        if (c == '"' || c == '\\')
            text.append('\\');
        if (uchar(c) < 0x20)
            text.append("\\u00").append(QByteArray(1, c).toHex());
        else
            text.append(c);
    }
}

/// Appends the confirmed parts as a JSON object. By hand and into one buffer, since they are most of a journal and are
/// written several times a second: a document of ten thousand members takes fifty times as long to build.
void appendDone(QByteArray& text, const ConfirmedParts& done)
{
    constexpr qsizetype aboutOnePart = 64;
    text.reserve(text.size() + (qsizetype(done.size()) + 1) * aboutOnePart);
    text.append('{');
    bool isFirst = true;
    for (const auto& [part, etag] : done) {
        text.append(isFirst ? "\"" : ",\"").append(QByteArray::number(part)).append("\":\"");
        appendEscaped(text, etag.toUtf8());
        text.append('"');
        isFirst = false;
    }
    text.append('}');
}

ConfirmedParts decodeDone(const QJsonObject& object)
{
    ConfirmedParts done;
    for (auto member = object.begin(); member != object.end(); ++member) {
        bool isNumber = false;
        int part = member.key().toInt(&isNumber);
        if (!isNumber || QString::number(part) != member.key() || !member.value().isString())
            throw DecodingError(QStringLiteral("done.") + member.key(),
                                QStringLiteral("“%1” is no part with an entity tag.").arg(member.key()));
        done.emplace(part, member.value().toString());
    }
    return done;
}

std::optional<QByteArray> decodeBookmark(const std::optional<QString>& base64)
{
    if (!base64)
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(base64->toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        throw DecodingError(QStringLiteral("bookmark"), QStringLiteral("“bookmark” is not base64."));
    return *decoded;
}

void checkParts(const Journal& journal, qint64 partCount)
{
    bool outside =
        !journal.done.empty() && (journal.done.begin()->first < 1 || journal.done.rbegin()->first > partCount);
    if (outside || !coversExactly(journal.partSize, partCount, journal.byteSize))
        throw DecodingError(QStringLiteral("partCount"), QStringLiteral("The parts do not add up to the file."));
}

} // namespace

TransferTarget Journal::destination() const
{
    return target.value_or(TransferTarget::Deliverable{.orgId = orgId, .projectId = projectId, .deliverableId = key});
}

qint64 confirmedBytes(const Journal& journal)
{
    return std::min(journal.byteSize, qint64(journal.done.size()) * journal.partSize);
}

QByteArray encodeJournal(const Journal& journal)
{
    QJsonObject object{{QStringLiteral("key"), journal.key},
                       {QStringLiteral("orgId"), journal.orgId},
                       {QStringLiteral("projectId"), journal.projectId},
                       {QStringLiteral("object"), journal.object},
                       {QStringLiteral("uploadId"), journal.uploadId},
                       {QStringLiteral("partSize"), journal.partSize},
                       {QStringLiteral("partCount"), journal.partCount},
                       {QStringLiteral("byteSize"), journal.byteSize},
                       {QStringLiteral("filePath"), journal.filePath},
                       {QStringLiteral("filename"), journal.filename},
                       {QStringLiteral("fileStamp"), journal.fileStamp}};
    if (journal.bookmark)
        object.insert(QStringLiteral("bookmark"), QString::fromLatin1(journal.bookmark->toBase64()));
    if (journal.target)
        object.insert(QStringLiteral("target"), journal.target->toJson());
    json::put(object, QStringLiteral("sessionId"), journal.sessionId);
    json::put(object, QStringLiteral("service"), journal.service);
    json::put(object, QStringLiteral("account"), journal.account);
    json::put(object, QStringLiteral("label"), journal.label);
    json::put(object, QStringLiteral("client"), journal.client);
    QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    text.chop(1);
    text.append(",\"done\":");
    appendDone(text, journal.done);
    return text.append('}');
}

Journal decodeJournal(const QByteArray& bytes)
{
    QJsonObject object = json::parseObject(bytes);
    JsonReader reader(object);
    auto partCount = reader.required<qint64>(QStringLiteral("partCount"));
    Journal journal{.key = reader.required<QString>(QStringLiteral("key")),
                    .orgId = reader.required<QString>(QStringLiteral("orgId")),
                    .projectId = reader.required<QString>(QStringLiteral("projectId")),
                    .object = reader.required<QString>(QStringLiteral("object")),
                    .uploadId = reader.required<QString>(QStringLiteral("uploadId")),
                    .partSize = reader.required<qint64>(QStringLiteral("partSize")),
                    .partCount = int(partCount),
                    .byteSize = reader.required<qint64>(QStringLiteral("byteSize")),
                    .filePath = reader.required<QString>(QStringLiteral("filePath")),
                    .filename = reader.required<QString>(QStringLiteral("filename")),
                    .bookmark = decodeBookmark(reader.optional<QString>(QStringLiteral("bookmark"))),
                    .fileStamp = reader.required<QString>(QStringLiteral("fileStamp")),
                    .done = decodeDone(reader.required<QJsonObject>(QStringLiteral("done"))),
                    .target = reader.optional<TransferTarget>(QStringLiteral("target")),
                    .sessionId = reader.optional<QString>(QStringLiteral("sessionId")),
                    .service = reader.optional<QString>(QStringLiteral("service")),
                    .account = reader.optional<QString>(QStringLiteral("account")),
                    .label = reader.optional<QString>(QStringLiteral("label")),
                    .client = reader.optional<QString>(QStringLiteral("client"))};
    if (!isUsableKey(journal.key))
        throw DecodingError(QStringLiteral("key"), QStringLiteral("“key” cannot name a journal."));
    checkParts(journal, partCount);
    return journal;
}

bool isUsableKey(const QString& key)
{
    constexpr qsizetype longest = 255; // bytes, what file systems take
    auto segments = key.split(QLatin1Char('/'));
    return std::ranges::none_of(segments,
                                [](const QString& segment) {
                                    return segment.isEmpty() || segment == QLatin1String(".") ||
                                           segment == QLatin1String("..");
                                }) &&
           journalFileName(key).toUtf8().size() <= longest;
}

QString journalFileName(const QString& key)
{
    QString name = key;
    if (key.contains(QLatin1Char('/')) || key.contains(QChar(0)))
        name.replace(QLatin1Char('%'), QLatin1String("%25"))
            .replace(QLatin1Char('/'), QLatin1String("%2F"))
            .replace(QChar(0), QLatin1String("%00"));
    return name + QStringLiteral(".json");
}

QString binJournalKey(const QString& orgId, const std::optional<QString>& folder, const QString& path)
{
    quint64 hash = 0xcbf29ce484222325;
    const QByteArray text =
        (orgId + QLatin1Char('|') + folder.value_or(QString()) + QLatin1Char('|')).toUtf8() + pathToBytes(path);
    for (char byte : text)
        hash = (hash ^ uchar(byte)) * 0x100000001b3;
    return QStringLiteral("bin-") + QString::number(hash, 16);
}

} // namespace palvera
