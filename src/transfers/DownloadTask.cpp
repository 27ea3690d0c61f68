#include "transfers/DownloadTask.h"

#include "async/Failure.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/FileError.h"
#include "files/Quantities.h"
#include "http/HttpAddress.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>

#include <boost/asio/post.hpp>

#include <thread>

namespace palvera {

namespace asio = boost::asio;

namespace {

/// One spelling for one folder, so that two ways to it are seen to lead to the same file.
QString canonicalFolder(const Download& download)
{
    const auto canonical = QFileInfo(download.folder).canonicalFilePath();
    return canonical.isEmpty() ? download.folder : canonical;
}

} // namespace

DownloadTask::DownloadTask(Transfers& model, const QUuid& id, Download download, std::shared_ptr<LiveTransfer> live)
    : m_model(&model),
      m_environment(model.m_environment),
      m_keepsWaiting(model.m_settings.keepsWaiting),
      m_disk(model.m_places),
      m_id(id),
      m_download(std::move(download)),
      m_live(std::move(live)),
      m_queue(model.m_downloadQueue),
      m_run(m_live->run()),
      m_account(model.account()),
      m_service(QString::fromUtf8(m_environment.api.makeURL(QString()))),
      m_signIn(m_environment.signIns)
{}

Task<void> DownloadTask::run(DownloadTask task)
{
    co_await task.perform();
}

Task<void> DownloadTask::perform()
{
    auto waiting = entryFor({});
    waiting.isBegun = false;
    co_await outcomeOf(callOn(m_disk, [&] {
        waiting.path = QDir(canonicalFolder(m_download)).filePath(m_download.name);
        auto held = m_keepsWaiting ? m_environment.index.saveWaiting(waiting) : std::nullopt;
        if (held)
            m_waitingHold.emplace(*std::move(held));
    }));
    auto failure = (co_await outcomeOf(bringDown())).failure;
    const bool isSuspended = m_live->isSuspended();
    const bool isStopped = m_model && m_live->isStopped() && !isSuspended;
    co_await outcomeOf(callOn(m_disk, [&] {
        if (m_place)
            leavePlace(!failure, isStopped);
        if (!isSuspended)
            m_environment.index.removeWaiting(waiting);
        m_waitingHold.reset();
    }));
    if (!m_model)
        co_return;
    if (m_place)
        m_model->m_paths.remove(m_place->path());
    for (const auto& key :
         {m_place ? m_place->path() : QString(), QDir(m_download.folder).filePath(m_download.name), waiting.key()})
        m_model->m_interrupted.show(key);
    if (!failure)
        m_model->setState(m_id, Item::Done{});
    else if (!m_live->isStopped() && !isCancellation(failure))
        m_model->setState(m_id, Item::Failed{.message = describe(failure), .failure = failure});
    else if (!isSuspended)
        m_model->setState(m_id, Item::Stopped{});
    m_model->ended(m_id);
}

Task<void> DownloadTask::bringDown()
{
    for (;;) {
        co_await m_live->whilePaused();
        m_run = m_live->run();
        auto failure = (co_await outcomeOf(attempt())).failure;
        m_queue->leave(m_id);
        if (!failure)
            co_return;
        if (!m_model || m_live->isStopped())
            std::rethrow_exception(failure);
        if (m_run->isStopped()) // paused
            continue;
        const auto renewed = co_await outcomeOf(m_signIn.mayGoOnAfter(failure, m_model, m_id, m_run));
        if (renewed.failure ? !m_model || m_live->isStopped() : !*renewed.value)
            std::rethrow_exception(failure);
    }
}

Task<void> DownloadTask::attempt()
{
    const auto cut = m_live->cutFlag();
    co_await Transfers::takeSlot(m_model, m_id, m_queue, m_run);
    co_await runUntilStopped(m_run, askForAddress());
    if (!m_place)
        co_await claimPlace();
    if (m_run->isStopped() || !m_model)
        throwCancelled();
    DownloadRequest request{
        .address = m_address, .destination = m_place->path(), .source = m_download.object.identity, .flag = m_run};
    request.renewAddress = [this] { return freshAddress(); };
    request.checkTotal = [this](qint64 total) { return checkTotal(total); };
    request.onRemark = [this](const QString& text) { remark(text); };
    request.onProgress = [main = m_environment.main, model = m_model, id = m_id](const DownloadProgress& now) {
        asio::post(main, [model, id, now] {
            if (model)
                model->apply(id, now.received, now.total, now.bytesPerSecond, now.trouble);
        });
    };
    co_await runUntilStopped(cut, m_environment.download(std::move(request)));
}

Task<void> DownloadTask::askForAddress()
{
    m_address = co_await freshAddress();
}

Task<QByteArray> DownloadTask::freshAddress()
{
    auto address = (co_await m_download.object.address()).toUtf8();
    if (!parseHttpAddress(address))
        throw FileError(QObject::tr("That file has no address."));
    co_return address;
}

Task<void> DownloadTask::checkTotal(qint64 total)
{
    auto listed = m_download.listedSize.value_or(0);
    if (total < listed && m_download.object.listedSize)
        listed = (co_await m_download.object.listedSize()).value_or(0); // it may have been replaced since
    if (total < listed)
        throw FileError(QObject::tr("Storage has only %1 of “%2”, and the platform lists %3.")
                            .arg(byteCountText(total), m_download.name, byteCountText(listed)));
    if (listed > 0 && total > listed)
        remark(QObject::tr("Storage has %1 of “%2”, more than the %3 that the platform lists.")
                   .arg(byteCountText(total), m_download.name, byteCountText(listed)));
}

void DownloadTask::remark(const QString& text)
{
    asio::post(m_environment.main, [model = m_model, id = m_id, text] {
        if (model)
            model->change(id, [&](Item& item) { item.remark = text; });
    });
}

Task<void> DownloadTask::claimPlace()
{
    std::optional<DownloadPlace> claimed;
    for (;;) {
        co_await callOn(m_disk, [&] {
            claimed = DownloadPlace::claim(canonicalFolder(m_download), m_download.name, m_download.object.identity);
        });
        if (!m_model)
            throwCancelled();
        auto holder = m_model->m_paths.constFind(claimed->path());
        if (holder == m_model->m_paths.constEnd())
            break;
        if (!m_model->m_live.isBeingStopped(*holder))
            throw FileError(QObject::tr("“%1” is being downloaded to that folder already.").arg(m_download.name));
        co_await waitFor(*holder);
    }
    m_model->m_paths.insert(claimed->path(), m_id);
    m_model->change(m_id, [&](Item& item) { item.file = claimed->path(); });
    m_model->m_interrupted.hide(claimed->path());
    m_place = std::move(claimed);
    co_await outcomeOf(callOn(m_disk, [this] { enter(); }));
}

void DownloadTask::enter()
{
    constexpr int tries = 20;
    constexpr std::chrono::milliseconds aLook{5}; // for which whoever reads the index holds the lock
    auto outcome = LockFile::Outcome::held;
    for (int i = 0; i < tries && outcome != LockFile::Outcome::taken; ++i) {
        if (i > 0)
            std::this_thread::sleep_for(aLook);
        m_hold.emplace(m_environment.index.lockOf(m_place->path()));
        outcome = m_hold->tryLock();
    }
    if (outcome != LockFile::Outcome::taken) // another program writes that file, as the engine will say
        return m_hold.reset();
    m_environment.index.save(entryFor(m_place->path()));
}

UnfinishedDownload DownloadTask::entryFor(const QString& path) const
{
    const auto& object = m_download.object;
    return {.path = path,
            .source = object.identity,
            .target = object.target,
            .object = object.key,
            .listedSize = m_download.listedSize,
            .label = m_download.label,
            .titleName = m_download.titleName,
            .client = m_download.client.isEmpty() ? std::nullopt : std::optional(m_download.client),
            .account = m_account ? std::optional(m_account->userId) : std::nullopt,
            .service = m_service};
}

Task<void> DownloadTask::waitFor(const QUuid& stopped)
{
    m_queue->leave(m_id);
    m_model->showMoving(m_id, Item::Waiting{});
    co_await runUntilStopped(m_run, m_model->untilEnded(stopped));
    co_await Transfers::takeSlot(m_model, m_id, m_queue, m_run);
}

void DownloadTask::leavePlace(bool isDone, bool isStopped)
{
    const auto path = m_place->path();
    if (!isDone)
        m_place->removeIfEmpty();
    if (!m_hold)
        return;
    if (isDone || isStopped || !DownloadPlace::progressOf(path, m_download.object.identity))
        m_environment.index.remove(path);
    m_hold.reset();
}

} // namespace palvera
