#include "transfers/Transfers.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "desktop/SleepInhibitor.h"
#include "files/SourcePath.h"
#include "transfer/DownloadPlace.h"
#include "transfer/UploadFailures.h"
#include "transfers/DownloadTask.h"
#include "transfers/UploadTask.h"

#include <QFileInfo>

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

namespace asio = boost::asio;

namespace {

/// How long the end of the program waits for the platform to hear that uploads were stopped.
constexpr std::chrono::milliseconds untilCut{500};

} // namespace

/// For the queues, which may outlive the model.
std::function<std::ptrdiff_t(const QUuid&)> Transfers::placesOf(QPointer<Transfers> model)
{
    return [model](const QUuid& id) { return model ? model->placeOf(id) : 0; };
}

Transfers::Transfers(Environment environment) : Transfers(std::move(environment), Settings{}) {}

Transfers::Transfers(Environment environment, Settings settings, QObject* parent)
    : TransferItems(environment.clock, parent),
      m_environment(std::move(environment)),
      m_settings(settings),
      m_places(asio::make_strand(m_environment.background)),
      m_tasks(m_environment.main),
      m_uploadQueue(std::make_shared<TransferQueue>(m_environment.main, std::max(1, settings.uploads),
                                                    placesOf(QPointer<Transfers>(this)))),
      m_downloadQueue(std::make_shared<TransferQueue>(m_environment.main, std::max(1, settings.downloads),
                                                      placesOf(QPointer<Transfers>(this)))),
      m_live(m_environment.main),
      m_interrupted({.disk = asio::make_strand(m_environment.background),
                     .api = m_environment.api,
                     .journals = m_environment.journals,
                     .index = m_environment.index,
                     .account = m_environment.signIns.now,
                     .isBusy = [this](const QString& key) { return isBusy(key); }})
{
    m_environment.sleep.onWake([this] { retryAtOnce(); });
    connect(&m_interrupted, &Interrupted::discarded, this, &Transfers::forgetFailure);
    connect(this, &Transfers::inFlightChanged, this, &Transfers::followInFlight);
    connect(this, &Transfers::itemRemoved, this, [this](const QUuid& id) { m_origins.remove(id); });
    loadInterruptedSoon();
}

Transfers::~Transfers()
{
    m_environment.sleep.onWake({});
    m_environment.sleep.release();
}

void Transfers::setAtOnce(int uploads, int downloads)
{
    m_uploadQueue->setMost(std::max(1, uploads));
    m_downloadQueue->setMost(std::max(1, downloads));
}

void Transfers::setKeepsAwake(bool keeps)
{
    m_settings.keepsAwake = keeps;
    followInFlight();
}

std::optional<Item> Transfers::failedUpload(const QString& deliverableId) const
{
    auto failed = m_failedUploads.find(deliverableId);
    return failed == m_failedUploads.end() ? std::nullopt : std::optional(failed->item);
}

void Transfers::setPanelOpen(bool open)
{
    if (std::exchange(m_panelOpen, open) != open)
        Q_EMIT panelOpenChanged();
}

QUuid Transfers::addUpload(DeliverableUpload upload)
{
    const auto& deliverable = upload.deliverable;
    return begin({.target = TransferTarget::Deliverable{upload.orgId, upload.projectId, deliverable.id},
                  .label = deliverable.label,
                  .titleName = deliverable.contextLine(),
                  .client = upload.client,
                  .journalKey = deliverable.id},
                 {.file = upload.file, .confirmed = upload.confirmed, .deliverable = deliverable});
}

