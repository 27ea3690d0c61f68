#include "transfers/UploadTask.h"

#include "async/Event.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "http/NetworkPath.h"
#include "service/APIError.h"
#include "transfer/UploadProtocol.h"
#include "transfers/DiscardUpload.h"

#include <QFileInfo>

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>

namespace palvera {

namespace asio = boost::asio;

UploadTask::UploadTask(Transfers& model, const Item& item, Transfers::UploadSource source, const Transfers::Live& live)
    : m_model(&model),
      m_environment(model.m_environment),
      m_retries(std::clamp(model.m_settings.retries, 0, mostRetries)),
      m_disk(asio::make_strand(model.m_environment.background)),
      m_id(item.id),
      m_target(item.target),
      m_key(item.journalKey.value_or(QString())),
      m_label(item.label),
      m_client(item.client),
      m_account(model.account()),
      m_api(m_environment.api.pinned()),
      m_source(std::move(source)),
      m_flag(live.flag),
      m_cut(live.cut),
      m_turns(m_target.asBin() ? model.m_binTurns : nullptr),
      m_signIn(m_environment.signIns)
{}

Task<void> UploadTask::run(UploadTask task)
{
    co_await task.perform();
}

Task<void> UploadTask::perform()
{
    if (m_turns && !m_turns->areFree() && m_model && !m_flag->isStopped())
        m_model->setState(m_id, Item::Waiting{});
    co_await letPredecessorEnd();
    co_await findFile();
    for (int failed = 0;;) {
        if (!m_model)
            co_return;
        if (m_flag->isStopped())
            co_return co_await end();
        auto failure = (co_await outcomeOf(attempt())).failure;
        if (!m_model)
            co_return;
        if (!failure)
            co_return succeed();
        if (m_flag->isStopped() || isCancellation(failure))
            co_return co_await end();
        if (m_source.deliverable && isDeliveryDoubt(failure))
            co_return raiseDoubt(failure);
        const auto renewed = co_await outcomeOf(m_signIn.mayGoOnAfter(failure, m_model, m_id, m_flag));
        if (renewed.failure || *renewed.value)
            continue; // a cancellation, or signed in again
        if (failed >= m_retries || !isRetryable(failure))
            co_return co_await fail(failure);
        co_await waitForRetry(retryDelay(failed), failure);
        ++failed;
        if (m_model && !m_flag->isStopped())
            m_model->setState(m_id, Item::Running{});
    }
}

Task<void> UploadTask::letPredecessorEnd()
{
    Event ended(m_environment.main);
    QObject listener;
    QObject::connect(m_model, &Transfers::itemEnded, &listener, [&ended] { ended.set(); });
    while (m_model && m_model->isBeingGivenUp(m_key, m_id))
        co_await ended.wait();
}

Task<void> UploadTask::findFile()
{
    auto path = m_source.file;
    co_await callOn(m_disk, [&] {
        if (!m_source.bookmark)
            m_source.bookmark = bookmark::make(m_source.file);
        else if (auto found = bookmark::resolve(*m_source.bookmark))
            path = found->path;
    });
    if (m_model)
        m_model->change(m_id, [&](Item& item) {
            item.file = path;
            item.name = QFileInfo(path).fileName();
        });
}

Task<Turns::Turn> UploadTask::takeTurn()
{
    if (!m_turns)
        co_return Turns::Turn();
    co_return co_await Transfers::takeTurn(m_model, m_id, m_turns, m_flag);
}

Task<void> UploadTask::attempt()
{
    const auto turn = co_await takeTurn();
    UploadRequest request{.api = m_api,
                          .target = m_target,
                          .file = m_source.file,
                          .bookmark = m_source.bookmark,
                          .key = m_key,
                          .account = m_account ? std::optional(m_account->userId) : std::nullopt,
                          .label = m_label,
                          .client = m_client.isEmpty() ? std::nullopt : std::optional(m_client),
                          .confirmed = m_source.confirmed,
                          .flag = m_flag};
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
    auto hurry = std::make_shared<Event>(m_environment.main);
    m_model->m_waits.insert(m_id, hurry);
    co_await firstOf(untilStopped(m_flag),
                     firstOf(m_environment.clock.sleep(delay),
                             firstOf(hurry->wait(), untilNetworkReturns(m_environment.network, m_environment.clock))));
    if (m_model)
        m_model->m_waits.remove(m_id);
}

void UploadTask::succeed()
{
    m_model->setState(m_id, Item::Done{});
    m_model->countUpload();
    m_model->ended(m_id);
}

void UploadTask::raiseDoubt(const std::exception_ptr& failure)
{
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
    m_model->m_interrupted.show(m_key);
    m_model->setState(m_id, Item::Failed{.message = describe(failure), .failure = failure});
    m_model->loadInterruptedSoon();
    co_await sendStopReport();
    if (m_model)
        m_model->ended(m_id);
}

Task<void> UploadTask::end()
{
    if (m_model->isSuspended(m_id))
        m_model->ended(m_id);
    else
        co_await giveUp();
}

Task<void> UploadTask::giveUp()
{
    m_model->setState(m_id, Item::Stopped{});
    co_await outcomeOf(runUntilStopped(m_cut, discard()));
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
    if (!item || !m_target.asDeliverable() || m_cut->isStopped())
        co_return;
    ProgressBody body{
        .bytesSent = item->sent, .bytesTotal = std::max<qint64>(item->total, 1), .status = QStringLiteral("stopped")};
    co_await outcomeOf(runUntilStopped(m_cut, reportProgress(*m_api, m_target, body)));
}

} // namespace palvera
