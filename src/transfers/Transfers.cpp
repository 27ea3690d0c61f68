#include "transfers/Transfers.h"

#include "platform/RunOn.h"
#include "platform/SleepInhibitor.h"
#include "transfer/DownloadPlace.h"
#include "transfers/DownloadTask.h"
#include "transfers/UploadTask.h"

#include <QFileInfo>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/strand.hpp>

#include <cassert>

namespace palvera {

namespace asio = boost::asio;

namespace {

ClaimedPlace claimOnDisk(const QString& folder, const QString& name, const QString& source)
{
    // One spelling for one folder, so that two ways to it are seen to lead to the same file.
    auto canonical = QFileInfo(folder).canonicalFilePath();
    auto place = DownloadPlace::claim(canonical.isEmpty() ? folder : canonical, name, source);
    return {.path = place.path(), .removeIfEmpty = [place] { place.removeIfEmpty(); }};
}

Transfers::Environment completed(Transfers::Environment environment)
{
    if (!environment.claim)
        environment.claim = claimOnDisk;
    return environment;
}

} // namespace

Transfers::Transfers(Environment environment) : Transfers(std::move(environment), Settings{}) {}

Transfers::Transfers(Environment environment, Settings settings, QObject* parent)
    : QObject(parent),
      m_environment(completed(std::move(environment))),
      m_settings(settings),
      m_places(asio::make_strand(m_environment.background)),
      m_reading(asio::make_strand(m_environment.background)),
      m_nothingUnderWay(m_environment.main)
{
    m_environment.sleep.onWake([this] { retryAtOnce(); });
    loadJournalsSoon();
}

Transfers::~Transfers()
{
    m_environment.sleep.onWake({});
    m_environment.sleep.release();
}

std::vector<Item> Transfers::inFlight() const
{
    std::vector<Item> found;
    std::ranges::copy_if(items(), std::back_inserter(found), &Item::isInFlight);
    return found;
}

std::vector<Item> Transfers::finished() const
{
    std::vector<Item> found;
    std::ranges::copy_if(items(), std::back_inserter(found), [](const Item& item) { return !item.isInFlight(); });
    return found;
}

std::optional<Item> Transfers::activeItem(const QString& deliverableId) const
{
    auto found = std::ranges::find_if(items(), [&](const Item& item) {
        const auto* deliverable = item.target.asDeliverable();
        return deliverable && deliverable->deliverableId == deliverableId && item.isInFlight();
    });
    return found == items().end() ? std::nullopt : std::optional(*found);
}

std::vector<Item> Transfers::binUploads(const QString& orgId) const
{
    std::vector<Item> found;
    std::ranges::copy_if(items(), std::back_inserter(found), [&](const Item& item) {
        const auto* bin = item.target.asBin();
        return item.kind == Item::Kind::upload && bin && bin->orgId == orgId && item.isInFlight();
    });
    return found;
}

void Transfers::setPanelOpen(bool open)
{
    if (std::exchange(m_panelOpen, open) != open)
        Q_EMIT panelOpenChanged();
}

QUuid Transfers::addUpload(DeliverableUpload upload)
{
    return beginForDeliverable(std::move(upload), {});
}

QUuid Transfers::beginForDeliverable(DeliverableUpload upload, std::optional<QByteArray> bookmark)
{
    const auto& deliverable = upload.deliverable;
    Item item{.id = QUuid::createUuid(),
              .kind = Item::Kind::upload,
              .target = TransferTarget::Deliverable{upload.orgId, upload.projectId, deliverable.id},
              .name = QFileInfo(upload.file).fileName(),
              .file = upload.file,
              .label = deliverable.label,
              .titleName = deliverable.contextLine(),
              .journalKey = deliverable.id};
    return begin(std::move(item), {.file = upload.file,
                                   .bookmark = std::move(bookmark),
                                   .confirmed = upload.confirmed,
                                   .deliverable = std::move(upload.deliverable)});
}

QList<QUuid> Transfers::addBinUploads(const BinUploads& uploads)
{
    QList<QUuid> added;
    for (const auto& file : uploads.files) {
        if (QFileInfo(file).isDir())
            continue;
        auto key = binJournalKey(uploads.orgId, uploads.folder, file);
        bool isOnItsWay = std::ranges::any_of(items(), [&](const Item& item) {
            return item.kind == Item::Kind::upload && item.journalKey == key && item.isInFlight();
        });
        if (!isOnItsWay)
            added.append(
                beginForBin(TransferTarget::Bin{uploads.orgId, uploads.folder}, key, {.file = file}, uploads.caption));
    }
    return added;
}

QUuid Transfers::beginForBin(TransferTarget target, QString key, UploadSource source, std::optional<QString> caption)
{
    Item item{.id = QUuid::createUuid(),
              .kind = Item::Kind::upload,
              .target = std::move(target),
              .name = QFileInfo(source.file).fileName(),
              .file = source.file,
              .label = QStringLiteral("Assets"),
              .titleName = std::move(caption),
              .journalKey = std::move(key)};
    return begin(std::move(item), std::move(source));
}

std::optional<QUuid> Transfers::resume(const Journal& journal)
{
    if (isBusy(journal.key))
        return {};
    m_resuming.insert(journal.key);
    auto target = journal.destination();
    const auto* deliverable = target.asDeliverable();
    if (!deliverable)
        return beginForBin(target, journal.key, {.file = journal.filePath, .bookmark = journal.bookmark}, {});
    return beginForDeliverable({.file = journal.filePath,
                                .orgId = deliverable->orgId,
                                .projectId = deliverable->projectId,
                                .deliverable = {.id = journal.key, .label = journal.filename}},
                               journal.bookmark);
}

QUuid Transfers::begin(Item item, UploadSource source)
{
    auto flag = add(item);
    spawn(UploadTask::run(UploadTask(*this, item, std::move(source), std::move(flag))));
    return item.id;
}

QUuid Transfers::addDownload(Download download)
{
    Item item{.id = QUuid::createUuid(),
              .kind = Item::Kind::download,
              .target = download.object.target,
              .name = download.name = safeFileName(download.name),
              .label = download.label,
              .titleName = download.titleName};
    auto flag = add(item);
    spawn(DownloadTask::run(DownloadTask(*this, item.id, std::move(download), std::move(flag))));
    return item.id;
}

std::shared_ptr<CancelFlag> Transfers::add(Item item)
{
    auto id = item.id;
    auto flag = std::make_shared<CancelFlag>();
    m_live.insert(id, {.flag = flag, .journalKey = item.journalKey, .number = ++m_begun});
    item.state = Item::Running{};
    m_model.append(std::move(item));
    updateInFlight(+1);
    Q_EMIT itemAdded(id);
    return flag;
}

void Transfers::spawn(Task<void> task)
{
    ++m_tasks;
    asio::co_spawn(m_environment.main, std::move(task), [model = QPointer(this)](const std::exception_ptr& failure) {
        assert(!failure && "a task deals with its own failures");
        (void)failure;
        if (model && --model->m_tasks == 0)
            model->m_nothingUnderWay.set();
    });
}

void Transfers::stop(const QUuid& id)
{
    const auto* item = find(id);
    if (!item || !item->isInFlight())
        return;
    if (auto live = m_live.constFind(id); live != m_live.constEnd())
        live->flag->stop();
    setState(id, Item::Stopped{});
}

Task<void> Transfers::suspend()
{
    for (auto live = m_live.begin(); live != m_live.end(); ++live) {
        if (live->flag->isStopped())
            continue;
        live->isSuspended = true;
        live->flag->stop();
    }
    while (m_tasks > 0)
        co_await m_nothingUnderWay.wait();
}

void Transfers::clearFinished()
{
    for (const auto& item : finished())
        remove(item.id);
}

} // namespace palvera
