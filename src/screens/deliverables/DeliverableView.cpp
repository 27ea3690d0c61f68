#include "screens/deliverables/DeliverableView.h"

#include "files/Folders.h"
#include "files/Quantities.h"
#include "screens/LocalPath.h"
#include "screens/TransferTexts.h"
#include "screens/Wording.h"
#include "screens/deliverables/DeliverableCard.h"
#include "service/APIError.h"
#include "session/Session.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

DeliverableView::DeliverableView(const Environment& environment, QObject* parent)
    : QObject(parent), m_environment(environment), m_tasks(environment.main)
{
    connect(&m_tick, &QTimer::timeout, this, &DeliverableView::transferChanged);
    auto& transfers = m_environment.transfers;
    connect(&transfers, &Transfers::itemAdded, this, &DeliverableView::updateTransfer);
    connect(&transfers, &Transfers::itemChanged, this, &DeliverableView::updateTransfer);
    connect(&transfers, &Transfers::failedUploadsChanged, this, &DeliverableView::updateFailure);
    connect(&transfers, &Transfers::itemRemoved, this, &DeliverableView::updateTransfer);
    connect(&transfers.interrupted(), &Interrupted::changed, this, &DeliverableView::updateCutOff);
}

void DeliverableView::open(const Org& org, const Project& project, const Deliverable& deliverable)
{
    m_destination = {.org = org, .project = project, .deliverable = deliverable};
    ask(Asking::nothing);
    m_isFindingFolder = false;
    show();
    updateTransfer();
    updateCutOff();
    updateFailure();
    setGone(false);                                              // the list has it
    m_tasks.start(m_environment.transfers.interrupted().load()); // its file may have been moved since
}

void DeliverableView::update(const Deliverable* deliverable)
{
    setGone(!deliverable);
    if (!deliverable || *deliverable == m_destination.deliverable)
        return;
    m_destination.deliverable = *deliverable;
    show();
}

void DeliverableView::show()
{
    m_filed = filedFile(deliverable());
    Q_EMIT deliverableChanged();
    Q_EMIT faceChanged();
}

QString DeliverableView::title() const
{
    return titleOf(deliverable());
}

QString DeliverableView::contextLine() const
{
    return visibleText(deliverable().contextLine().value_or(QString()));
}

QString DeliverableView::symbol() const
{
    return familySymbol(deliverable().family);
}

QString DeliverableView::tint() const
{
    return familyTint(deliverable().family);
}

QStringList DeliverableView::chips() const
{
    QStringList chips{familyName(deliverable().family, humanised(deliverable().family)),
                      humanised(deliverable().status), languageName(deliverable().language.value_or(QString())),
                      deliverable().territory.value_or(QString())};
    for (auto& chip : chips)
        chip = visibleText(chip);
    chips.removeAll(QString());
    return chips;
}

DeliverableView::Face DeliverableView::face() const
{
    if (m_item)
        return InFlight;
    if (m_isGone)
        return Gone;
    return m_filed ? Filed : Empty;
}

double DeliverableView::fraction() const
{
    return m_item ? fractionOf(m_item->sent, m_item->total) : 0;
}

QString DeliverableView::doneText() const
{
    if (!m_item || m_item->total < 1)
        return QStringLiteral("—");
    return percentText(percentOf(m_item->sent, m_item->total));
}

QString DeliverableView::transferredText() const
{
    return m_item ? amountText(*m_item) : QString();
}

QString DeliverableView::speedText() const
{
    bool isMoving = m_item && std::holds_alternative<Item::Running>(m_item->state) && m_item->rate.value_or(0) > 0;
    return isMoving ? rateText(*m_item->rate) : QStringLiteral("—");
}

QString DeliverableView::leftText() const
{
    bool isRunning = m_item && std::holds_alternative<Item::Running>(m_item->state);
    auto left = isRunning ? secondsLeft(*m_item) : std::nullopt;
    return left ? durationText(*left) : QStringLiteral("—");
}

QString DeliverableView::trouble() const
{
    return m_item ? troubleWithCountdown(*m_item, m_environment.clock.wallNow()) : QString();
}

QString DeliverableView::stopTitle() const
{
    return m_item ? palvera::stopTitle(*m_item) : QString();
}

QString DeliverableView::stopMessage() const
{
    return m_item ? palvera::stopMessage(*m_item) : QString();
}

void DeliverableView::drop(const QList<QUrl>& files)
{
    auto& sender = m_environment.sender;
    if (m_isGone)
        sender.refuse(noLongerThere(deliverable()));
    else if (auto taken = sender.take(files, m_destination))
        sender.send(*std::move(taken));
}

void DeliverableView::chooseFile()
{
    ask(Asking::file);
}

QUrl DeliverableView::proposedFolder() const
{
    return QUrl::fromLocalFile(proposedDownloadsFolder());
}

void DeliverableView::pick(const QUrl& chosen)
{
    auto asked = m_asking;
    ask(Asking::nothing);
    if (asked == Asking::file) {
        drop({chosen});
    } else if (asked == Asking::folder) {
        // The folder is kept even when the file has meanwhile been taken away again.
        m_tasks.start(m_filed ? bringDownTo(localPath(chosen), downloadOfFiled())
                              : m_environment.session.setDownloadsFolder(localPath(chosen)));
    }
}

