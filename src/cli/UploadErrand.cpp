#include "cli/UploadErrand.h"

#include "cli/DisplayText.h"
#include "cli/Listing.h"
#include "files/FileError.h"
#include "files/Quantities.h"

#include <QFileInfo>

namespace palvera::cli {

QString objectionTo(const QString& path)
{
    QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("There is no file “%1”.").arg(path);
    if (file.isDir())
        return QStringLiteral("“%1” is a folder. Only files can be sent.").arg(path);
    if (!file.isFile())
        return QStringLiteral("“%1” is not an ordinary file.").arg(path);
    return file.size() > 0 ? QString() : QStringLiteral("That file is empty.");
}

UploadErrand::UploadErrand(Upload upload, const JournalStore& journals)
    : m_upload(std::move(upload)), m_journals(journals)
{}

QString UploadErrand::beginning() const
{
    QFileInfo file(m_upload.file);
    return QStringLiteral("Sending “%1”, %2, to %3")
        .arg(file.fileName(), byteCountText(file.size()), placeText(m_upload.target));
}

/// Looks first at what no retry would change.
Task<std::optional<QUuid>> UploadErrand::begin(Transfers& transfers)
{
    if (auto objection = objectionTo(m_upload.file); !objection.isEmpty())
        throw FileError(objection);
    if (!isPlainFileName(m_upload.journalKey))
        throw FileError(QStringLiteral("This upload cannot be recorded under the name “%1”.").arg(key()));
    if (!m_journals.tryLock(m_upload.journalKey))
        throw FileError(QStringLiteral("This upload is already running."));
    co_return co_await m_upload.begin(transfers);
}

QString UploadErrand::doneText(const Item& item, double seconds) const
{
    auto verb = m_upload.target.asDeliverable() ? QStringLiteral("Filed on") : QStringLiteral("Added to");
    return QStringLiteral("%1 %2: “%3”, %4 in %5")
        .arg(verb, placeText(m_upload.target), item.name, byteCountText(item.total), durationText(seconds));
}

QJsonObject UploadErrand::doneRecord(const Item& item) const
{
    auto record = recordOf(m_upload.target);
    record[QStringLiteral("file")] = item.file;
    record[QStringLiteral("bytes")] = item.total;
    return record;
}

QString UploadErrand::confirmingCommand() const
{
    const auto* row = m_upload.target.asDeliverable();
    if (!row)
        return {};
    QStringList words{QStringLiteral("palvera-cli"), QStringLiteral("upload")};
    for (const auto& word : {row->orgId, row->projectId, row->deliverableId, m_upload.file})
        words.append(shellWord(word));
    return words.join(u' ') + QStringLiteral(" --confirmed");
}

QString UploadErrand::howToGoOn(const Item&) const
{
    if (!m_journals.loadJournal(m_upload.journalKey))
        return {};
    return QStringLiteral("What has arrived is kept. Go on with: palvera-cli resume ") + shellWord(key());
}

} // namespace palvera::cli
