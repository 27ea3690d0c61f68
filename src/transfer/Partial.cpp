#include "transfer/Partial.h"

#include "files/AtomicFile.h"
#include "files/SmallFile.h"
#include "service/JsonReader.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace palvera {

namespace {

/// Far above any record, which is under ten bytes a chunk: a stray film is not read into memory.
constexpr qint64 largestRecord = 16LL << 20;

} // namespace

qint64 Partial::received(qint64 chunkSize) const
{
    return std::min(total, qint64(done.size()) * chunkSize);
}

QByteArray encodePartial(const Partial& partial)
{
    QJsonArray done;
    for (qint64 index : partial.done)
        done.append(index);
    QJsonObject object{{QStringLiteral("done"), done}, {QStringLiteral("total"), partial.total}};
    if (!partial.tag.isEmpty())
        object.insert(QStringLiteral("tag"), partial.tag);
    if (!partial.source.isEmpty())
        object.insert(QStringLiteral("source"), partial.source);
    if (!partial.file.isEmpty())
        object.insert(QStringLiteral("file"), QString::fromLatin1(partial.file.toBase64()));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<Partial> decodePartial(const QByteArray& bytes)
{
    try {
        const auto object = json::parseObject(bytes);
        const JsonReader reader(object);
        const auto done = reader.required<QList<qint64>>(QStringLiteral("done"));
        return Partial{.done = {done.begin(), done.end()},
                       .total = reader.required<qint64>(QStringLiteral("total")),
                       .tag = reader.textOrEmpty(QStringLiteral("tag")),
                       .source = reader.textOrEmpty(QStringLiteral("source")),
                       .file = QByteArray::fromBase64(reader.textOrEmpty(QStringLiteral("file")).toLatin1())};
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

QString recordPath(const QString& destination)
{
    return destination + QStringLiteral(".pvpart");
}

std::optional<Partial> loadPartial(const QString& destination)
{
    auto bytes = readSmallFile(recordPath(destination), largestRecord);
    return bytes ? decodePartial(*bytes) : std::nullopt;
}

void savePartial(const QString& destination, const Partial& partial)
{
    writeFileAtomically(recordPath(destination), encodePartial(partial), QFileInfo(destination).path());
}

bool removePartial(const QString& destination)
{
    return QFile::remove(recordPath(destination)) || !QFileInfo::exists(recordPath(destination));
}

} // namespace palvera
