#include "transfer/Journal.h"

#include "service/JsonReader.h"

#include <QJsonDocument>

namespace palvera {

namespace {

/// The confirmed parts as the text of a JSON object. Written by hand since it is most of a journal and is written
/// again several times a second: a document of ten thousand members takes fifty times as long to build.
QByteArray encodeDone(const ConfirmedParts& done)
{
    constexpr qsizetype aboutOnePart = 48;
    QByteArray text("{");
    text.reserve(qsizetype(done.size()) * aboutOnePart);
    for (const auto& [part, etag] : done) {
        if (text.size() > 1)
            text += ',';
        text += '"' + QByteArray::number(part) + "\":\"";
        for (char c : etag.toUtf8()) {
            if (c == '"' || c == '\\')
                text += '\\';
            if (uchar(c) < 0x20)
                text += "\\u00" + QByteArray(1, c).toHex();
            else
                text += c;
        }
        text += '"';
    }
    text += '}';
    return text;
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
    QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    text.chop(1);
    return text + ",\"done\":" + encodeDone(journal.done) + '}';
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
                    .sessionId = reader.optional<QString>(QStringLiteral("sessionId"))};
    if (!isPlainFileName(journal.key))
        throw DecodingError(QStringLiteral("key"), QStringLiteral("“key” is no plain file name."));
    checkParts(journal, partCount);
    return journal;
}

bool isPlainFileName(const QString& key)
{
    constexpr qsizetype longest = 255 - 5; // what file systems take, less ".json"
    return !key.isEmpty() && key != QLatin1String(".") && key != QLatin1String("..") &&
           !key.contains(QLatin1Char('/')) && !key.contains(QChar(0)) && key.toUtf8().size() <= longest;
}

QString binJournalKey(const QString& orgId, const std::optional<QString>& folder, const QString& path)
{
    quint64 hash = 0xcbf29ce484222325;
    QByteArray text = (orgId + QLatin1Char('|') + folder.value_or(QString()) + QLatin1Char('|') + path).toUtf8();
    for (char byte : text)
        hash = (hash ^ uchar(byte)) * 0x100000001b3;
    return QStringLiteral("bin-") + QString::number(hash, 16);
}

} // namespace palvera
