#include "transfer/UploadNote.h"

#include "service/JsonReader.h"

#include <QJsonDocument>

namespace palvera {

QByteArray encodeNote(const UploadNote& note)
{
    const auto& [path, identity, target, service, account] = note.subject;
    const QJsonObject object{{QStringLiteral("file"), path},
                             {QStringLiteral("handle"), QString::fromLatin1(identity.handle.toBase64())},
                             {QStringLiteral("size"), identity.size},
                             {QStringLiteral("changed"), identity.changed},
                             {QStringLiteral("target"), target.toJson()},
                             {QStringLiteral("service"), service},
                             {QStringLiteral("done"), note.isDone}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<UploadNote> decodeNote(const QByteArray& bytes)
try {
    const auto object = json::parseObject(bytes);
    JsonReader reader(object);
    const SourceIdentity identity{
        .handle = QByteArray::fromBase64(reader.required<QString>(QStringLiteral("handle")).toLatin1()),
        .size = reader.required<qint64>(QStringLiteral("size")),
        .changed = reader.required<qint64>(QStringLiteral("changed"))};
    return UploadNote{.subject = {.path = reader.required<QString>(QStringLiteral("file")),
                                  .identity = identity,
                                  .target = reader.required<TransferTarget>(QStringLiteral("target")),
                                  .service = reader.required<QString>(QStringLiteral("service"))},
                      .isDone = reader.required<bool>(QStringLiteral("done"))};
} catch (const DecodingError&) {
    return {};
}

} // namespace palvera
