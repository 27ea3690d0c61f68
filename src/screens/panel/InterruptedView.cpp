#include "screens/panel/InterruptedView.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "files/Quantities.h"
#include "files/SourcePath.h"
#include "screens/LocalPath.h"
#include "screens/TransferTexts.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

#include <QFileInfo>

namespace palvera {

namespace {

QString placeText(QStringList names)
{
    names.removeAll(QString());
    return visibleText(names.join(QStringLiteral(" · ")));
}

QString spokenOf(const InterruptedRow& row)
{
    QStringList words{row.filename, row.place, row.progress};
    words.removeAll(QString());
    return words.join(QStringLiteral(", ")).replace(u'\n', QStringLiteral(", "));
}

QString receivedText(const InterruptedDownload& found)
{
    return QObject::tr("%1 of %2").arg(byteCountText(found.received), byteCountText(found.total));
}

QString downloadedText(const InterruptedDownload& found)
{
    return found.download.isBegun ? QObject::tr("%1 downloaded").arg(receivedText(found)) : QObject::tr("Not begun");
}

InterruptedRow rowOf(const InterruptedUpload& upload)
{
    const auto& journal = upload.journal;
    InterruptedRow row{.key = journal.key,
                       .symbol = QStringLiteral("arrow.clockwise.circle.fill"),
                       .filename = visibleText(journal.filename),
                       .place = placeText({journal.label.value_or(QString()), journal.client.value_or(QString())}),
                       .progress = partsDoneText(upload),
                       .isSourceGone = upload.isSourceGone};
    if (row.isSourceGone)
        row.progress += u'\n' + QObject::tr("The file is not where it was.");
    row.spoken = spokenOf(row);
    return row;
}

InterruptedRow rowOf(const InterruptedDownload& found)
{
    const auto& download = found.download;
    InterruptedRow row{.key = download.key(),
                       .symbol = QStringLiteral("arrow.down.circle.fill"),
                       .filename = visibleText(QFileInfo(download.path).fileName()),
                       .place = placeText({download.label, download.client.value_or(QString())}),
                       .progress = downloadedText(found)};
    row.spoken = spokenOf(row);
    return row;
}

} // namespace

QString cutOffText(qsizetype uploads, qsizetype downloads)
{
    const int up = int(uploads), down = int(downloads);
    if (up == 0 && down == 0)
        return {};
    if (down == 0)
        return up == 1 ? QObject::tr("1 upload was cut off.") : QObject::tr("%n uploads were cut off.", nullptr, up);
    if (up == 0)
        return down == 1 ? QObject::tr("1 download was cut off.")
                         : QObject::tr("%n downloads were cut off.", nullptr, down);
    return QObject::tr("%1 and %2 were cut off.")
        .arg(up == 1 ? QObject::tr("1 upload") : QObject::tr("%n uploads", nullptr, up),
             down == 1 ? QObject::tr("1 download") : QObject::tr("%n downloads", nullptr, down));
}

InterruptedRows::InterruptedRows()
    : RowsModel({{"key", &InterruptedRow::key},
                 {"symbol", &InterruptedRow::symbol},
                 {"filename", &InterruptedRow::filename},
                 {"place", &InterruptedRow::place},
                 {"progress", &InterruptedRow::progress},
                 {"spoken", &InterruptedRow::spoken},
                 {"sourceGone", &InterruptedRow::isSourceGone}})
{}

InterruptedView::InterruptedView(Transfers& transfers, const Executor& main, QObject* parent)
    : QObject(parent), m_transfers(transfers), m_tasks(main)
{
    connect(&transfers.interrupted(), &Interrupted::changed, this, &InterruptedView::update);
    update();
}

void InterruptedView::update()
{
    QList<InterruptedRow> rows;
    for (const auto& upload : m_transfers.interrupted().uploads())
        rows.append(rowOf(upload));
    for (const auto& found : m_transfers.interrupted().downloads())
        rows.append(rowOf(found));
    m_rows.setRows(rows);
    Q_EMIT countChanged();
}

QString InterruptedView::summary() const
{
    const auto& list = m_transfers.interrupted();
    return cutOffText(qsizetype(list.uploads().size()), qsizetype(list.downloads().size()));
}

void InterruptedView::load()
{
    m_tasks.start(m_transfers.interrupted().load());
}

void InterruptedView::resume(const QString& key)
{
    const auto& list = m_transfers.interrupted();
    // Copies: resuming changes the list.
    if (const auto* upload = list.findUpload(key))
        m_transfers.resume(Journal(upload->journal));
    else if (const auto* found = list.findDownload(key))
        m_transfers.resume(UnfinishedDownload(found->download));
}

void InterruptedView::resumeAll()
{
    QStringList keys;
    for (const auto& row : std::as_const(m_rows).rows())
        if (!row.isSourceGone)
            keys.append(row.key);
    for (const auto& key : keys)
        resume(key);
}

QString InterruptedView::discardTitle(const QString& key) const
{
    return m_transfers.interrupted().findUpload(key) ? tr("Discard this upload?") : tr("Discard this download?");
}

QString InterruptedView::discardMessage(const QString& key) const
{
    const auto& list = m_transfers.interrupted();
    const auto* upload = list.findUpload(key);
    if (upload && !upload->isBegun)
        return tr("“%1” has not begun to go up. Your file stays as it is.").arg(visibleText(upload->journal.filename));
    if (upload)
        return tr("“%1”: %2. What storage has of it is thrown away; your file stays as it is.")
            .arg(visibleText(upload->journal.filename), partsDoneText(*upload));
    const auto* found = list.findDownload(key);
    if (found && !found->download.isBegun)
        return tr("“%1” has not begun to come down.").arg(visibleText(QFileInfo(found->download.path).fileName()));
    if (found)
        return tr("“%1”: %2 downloaded. That is removed from “%3”.")
            .arg(visibleText(QFileInfo(found->download.path).fileName()), receivedText(*found),
                 visibleText(QFileInfo(found->download.path).path()));
    return {};
}

void InterruptedView::discard(const QString& key)
{
    if (m_transfers.interrupted().findUpload(key))
        m_tasks.start(discardUpload(key));
    else
        m_tasks.start(discardDownload(key));
}

Task<void> InterruptedView::discardUpload(QString key)
{
    co_await m_transfers.interrupted().discardUpload(key);
}

Task<void> InterruptedView::discardDownload(QString key)
{
    const auto discarded = co_await outcomeOf(m_transfers.interrupted().discardDownload(key));
    if (discarded.failure && !isCancellation(discarded.failure))
        Q_EMIT failed(key, describe(discarded.failure));
}

void InterruptedView::locate(const QString& key, const QUrl& file)
{
    const auto path = localPath(file);
    if (path.isEmpty())
        Q_EMIT failed(key, tr("That is not a file on this computer."));
    else
        m_tasks.start(look({.key = key, .path = path}));
}

Task<void> InterruptedView::look(Located located)
{
    const bool isSame = co_await m_transfers.interrupted().isSource(located.key, located.path);
    m_located = located;
    const auto name = readableName(located.path), folder = readableName(QFileInfo(located.path).path());
    Q_EMIT this->located(
        located.key, isSame,
        isSame
            ? tr("“%1” in “%2” has the size and the time of the file that was being sent. Only the rest of it is sent.")
                  .arg(name, folder)
            : tr("“%1” in “%2” is not as the file that was being sent: its size or the time of its last change is "
                 "another one. It can be sent from the start; what had gone up is thrown away then.")
                  .arg(name, folder));
}

void InterruptedView::resumeLocated()
{
    m_tasks.start(moveAndResume(m_located));
}

Task<void> InterruptedView::moveAndResume(Located located)
{
    const auto moved = co_await outcomeOf(m_transfers.interrupted().moveSource(located.key, located.path));
    if (isCancellation(moved.failure))
        co_return;
    if (moved.failure)
        Q_EMIT failed(located.key, describe(moved.failure));
    else if (!*moved.value)
        Q_EMIT failed(located.key, tr("That file has changed meanwhile."));
    else
        resume(located.key);
}

void InterruptedView::sendLocated()
{
    m_tasks.start(discardAndSend(m_located));
}

Task<void> InterruptedView::discardAndSend(Located located)
{
    const auto sent = co_await outcomeOf(m_transfers.sendInstead(located.key, located.path));
    if (sent.failure && !isCancellation(sent.failure))
        Q_EMIT failed(located.key, describe(sent.failure));
}

} // namespace palvera
