#include "transfers/UploadTask.h"

#include "async/Event.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/FileError.h"
#include "http/NetworkPath.h"
#include "service/API.h"
#include "service/APIError.h"
#include "transfer/ResumeRules.h"
#include "transfer/UploadProtocol.h"
#include "transfers/DiscardUpload.h"

#include <QFileInfo>

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>

namespace palvera {

namespace asio = boost::asio;

UploadTask::UploadTask(Transfers& model, const Item& item, Transfers::UploadSource source,
                       std::shared_ptr<LiveTransfer> live)
    : m_model(&model),
      m_environment(model.m_environment),
      m_retries(std::clamp(model.m_settings.retries, 0, mostRetries)),
      m_keepsWaiting(model.m_settings.keepsWaiting),
      m_disk(asio::make_strand(model.m_environment.background)),
      m_id(item.id),
      m_target(item.target),
      m_key(item.journalKey.value_or(QString())),
      m_label(item.label),
      m_client(item.client),
      m_account(model.account()),
      m_api(m_environment.api.pinned()),
      m_service(QString::fromUtf8(m_api->makeURL(QString()))),
      m_source(std::move(source)),
      m_live(std::move(live)),
      m_queue(model.m_uploadQueue),
      m_signIn(m_environment.signIns)
{}

Task<void> UploadTask::run(UploadTask task)
{
    co_await task.perform();
}

Task<void> UploadTask::perform()
{
    co_await letPredecessorEnd();
    co_await findFile();
    for (int failed = 0;;) {
        if (m_live->isPaused()) {
            co_await stayPaused();
            failed = 0;
        }
        if (!m_model)
            co_return;
        if (m_live->isStopped())
            co_return co_await end();
        const auto run = m_live->run();
        auto failure = (co_await outcomeOf(attempt())).failure;
        m_queue->leave(m_id);
        if (!failure)
            co_await leave();
        if (!m_model)
            co_return;
        if (!failure)
            co_return succeed();
        if (run->isStopped())
            continue;
        if (isCancellation(failure))
            co_return co_await end();
        if (m_source.deliverable && isDeliveryDoubt(failure))
            co_return co_await raiseDoubt(failure);
        const auto renewed = co_await outcomeOf(m_signIn.mayGoOnAfter(failure, m_model, m_id, run));
        if (renewed.failure || *renewed.value)
            continue; // a cancellation, or signed in again
        if (failed >= m_retries || !isRetryable(failure))
            co_return co_await fail(failure);
        co_await waitForRetry(retryDelay(failed), failure);
        ++failed;
    }
}

Task<void> UploadTask::letPredecessorEnd()
{
    Event ended(m_environment.main);
    QObject listener;
    QObject::connect(m_model, &Transfers::itemEnded, &listener, [&ended] { ended.set(); });
    while (m_model && m_model->m_live.isBeingGivenUp(m_key, m_id)) {
        m_queue->leave(m_id);
        m_model->showMoving(m_id, Item::Waiting{});
        co_await ended.wait();
    }
}

Task<void> UploadTask::findFile()
{
    Found found{.path = m_source.file};
    co_await callOn(m_disk, [&] { found = lookForFile(); });
    if (m_model)
        m_model->change(m_id, [&](Item& item) {
            item.file = found.path;
            item.name = QFileInfo(found.path).fileName();
            item.sent = found.sent;
            item.total = found.size;
        });
}

UploadTask::Found UploadTask::lookForFile()
{
    Found found{.path = m_source.file};
    if (!m_source.bookmark)
        m_source.bookmark = bookmark::make(m_source.file);
    else if (auto bookmarked = bookmark::resolve(*m_source.bookmark))
        found.path = bookmarked->path;
    const auto identity = identityOf(found.path);
    if (!identity || identity->size < 1)
        return found;
    found.size = identity->size;
    const auto journal = m_environment.journals.loadJournal(m_key);
    const UploadSubject subject{
        .path = found.path, .identity = *identity, .target = m_target, .service = m_service, .account = accountId()};
    if (journal && fitOf(*journal, subject) == JournalFit::fits)
        found.sent = confirmedBytes(*journal);
    else if (m_keepsWaiting)
        enter(subject);
    return found;
}

void UploadTask::enter(const UploadSubject& subject) const
try {
    m_environment.journals.saveWaiting({.key = m_key,
                                        .orgId = m_target.orgId(),
                                        .projectId = m_target.projectId(),
                                        .partSize = subject.identity.size,
                                        .partCount = 1,
                                        .byteSize = subject.identity.size,
                                        .filePath = subject.path,
                                        .filename = QFileInfo(subject.path).fileName(),
                                        .bookmark = m_source.bookmark,
                                        .fileStamp = fileStamp(subject.identity),
                                        .target = m_target,
                                        .service = m_service,
                                        .account = accountId(),
                                        .label = m_label,
                                        .client = client()});
} catch (const FileError&) { // NOLINT(bugprone-empty-catch): then it is only forgotten with the program
}

Task<void> UploadTask::leave()
{
    co_await callOn(m_disk, [this] { m_environment.journals.removeWaiting(m_key); });
}

Task<void> UploadTask::stayPaused()
{
    std::optional<LockFile> hold;
    // Without a lock another program may go on with it, and this one does not then.
    co_await outcomeOf(callOn(m_disk, [&] {
        hold.emplace(m_environment.journals.lockOf(m_key));
        hold->tryLock();
    }));
    co_await m_live->whilePaused();
    co_await callOn(m_disk, [&] { hold.reset(); });
}

Task<void> UploadTask::attempt()
{
    const auto run = m_live->run();
    co_await Transfers::takeSlot(m_model, m_id, m_queue, run);
    UploadRequest request{.api = m_api,
                          .target = m_target,
                          .file = m_source.file,
                          .bookmark = m_source.bookmark,
                          .key = m_key,
                          .account = accountId(),
                          .label = m_label,
                          .client = client(),
                          .confirmed = m_source.confirmed,
                          .flag = run};
    request.onProgress = [main = m_environment.main, model = m_model, id = m_id](const UploadProgress& now) {
        asio::post(main, [model, id, now] {
            if (model)
                model->apply(id, now.sent, now.total, now.bytesPerSecond, now.trouble);
        });
    };
    request.onRemark = [main = m_environment.main, model = m_model, id = m_id](const QString& remark) {
        asio::post(main, [model, id, remark] {
            if (model)
                model->change(id, [&](Item& item) { item.remark = remark; });
        });
    };
    co_await m_environment.upload(std::move(request));
}

Task<void> UploadTask::waitForRetry(std::chrono::seconds delay, std::exception_ptr failure)
{
    m_model->change(m_id, [&](Item& item) {
        item.state = Item::Retrying{
            .message = describe(failure), .until = m_environment.clock.wallNow() + delay, .failure = failure};
        item.rate = {};
    });
    co_await m_live->sleep(waitFor(delay));
}

Task<void> UploadTask::waitFor(std::chrono::seconds delay)
{
    co_await firstOf(m_environment.clock.sleep(delay), untilNetworkReturns(m_environment.network, m_environment.clock));
}

void UploadTask::succeed()
{
    m_model->setState(m_id, Item::Done{});
    m_model->countUpload();
    m_model->ended(m_id);
}

Task<void> UploadTask::raiseDoubt(std::exception_ptr failure)
{
    co_await leave();
    if (!m_model)
        co_return;
    m_model->m_interrupted.show(m_key);
    m_model->raise(m_id, {.id = QUuid::createUuid(),
                          .message = describe(failure),
                          .file = m_source.file,
                          .orgId = m_target.orgId(),
                          .projectId = m_target.projectId(),
                          .deliverable = *m_source.deliverable,
                          .client = m_client});
    m_model->ended(m_id);
}

Task<void> UploadTask::fail(std::exception_ptr failure)
{
    co_await leave();
    if (!m_model)
        co_return;
    m_model->m_interrupted.show(m_key);
    m_model->setState(m_id, Item::Failed{.message = describe(failure), .failure = failure});
    m_model->noteFailure(m_id);
    m_model->loadInterruptedSoon();
    co_await sendStopReport();
    if (m_model)
        m_model->ended(m_id);
}

Task<void> UploadTask::end()
{
    if (m_live->isSuspended())
        m_model->ended(m_id);
    else
        co_await giveUp();
}

Task<void> UploadTask::giveUp()
{
    m_model->setState(m_id, Item::Stopped{});
    co_await outcomeOf(runUntilStopped(m_live->cutFlag(), discard()));
    if (m_model)
        co_await sendStopReport();
    if (m_model)
        m_model->ended(m_id);
}

Task<void> UploadTask::discard()
{
    co_await discardUpload(*m_api, m_environment.journals, m_disk, m_key);
}

Task<void> UploadTask::sendStopReport()
{
    const auto* item = m_model->find(m_id);
    if (!item || !m_target.asDeliverable() || m_live->cutFlag()->isStopped())
        co_return;
    ProgressBody body{
        .bytesSent = item->sent, .bytesTotal = std::max<qint64>(item->total, 1), .status = QStringLiteral("stopped")};
    co_await outcomeOf(runUntilStopped(m_live->cutFlag(), reportProgress(*m_api, m_target, body)));
}

} // namespace palvera
