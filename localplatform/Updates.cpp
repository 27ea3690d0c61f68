#include "localplatform/Updates.h"

#include "localplatform/FolderStore.h"

#include <QFileInfo>
#include <QUrl>

namespace palvera::local {

namespace {

const QByteArray folder("/updates/");
const QByteArray latest("/updates/image");

[[noreturn]] void refuseNothing()
{
    refuse(404, QStringLiteral("not_found"), QStringLiteral("Nothing is published."));
}

} // namespace

bool Updates::isFeed(const RequestHead& head)
{
    return head.method == "GET" && head.target == "/updates/latest.json";
}

bool Updates::isImage(const RequestHead& head)
{
    return head.method == "GET" && head.target.startsWith(folder) && !isFeed(head);
}

QString Updates::fileName() const
{
    return QFileInfo(m_published.image).fileName();
}

Reply Updates::feed(const QByteArray& storageAddress) const
{
    if (m_published.image.isEmpty())
        refuseNothing();
    auto version = fileName();
    version.remove(QStringLiteral("Palvera-")).remove(QStringLiteral(".dmg"));
    QJsonObject record{{QStringLiteral("version"), version},
                       {QStringLiteral("build"), m_published.build},
                       {QStringLiteral("url"), QString::fromUtf8(storageAddress + latest)}};
    if (!m_published.notes.isEmpty())
        record[QStringLiteral("notes")] = m_published.notes;
    return jsonReply(record);
}

std::shared_ptr<const StoredObject> Updates::image(const RequestHead& head, Reply& reply) const
{
    const auto place = folder + QUrl::toPercentEncoding(fileName());
    if (m_published.image.isEmpty())
        refuseNothing();
    if (head.target == latest) {
        reply = {.status = 302, .headers = {{"Location", place}}};
        return nullptr;
    }
    if (head.target != place || !QFileInfo::exists(m_published.image))
        refuseNothing();
    reply = {.headers = {{"Content-Type", "application/octet-stream"}}};
    return openObject(m_published.image);
}

} // namespace palvera::local