Task<BinUploadsBegun> Transfers::addBinUploads(BinUploads uploads)
{
    BinUploadsBegun begun;
    QStringList files;
    co_await callOn(m_environment.background, [&] {
        for (const auto& file : uploads.files) {
            if (statusOf(file).value_or(PathStatus{}).isFolder)
                begun.folders.append(QFileInfo(file).fileName());
            else if (auto objection = objectionToSource(file); !objection.isEmpty())
                begun.objections.append(objection);
            else
                files.append(file);
        }
    });
    constexpr qsizetype atOnce = 8; // then it is for others on the main thread: whoever shows items has work with each
    for (const auto& file : files) {
        auto key = binJournalKey(uploads.orgId, uploads.folder, file);
        bool isOnItsWay =
            std::ranges::any_of(items(), [&](const Item& item) { return item.journalKey == key && item.isInFlight(); });
        if (isOnItsWay) {
            begun.onTheirWay.append(QFileInfo(file).fileName());
            continue;
        }
        if (begun.items.size() % atOnce == atOnce - 1)
            co_await asio::post(m_environment.main, asio::use_awaitable);
        begun.items.append(begin({.target = TransferTarget::Bin{uploads.orgId, uploads.folder},
                                  .label = QObject::tr("Assets"),
                                  .titleName = uploads.caption,
                                  .client = uploads.client,
                                  .journalKey = key},
                                 {.file = file}));
    }
    co_return begun;
}

std::optional<QUuid> Transfers::resume(Journal journal)
{
    if (isBusy(journal.key))
        return {};
    m_interrupted.hide(journal.key);
    auto target = journal.destination();
    UploadSource source{.file = journal.filePath, .bookmark = journal.bookmark};
    const auto* row = target.asDeliverable();
    const auto label = journal.label.value_or(row ? journal.filename : QObject::tr("Assets"));
    if (row)
        source.deliverable = Deliverable{.id = row->deliverableId, .label = label};
    return begin({.target = std::move(target),
                  .label = label,
                  .client = journal.client.value_or(QString()),
                  .journalKey = journal.key},
                 std::move(source));
}

Task<void> Transfers::sendInstead(QString key, QString path)
{
    const auto* left = m_interrupted.findUpload(key);
    if (!left)
        co_return;
    const auto journal = left->journal;
    QString objection;
    co_await callOn(m_environment.background, [&] { objection = objectionToSource(path); });
    if (!objection.isEmpty())
        throw CannotSend(objection);
    co_await m_interrupted.discardUpload(key);
    const auto to = journal.destination();
    const auto client = journal.client.value_or(QString());
    if (const auto* bin = to.asBin()) {
        co_await addBinUploads({.files = {path}, .orgId = bin->orgId, .client = client, .folder = bin->folder});
        co_return;
    }
    const auto& row = *to.asDeliverable();
    addUpload({.file = path,
               .orgId = row.orgId,
               .projectId = row.projectId,
               .deliverable = {.id = row.deliverableId, .label = journal.label.value_or(journal.filename)},
               .client = client});
}

QUuid Transfers::begin(Item item, UploadSource source)
{
    item.id = QUuid::createUuid();
    item.kind = Item::Kind::upload;
    item.file = source.file;
    item.name = QFileInfo(source.file).fileName();
    if (const auto* row = item.target.asDeliverable())
        forgetFailure(row->deliverableId);
    m_origins.insert(item.id, source);
    const auto live = add(item);
    m_tasks.start(UploadTask::run(UploadTask(*this, item, std::move(source), live)));
    return item.id;
}

QUuid Transfers::addDownload(Download download)
{
    Item item{.id = QUuid::createUuid(),
              .kind = Item::Kind::download,
              .target = download.object.target,
              .name = download.name = safeFileName(download.name),
              .label = download.label,
              .titleName = download.titleName,
              .client = download.client,
              .total = std::max<qint64>(0, download.listedSize.value_or(0))};
    m_origins.insert(item.id, download);
    const auto live = add(item);
    m_tasks.start(DownloadTask::run(DownloadTask(*this, item.id, std::move(download), live)));
    return item.id;
}

QUuid Transfers::resume(const UnfinishedDownload& download)
{
    m_interrupted.hide(download.key());
    const auto* row = download.target.asDeliverable();
    return addDownload({.object = row ? deliveredFile(m_environment.api, *row, download.object)
                                      : binObject(m_environment.api, download.target.orgId(), download.object),
                        .listedSize = download.listedSize,
                        .name = QFileInfo(download.path).fileName(),
                        .label = download.label,
                        .titleName = download.titleName,
                        .client = download.client.value_or(QString()),
                        .folder = QFileInfo(download.path).path()});
}

std::shared_ptr<LiveTransfer> Transfers::add(Item item)
{
    auto live = m_live.add(item.id, item.journalKey);
    if (queueOf(item.kind)->enter(item.id))
        item.state = Item::Running{};
    append(std::move(item));
    return live;
}

