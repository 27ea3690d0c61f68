#include "screens/deliverables/DeliverableView.h"

#include "async/RunOn.h"
#include "files/Quantities.h"
#include "files/SourcePath.h"
#include "screens/LocalPath.h"
#include "screens/TransferTexts.h"
#include "screens/Wording.h"
#include "screens/deliverables/DeliverableCard.h"
#include "session/Session.h"
#include "text/VisibleText.h"
#include "transfer/UploadFailures.h"
#include "transfers/Transfers.h"

#include <boost/asio/strand.hpp>

#include <QFileInfo>

namespace palvera {

namespace {

struct Inspection {
    QString objection; ///< why it cannot be sent; empty when it can
    bool isFolder = false;
    qint64 bytes = 0;
};

/// Blocks on the disk.
Inspection inspect(const QString& path)
{
    const auto there = statusOf(path).value_or(PathStatus{});
    return {.objection = objectionToSource(path), .isFolder = there.isFolder, .bytes = there.size};
}

} // namespace

DeliverableView::DeliverableView(const Environment& environment, QObject* parent)
    : QObject(parent),
      m_environment(environment),
      m_disk(boost::asio::make_strand(environment.background)),
      m_tasks(environment.main)
{
    auto& transfers = m_environment.transfers;
    connect(&transfers, &Transfers::itemAdded, this, &DeliverableView::updateTransfer);
    connect(&transfers, &Transfers::itemChanged, this, &DeliverableView::updateTransfer);
    connect(&transfers, &Transfers::itemRemoved, this, &DeliverableView::updateTransfer);
    connect(&transfers.interrupted(), &Interrupted::changed, this, &DeliverableView::updateCutOff);
}

void DeliverableView::open(const Org& org, const Project& project, const Deliverable& deliverable)
{
    m_org = org;
    m_project = project;
    refuse({});
    setDoubtful({});
    ask(Asking::nothing);
    m_isFindingFolder = false;
    update(deliverable);
    updateTransfer();
    updateCutOff();
    m_tasks.start(m_environment.transfers.interrupted().load()); // its file may have been moved since
}

void DeliverableView::update(const Deliverable& deliverable)
{
    m_deliverable = deliverable;
    m_filed = filedFile(deliverable);
    Q_EMIT deliverableChanged();
    Q_EMIT faceChanged();
}

QString DeliverableView::title() const
{
    return titleOf(m_deliverable);
}

QString DeliverableView::contextLine() const
{
    return visibleText(m_deliverable.contextLine().value_or(QString()));
}

QString DeliverableView::symbol() const
{
    return familySymbol(m_deliverable.family);
}

QString DeliverableView::tint() const
{
    return familyTint(m_deliverable.family);
}

QStringList DeliverableView::chips() const
{
    QStringList chips{humanised(m_deliverable.family), humanised(m_deliverable.status),
                      languageName(m_deliverable.language.value_or(QString())),
                      m_deliverable.territory.value_or(QString())};
    for (auto& chip : chips)
        chip = visibleText(chip);
    chips.removeAll(QString());
    return chips;
}

DeliverableView::Face DeliverableView::face() const
{
    if (m_item)
        return InFlight;
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
    return QStringLiteral("%1%").arg(percentOf(m_item->sent, m_item->total));
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
    return m_item ? troubleOf(*m_item) : QString();
}

QString DeliverableView::doubtfulMessage() const
{
    if (!m_doubtful)
        return {};
    auto name = QFileInfo(m_doubtful->upload.file).fileName();
    return tr("%1 is %2. Textless elements are usually a few minutes long. "
              "The picture master row is probably the right place.")
        .arg(name.isEmpty() ? tr("This file") : name, byteCountText(m_doubtful->bytes));
}

bool DeliverableView::drop(const QList<QUrl>& files)
{
    if (files.isEmpty()) { // a program that is busy hands them over too late
        refuse(tr("The file did not arrive from the other program. Drop it again, or choose it here."));
        return false;
    }
    sendFile(files.first());
    return true;
}

void DeliverableView::sendFile(const QUrl& file)
{
    auto path = localPath(file);
    if (path.isEmpty())
        refuse(tr("That is not a file on this computer. Save it here first, then drop it."));
    else
        m_tasks.start(send({.file = path,
                            .orgId = m_org.id,
                            .projectId = m_project.id,
                            .deliverable = m_deliverable,
                            .client = m_org.name}));
}

Task<void> DeliverableView::send(DeliverableUpload intended)
{
    const auto& file = intended.file;
    Inspection found;
    co_await callOn(m_disk, [&] { found = inspect(file); });
    bool isDoubtful = intended.deliverable.kind == QStringLiteral("textless_elements") && found.bytes > mostForTextless;
    if (intended.deliverable.id != m_deliverable.id) { // nobody looks at it any more, and could answer
        if (found.objection.isEmpty() && !isDoubtful)
            m_environment.transfers.addUpload(intended);
        co_return;
    }
    auto name = QFileInfo(file).fileName();
    if (found.isFolder)
        refuse(tr("“%1” is a folder. Drop the file itself.").arg(name.isEmpty() ? file : name));
    else if (!found.objection.isEmpty())
        refuse(found.objection);
    else if (isDoubtful)
        setDoubtful(Doubtful{.upload = intended, .bytes = found.bytes});
    else
        begin(intended);
}

void DeliverableView::begin(const DeliverableUpload& upload)
{
    if (m_item && m_item->kind == Item::Kind::upload) {
        refuse(tr("“%1” is on its way already. Stop it before you send another file.").arg(m_item->name));
        return;
    }
    refuse({});
    m_environment.transfers.addUpload(upload);
}

void DeliverableView::chooseFile()
{
    ask(Asking::file);
}

void DeliverableView::pick(const QUrl& chosen)
{
    auto asked = m_asking;
    ask(Asking::nothing);
    if (asked == Asking::file) {
        sendFile(chosen);
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

void DeliverableView::confirmDoubtful()
{
    auto confirmed = m_doubtful;
    setDoubtful({});
    if (confirmed)
        begin(confirmed->upload);
}

void DeliverableView::dismissDoubtful()
{
    setDoubtful({});
}

void DeliverableView::downloadFiled()
{
    if (m_filed && !std::exchange(m_isFindingFolder, true))
        m_tasks.start(bringDown(downloadOfFiled()));
}

Download DeliverableView::downloadOfFiled() const
{
    const TransferTarget::Deliverable target{m_org.id, m_project.id, m_deliverable.id};
    return {.object = deliveredFile(m_environment.api, target, m_filed->object),
            .listedSize = m_deliverable.expectedBytes(),
            .name = m_filed->saveName,
            .label = m_deliverable.label,
            .titleName = m_deliverable.contextLine(),
            .client = m_org.name};
}

Task<void> DeliverableView::bringDown(Download filed)
{
    const auto id = m_deliverable.id;
    auto folder = co_await m_environment.session.downloadsFolder();
    m_isFindingFolder = false;
    if (folder) {
        filed.folder = *folder;
        m_environment.transfers.addDownload(std::move(filed));
    } else if (id == m_deliverable.id) {
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

void DeliverableView::stop()
{
    if (m_item)
        m_environment.transfers.stop(m_item->id);
}

void DeliverableView::refuse(const QString& why)
{
    if (std::exchange(m_refusal, why) != why)
        Q_EMIT refusalChanged();
}

void DeliverableView::ask(Asking asking)
{
    if (std::exchange(m_asking, asking) != asking)
        Q_EMIT pickingChanged();
}

void DeliverableView::setDoubtful(std::optional<Doubtful> doubtful)
{
    if (!m_doubtful && !doubtful)
        return;
    m_doubtful = std::move(doubtful);
    Q_EMIT doubtfulChanged();
}

void DeliverableView::updateTransfer()
{
    auto item = m_environment.transfers.activeItem(m_deliverable.id);
    if (item == m_item)
        return;
    const bool hadItem = m_item.has_value();
    m_item = std::move(item);
    Q_EMIT transferChanged();
    if (hadItem != m_item.has_value())
        Q_EMIT faceChanged();
}

void DeliverableView::updateCutOff()
{
    const auto* found = m_environment.transfers.interrupted().findUploadTo(m_deliverable.id);
    auto cutOff = found ? std::optional(*found) : std::nullopt;
    if (cutOff == m_cutOff)
        return;
    m_cutOff = std::move(cutOff);
    Q_EMIT cutOffChanged();
}

QString DeliverableView::cutOffText() const
{
    if (!m_cutOff)
        return {};
    const auto name = visibleText(m_cutOff->journal.filename);
    const auto parts = tr("%1 of %2 parts done").arg(m_cutOff->journal.done.size()).arg(m_cutOff->journal.partCount);
    return m_cutOff->isSourceGone
               ? tr("The upload of “%1” was cut off, and the file is not where it was. %2.").arg(name, parts)
               : tr("The upload of “%1” was cut off. %2.").arg(name, parts);
}

} // namespace palvera
