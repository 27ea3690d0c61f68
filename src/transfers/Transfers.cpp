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

Transfers::Transfers(Environment environment) : Transfers(std::move(environment), Settings{}) {}

Transfers::Transfers(Environment environment, Settings settings, QObject* parent)
    : QObject(parent),
      m_environment(std::move(environment)),
      m_settings(settings),
      m_places(asio::make_strand(m_environment.background)),
      m_tasks(m_environment.main),
      m_binTurns(std::make_shared<Turns>(m_environment.main, settings.binUploads)),
      m_downloadTurns(std::make_shared<Turns>(m_environment.main, settings.downloads)),
      m_interrupted({.disk = asio::make_strand(m_environment.background),
                     .api = m_environment.api,
                     .journals = m_environment.journals,
                     .index = m_environment.index,
                     .account = m_environment.signIns.now,
                     .isBusy = [this](const QString& key) { return isBusy(key); }})
{
    m_environment.sleep.onWake([this] { retryAtOnce(); });
    loadInterruptedSoon();
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
                                  .label = QStringLiteral("Assets"),
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
    const auto label = journal.label.value_or(row ? journal.filename : QStringLiteral("Assets"));
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
    add(item);
    m_tasks.start(UploadTask::run(UploadTask(*this, item, std::move(source), m_live.value(item.id))));
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
              .client = download.client};
    add(item);
    m_tasks.start(DownloadTask::run(DownloadTask(*this, item.id, std::move(download), m_live.value(item.id))));
    return item.id;
}

QUuid Transfers::resume(const UnfinishedDownload& download)
{
    m_interrupted.hide(download.path);
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

void Transfers::add(Item item)
{
    auto id = item.id;
    m_live.insert(id, {.journalKey = item.journalKey, .number = ++m_begun});
    item.state = Item::Running{};
    m_items.append(std::move(item));
    updateInFlight(+1);
    Q_EMIT itemAdded(id);
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

void Transfers::cutOffInFlight()
{
    for (auto live = m_live.begin(); live != m_live.end(); ++live) {
        if (!live->journalKey)
            live->cut->stop(); // a stopped download, too, whose last chunks are under way
        if (live->flag->isStopped())
            continue;
        live->isSuspended = true;
        live->flag->stop();
    }
}

Task<void> Transfers::suspend()
{
    cutOffInFlight();
    co_await firstOf(m_tasks.untilIdle(), m_environment.clock.sleep(untilCut));
    for (auto live = m_live.begin(); live != m_live.end(); ++live)
        live->cut->stop();
    co_await m_tasks.untilIdle();
}

void Transfers::cutOff()
{
    cutOffInFlight();
    while (!items().empty())
        remove(items().back().id);
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

Task<Turns::Turn> Transfers::takeTurn(QPointer<Transfers> model, QUuid id, std::shared_ptr<Turns> turns,
                                      std::shared_ptr<CancelFlag> flag)
{
    if (!turns->areFree() && model && !flag->isStopped())
        model->setState(id, Item::Waiting{});
    auto first = co_await firstOf(turns->take(), untilStopped(flag));
    auto* taken = std::get_if<0>(&first);
    if (flag->isStopped() || !taken || !taken->value || !model)
        throwCancelled();
    model->setState(id, Item::Running{});
    co_return std::move(*taken->value);
}

void Transfers::change(const QUuid& id, const std::function<void(Item&)>& change)
{
    // Taken from the change itself: whoever hears of it may change the item again before this goes on.
    bool wasInFlight = false;
    bool isInFlight = false;
    bool differs = m_items.change(id, [&](Item& item) {
        wasInFlight = item.isInFlight();
        change(item);
        isInFlight = item.isInFlight();
    });
    if (!differs)
        return;
    if (isInFlight != wasInFlight)
        updateInFlight(isInFlight ? +1 : -1);
    Q_EMIT itemChanged(id);
}

void Transfers::setState(const QUuid& id, Item::State state)
{
    change(id, [&](Item& item) {
        item.state = std::move(state);
        item.trouble.reset();
    });
}

void Transfers::apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate,
                      const std::optional<Trouble>& trouble)
{
    change(id, [&](Item& item) {
        item.apply(sent, total, rate, m_environment.clock.now());
        item.trouble = trouble;
    });
}

void Transfers::remove(const QUuid& id)
{
    const auto* item = find(id);
    if (!item)
        return;
    bool wasInFlight = item->isInFlight();
    m_items.remove(id);
    if (wasInFlight)
        updateInFlight(-1);
    Q_EMIT itemRemoved(id);
}

void Transfers::ended(const QUuid& id)
{
    m_live.remove(id);
    loadInterruptedSoon();
    Q_EMIT itemEnded(id);
}

void Transfers::countUpload()
{
    ++m_uploadsFinished;
    Q_EMIT uploadsFinishedChanged();
}

void Transfers::updateInFlight(int difference)
{
    m_inFlight += difference;
    if (m_inFlight > 0)
        m_environment.sleep.hold(QStringLiteral("Files are being transferred."));
    else
        m_environment.sleep.release();
    m_interrupted.update();
    Q_EMIT inFlightChanged();
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

bool Transfers::isBusy(const QString& journalKey) const
{
    for (auto live = m_live.begin(); live != m_live.end(); ++live) {
        if (live->journalKey != journalKey)
            continue;
        const auto* item = find(live.key());
        if (live->flag->isStopped() || (item && item->isInFlight()))
            return true;
    }
    return false;
}

bool Transfers::isBeingGivenUp(const QString& journalKey, const QUuid& id) const
{
    auto number = m_live.value(id).number;
    return std::ranges::any_of(m_live, [&](const Live& other) {
        return other.number < number && other.journalKey == journalKey && other.flag->isStopped();
    });
}

bool Transfers::isBeingStopped(const QUuid& id) const
{
    auto live = m_live.constFind(id);
    return live != m_live.constEnd() && live->flag->isStopped();
}

Task<void> Transfers::untilEnded(QUuid id)
{
    Event changed(m_environment.main);
    QPointer<Transfers> self(this);
    QObject listener;
    connect(this, &Transfers::itemEnded, &listener, [&changed] { changed.set(); });
    connect(this, &QObject::destroyed, &listener, [&changed] { changed.set(); });
    while (self && self->m_live.contains(id))
        co_await changed.wait();
}

void Transfers::retryAtOnce()
{
    auto now = m_environment.clock.wallNow();
    const auto waits = m_waits;
    for (auto wait = waits.begin(); wait != waits.end(); ++wait) {
        change(wait.key(), [now](Item& item) {
            if (auto* retrying = std::get_if<Item::Retrying>(&item.state))
                retrying->until = now;
        });
        (*wait)->set();
    }
}

} // namespace palvera