const std::shared_ptr<TransferQueue>& Transfers::queueOf(Item::Kind kind) const
{
    return kind == Item::Kind::upload ? m_uploadQueue : m_downloadQueue;
}

void Transfers::stop(const QUuid& id)
{
    const auto* item = find(id);
    if (!item || !item->isInFlight())
        return;
    if (const auto live = m_live.find(id))
        live->stop();
    setState(id, Item::Stopped{});
}

void Transfers::stopAll()
{
    for (const auto& item : inFlight())
        stop(item.id);
}

void Transfers::pause(const QUuid& id)
{
    const auto* item = find(id);
    const auto live = m_live.find(id);
    if (!item || !live || !item->isInFlight() || live->isStopped())
        return;
    live->pause();
    change(id, [](Item& paused) {
        paused.state = Item::Paused{};
        paused.rate.reset();
        paused.trouble.reset();
    });
}

void Transfers::goOn(const QUuid& id)
{
    const auto* item = find(id);
    const auto live = m_live.find(id);
    if (!item || !live || !item->isPaused())
        return;
    live->goOn();
    const bool hasSlot = queueOf(item->kind)->enter(id); // at once: its task has the disk to wait for
    setState(id, hasSlot ? Item::State(Item::Running{}) : Item::Waiting{});
}

void Transfers::pauseAll()
{
    for (const auto& item : inFlight())
        pause(item.id);
}

void Transfers::goOnAll()
{
    for (const auto& item : inFlight())
        goOn(item.id);
}

void Transfers::startNow(const QUuid& id)
{
    const auto* item = find(id);
    if (!item)
        return;
    const auto* waiting = std::get_if<Item::Waiting>(&item->state);
    const bool isRetrying = std::holds_alternative<Item::Retrying>(item->state);
    if (!isRetrying && !(waiting && waiting->why.isEmpty()))
        return;
    queueOf(item->kind)->startNow(id);
    if (isRetrying)
        retryAtOnce(id);
}

std::optional<QUuid> Transfers::tryAgain(const QUuid& id)
{
    const auto* listed = find(id);
    const auto failed = std::ranges::find(m_failedUploads, id, [](const FailedUpload& one) { return one.item.id; });
    if (!(listed && !listed->isInFlight()) && failed == m_failedUploads.end())
        return {};
    auto item = listed ? *listed : failed->item;
    if (std::holds_alternative<Item::Done>(item.state) || (item.journalKey && isBusy(*item.journalKey)))
        return {};
    auto origin = listed ? m_origins.value(id) : failed->source;
    remove(id);
    if (auto* download = std::get_if<Download>(&origin))
        return addDownload(std::move(*download));
    auto& source = std::get<UploadSource>(origin);
    if (const auto* left = m_interrupted.findUpload(*item.journalKey))
        source.bookmark = left->journal.bookmark; // it leads to the file, wherever that is by now
    m_interrupted.hide(*item.journalKey);
    return begin({.target = item.target,
                  .label = item.label,
                  .titleName = item.titleName,
                  .client = item.client,
                  .journalKey = item.journalKey},
                 std::move(source));
}

void Transfers::noteFailure(const QUuid& id)
{
    const auto* item = find(id);
    const auto* row = item ? item->target.asDeliverable() : nullptr;
    if (!row)
        return;
    m_failedUploads.insert(row->deliverableId, {.item = *item, .source = std::get<UploadSource>(m_origins.value(id))});
    Q_EMIT failedUploadsChanged();
}

void Transfers::forgetFailure(const QString& deliverableId)
{
    if (m_failedUploads.remove(deliverableId) > 0)
        Q_EMIT failedUploadsChanged();
}

void Transfers::forget(const QUuid& id)
{
    if (const auto* item = find(id); item && !item->isInFlight())
        remove(id);
}

Task<void> Transfers::suspend()
{
    m_live.suspendAll();
    co_await firstOf(m_tasks.untilIdle(), m_environment.clock.sleep(untilCut));
    m_live.cutAll();
    co_await m_tasks.untilIdle();
}

