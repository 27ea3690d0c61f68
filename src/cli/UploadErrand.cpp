#include "cli/UploadErrand.h"

#include "cli/DisplayText.h"
#include "cli/Listing.h"
#include "files/Quantities.h"
#include "files/SourcePath.h"
#include "transfer/UploadFailures.h"

#include <QFileInfo>

namespace palvera::cli {

UploadErrand::UploadErrand(Upload upload, const JournalStore& journals)
    : m_upload(std::move(upload)), m_journals(journals)
{}

QString UploadErrand::beginning() const
{
    const auto size = statusOf(m_upload.file).value_or(PathStatus{}).size;
    return QStringLiteral("Sending “%1”, %2, to %3")
        .arg(QFileInfo(m_upload.file).fileName(), byteCountText(size), placeText(m_upload.target));
}

/// Looks first at what no retry would change.
Task<std::optional<QUuid>> UploadErrand::begin(Transfers& transfers)
{
    if (!m_upload.wasThere && !statusOf(m_upload.file))
        throw CannotSend(QStringLiteral("There is no file “%1”.").arg(m_upload.file));
    if (auto objection = objectionToSource(m_upload.file); !objection.isEmpty())
        throw CannotSend(objection);
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
    return QStringLiteral("palvera-cli upload --confirmed ") +
           shellWords({row->orgId, row->projectId, row->deliverableId, m_upload.file});
}

QString UploadErrand::howToGoOn(const Item&) const
{
    auto journal = m_journals.loadJournal(m_upload.journalKey);
    bool isOfThisFile = journal && (m_upload.wasThere || journal->filePath == m_upload.file);
    if (!isOfThisFile || m_journals.isRunning(m_upload.journalKey))
        return {};
    return QStringLiteral("What has arrived is kept. Go on with: palvera-cli resume ") + shellWords({key()});
}

} // namespace palvera::cli