void DeliverableView::cancelPicking()
{
    ask(Asking::nothing);
}

void DeliverableView::downloadFiled()
{
    if (m_filed && !std::exchange(m_isFindingFolder, true))
        m_tasks.start(bringDown(downloadOfFiled()));
}

Download DeliverableView::downloadOfFiled() const
{
    const TransferTarget::Deliverable target{m_destination.org.id, m_destination.project.id, deliverable().id};
    return {.object = deliveredFile(m_environment.api, target, m_filed->object),
            .listedSize = deliverable().expectedBytes(),
            .name = m_filed->saveName,
            .label = deliverable().label,
            .titleName = deliverable().contextLine(),
            .client = m_destination.org.name};
}

Task<void> DeliverableView::bringDown(Download filed)
{
    const auto id = deliverable().id;
    auto folder = co_await m_environment.session.downloadsFolder();
    m_isFindingFolder = false;
    if (folder) {
        filed.folder = *folder;
        m_environment.transfers.addDownload(std::move(filed));
    } else if (id == deliverable().id) {
        ask(Asking::folder);
    }
}

/// Into a folder that becomes the remembered one.
Task<void> DeliverableView::bringDownTo(QString folder, Download filed)
{
    co_await m_environment.session.setDownloadsFolder(folder);
    if (auto kept = co_await m_environment.session.downloadsFolder()) {
        filed.folder = *kept;
        m_environment.transfers.addDownload(std::move(filed));
    }
}

void DeliverableView::pause()
{
    if (m_item)
        m_environment.transfers.pause(m_item->id);
}

void DeliverableView::resume()
{
    if (m_item)
        m_environment.transfers.goOn(m_item->id);
}

void DeliverableView::stop(const QString& key)
{
    m_environment.transfers.stop(QUuid(key));
}

void DeliverableView::ask(Asking asking)
{
    if (std::exchange(m_asking, asking) != asking)
        Q_EMIT pickingChanged();
}

void DeliverableView::setGone(bool gone)
{
    if (std::exchange(m_isGone, gone) != gone)
        Q_EMIT faceChanged();
}

void DeliverableView::updateTransfer()
{
    auto item = m_environment.transfers.activeItem(deliverable().id);
    if (item == m_item)
        return;
    const bool hadItem = m_item.has_value();
    m_item = std::move(item);
    const bool isRetrying = m_item && std::holds_alternative<Item::Retrying>(m_item->state);
    if (isRetrying != m_tick.isActive())
        isRetrying ? m_tick.start(std::chrono::seconds(1)) : m_tick.stop();
    Q_EMIT transferChanged();
    if (hadItem != m_item.has_value())
        Q_EMIT faceChanged();
}

void DeliverableView::updateCutOff()
{
    const auto* found = m_environment.transfers.interrupted().findUploadTo(deliverable().id);
    auto cutOff = found ? std::optional(*found) : std::nullopt;
    if (cutOff == m_cutOff)
        return;
    m_cutOff = std::move(cutOff);
    Q_EMIT cutOffChanged();
    Q_EMIT failureChanged();
}

void DeliverableView::updateFailure()
{
    constexpr int notFound = 404;
    auto failed = m_environment.transfers.failedUpload(deliverable().id);
    if (failed == m_failed)
        return;
    m_failed = std::move(failed);
    const auto error = m_failed ? failureAs<APIError>(std::get<Item::Failed>(m_failed->state).failure) : std::nullopt;
    if (error && error->status() == notFound)
        setGone(true);
    Q_EMIT failureChanged();
}

QString DeliverableView::failure() const
{
    if (!m_failed)
        return {};
    const auto plain = plainReason(m_failed->state);
    const auto precise = technicalReason(m_failed->state);
    const auto said = tr("The last upload failed: %1").arg(visibleText(precise.startsWith(plain) ? precise : plain));
    return precise.startsWith(plain) ? said : said + u'\n' + visibleText(precise);
}

QString DeliverableView::failedName() const
{
    return m_failed ? visibleText(m_failed->name) : QString();
}

bool DeliverableView::isCutOffFailed() const
{
    return m_failed && m_cutOff && m_failed->journalKey == m_cutOff->journal.key &&
           m_failed->name == m_cutOff->journal.filename; // of another file, nothing has been sent yet
}

void DeliverableView::tryAgain()
{
    if (m_failed)
        m_environment.transfers.tryAgain(m_failed->id);
}

QString DeliverableView::cutOffName() const
{
    return m_cutOff ? visibleText(m_cutOff->journal.filename) : QString();
}

QString DeliverableView::cutOffText() const
{
    if (!m_cutOff)
        return {};
    const auto name = cutOffName();
    const auto parts = partsDoneText(*m_cutOff);
    return m_cutOff->isSourceGone
               ? tr("The upload of “%1” was cut off, and the file is not where it was. %2.").arg(name, parts)
               : tr("The upload of “%1” was cut off. %2.").arg(name, parts);
}

} // namespace palvera
