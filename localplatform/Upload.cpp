#include "localplatform/Upload.h"

namespace palvera::local {

namespace {

const QString phases[] = {QStringLiteral("open"), QStringLiteral("complete"), QStringLiteral("aborted")};

Upload::Phase phaseNamed(const QString& name)
{
    for (int i = 0; i < 3; ++i)
        if (phases[i] == name)
            return static_cast<Upload::Phase>(i);
    return Upload::Phase::aborted;
}

} // namespace

QJsonObject toJson(const Upload& upload)
{
    return {{QStringLiteral("serial"), upload.serial},
            {QStringLiteral("org"), upload.target.org},
            {QStringLiteral("project"), upload.target.project},
            {QStringLiteral("deliverable"), upload.target.deliverable},
            {QStringLiteral("folder"), upload.target.folder},
            {QStringLiteral("filename"), upload.filename},
            {QStringLiteral("contentType"), upload.contentType},
            {QStringLiteral("object"), upload.object},
            {QStringLiteral("uploadId"), upload.uploadId},
            {QStringLiteral("session"), upload.session},
            {QStringLiteral("byteSize"), upload.byteSize},
            {QStringLiteral("partSize"), upload.partSize},
            {QStringLiteral("partCount"), upload.partCount},
            {QStringLiteral("phase"), phases[static_cast<int>(upload.phase)]},
            {QStringLiteral("filed"), upload.filed},
            {QStringLiteral("completedAt"), upload.completedAt}};
}

Upload uploadFromJson(const QJsonObject& json)
{
    auto text = [&](const char* key) { return json[QLatin1String(key)].toString(); };
    auto number = [&](const char* key) { return json[QLatin1String(key)].toInteger(); };
    return {.serial = number("serial"),
            .target = {.org = text("org"),
                       .project = text("project"),
                       .deliverable = text("deliverable"),
                       .folder = text("folder")},
            .filename = text("filename"),
            .contentType = text("contentType"),
            .object = text("object"),
            .uploadId = text("uploadId"),
            .session = text("session"),
            .byteSize = number("byteSize"),
            .partSize = number("partSize"),
            .partCount = static_cast<int>(number("partCount")),
            .phase = phaseNamed(text("phase")),
            .filed = json[QStringLiteral("filed")].toBool(),
            .completedAt = text("completedAt")};
}

} // namespace palvera::local
