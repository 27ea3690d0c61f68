#include "cli/DownloadErrand.h"

#include "files/Quantities.h"

#include <QFileInfo>

namespace palvera::cli {

DownloadErrand::DownloadErrand(QString key, QJsonObject record, Download download)
    : m_key(std::move(key)), m_record(std::move(record)), m_download(std::move(download))
{}

QString DownloadErrand::beginning() const
{
    return QStringLiteral("Downloading “%1”").arg(m_download.name);
}

Task<std::optional<QUuid>> DownloadErrand::begin(Transfers& transfers)
{
    co_return transfers.addDownload(m_download);
}

QString DownloadErrand::doneText(const Item& item, double seconds) const
{
    QFileInfo file(item.file);
    return QStringLiteral("Downloaded “%1”, %2 in %3, to %4")
        .arg(file.fileName(), byteCountText(file.size()), durationText(seconds), file.path());
}

QJsonObject DownloadErrand::doneRecord(const Item& item) const
{
    auto record = m_record;
    record[QStringLiteral("file")] = item.file;
    record[QStringLiteral("bytes")] = QFileInfo(item.file).size();
    return record;
}

QString DownloadErrand::howToGoOn(const Item& item) const
{
    if (item.file.isEmpty() || !QFileInfo::exists(item.file))
        return {};
    return QStringLiteral("What has arrived is kept. The same command goes on from there.");
}

} // namespace palvera::cli