void Transfers::cutOff()
{
    m_live.suspendAll();
    while (!items().empty())
        remove(items().back().id);
    m_failedUploads.clear();
    Q_EMIT failedUploadsChanged();
    if (!std::exchange(m_doubts, {}).isEmpty())
        Q_EMIT doubtChanged();
    m_interrupted.showAll();
    setPanelOpen(false);
}

std::optional<Account> Transfers::account() const
{
    return m_environment.signIns.now ? m_environment.signIns.now() : std::nullopt;
}

void Transfers::followAccount()
{
    if (auto now = account()) {
        if (m_account && m_account != now)
            cutOff();
        m_account = now;
    }
    m_interrupted.update();
}

void Transfers::clearFinished()
{
    for (const auto& item : finished())
        remove(item.id);
}

Task<void> Transfers::takeSlot(QPointer<Transfers> model, QUuid id, std::shared_ptr<TransferQueue> queue,
                               std::shared_ptr<CancelFlag> run)
{
    if (model && !run->isStopped() && !queue->enter(id))
        model->showMoving(id, Item::Waiting{});
    co_await runUntilStopped(run, queue->untilGranted(id));
    if (!model)
        throwCancelled();
    model->showMoving(id, Item::Running{});
}

void Transfers::showMoving(const QUuid& id, Item::State state)
{
    const auto live = m_live.find(id);
    if (live && !live->isStopped() && !live->isPaused())
        setState(id, std::move(state));
}

void Transfers::ended(const QUuid& id)
{
    m_live.remove(id);
    m_uploadQueue->forget(id);
    m_downloadQueue->forget(id);
    loadInterruptedSoon();
    Q_EMIT itemEnded(id);
}

void Transfers::countUpload()
{
    ++m_uploadsFinished;
    Q_EMIT uploadsFinishedChanged();
}

std::optional<Doubt> Transfers::doubt() const
{
    return m_doubts.isEmpty() ? std::nullopt : std::optional(m_doubts.first());
}

void Transfers::raise(const QUuid& id, Doubt doubt)
{
    remove(id);
    m_doubts.append(std::move(doubt));
    if (m_doubts.size() == 1)
        Q_EMIT doubtChanged();
}

std::optional<QUuid> Transfers::confirmDoubt()
{
    auto answered = doubt();
    if (!answered)
        return {};
    dismissDoubt();
    return addUpload({.file = answered->file,
                      .orgId = answered->orgId,
                      .projectId = answered->projectId,
                      .deliverable = answered->deliverable,
                      .client = answered->client,
                      .confirmed = true});
}

void Transfers::dismissDoubt()
{
    if (m_doubts.isEmpty())
        return;
    m_doubts.removeFirst();
    Q_EMIT doubtChanged();
}

void Transfers::loadInterruptedSoon()
{
    m_tasks.start(m_interrupted.load());
}

void Transfers::followInFlight()
{
    if (m_settings.keepsAwake && inFlightCount() > pausedCount())
        m_environment.sleep.hold(QObject::tr("Files are being transferred."));
    else
        m_environment.sleep.release();
    m_interrupted.update();
}

bool Transfers::isBusy(const QString& journalKey) const
{
    return m_live.isBusy(journalKey, [this](const QUuid& id) {
        const auto* item = find(id);
        return item && item->isInFlight();
    });
}

Task<void> Transfers::untilEnded(QUuid id)
{
    Event changed(m_environment.main);
    QPointer<Transfers> self(this);
    QObject listener;
    connect(this, &Transfers::itemEnded, &listener, [&changed] { changed.set(); });
    connect(this, &QObject::destroyed, &listener, [&changed] { changed.set(); });
    while (self && self->m_live.find(id))
        co_await changed.wait();
}

void Transfers::retryAtOnce()
{
    for (const auto& item : inFlight())
        if (std::holds_alternative<Item::Retrying>(item.state))
            retryAtOnce(item.id);
}

void Transfers::retryAtOnce(const QUuid& id)
{
    change(id, [now = m_environment.clock.wallNow()](Item& item) {
        if (auto* retrying = std::get_if<Item::Retrying>(&item.state))
            retrying->until = now;
    });
    if (const auto live = m_live.find(id))
        live->hurry();
}

} // namespace palvera
