#include "transfer/PartSender.h"

#include "files/FileError.h"
#include "http/HttpAddress.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "transfer/UploadFailures.h"
#include "transfer/UploadRules.h"

#include <QObject>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr int attempts = 8;
/// So often in a row the platform must say that it has no such upload before all that was sent is thrown away.
constexpr int mostForgotten = 3;

} // namespace

Task<QString> PartSender::send(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    QString failure = QObject::tr("The upload failed.");
    int forgotten = 0; // times in a row
    for (int number = 0; number < attempts; ++number) {
        endIfStopped();
        if (number > 0) {
            co_await m_environment.pool.forget(part);
            co_await m_environment.clock.sleep(backOff(number, m_environment.spread()));
            endIfStopped();
        }
        co_await untilMayBegin();
        endIfStopped();
        auto outcome = co_await outcomeOf(attempt(part, body, watcher));
        bool hasBroken = outcome.value && !*outcome.value && outcome.value->error().hasBroken;
        watcher->rest();
        m_environment.board.attemptEnded(hasBroken);
        if (isCancellation(outcome.failure))
            std::rethrow_exception(outcome.failure);
        forgotten = failureAs<UploadForgotten>(outcome.failure) ? forgotten + 1 : 0;
        if (outcome.failure && (forgotten == 0 || forgotten == mostForgotten))
            std::rethrow_exception(outcome.failure);
        auto result = outcome.failure ? missed(describe(outcome.failure)) : *std::move(outcome.value);
        if (result)
            co_return *std::move(result);
        failure = result.error().failure.value_or(failure);
        if (number + 1 < attempts)
            m_environment.board.noteTrouble(part, {.reason = result.error().reason, .attempt = number + 2},
                                            m_environment.clock.now());
    }
    throw APIError(0, failure);
}

Task<PartSender::Attempt> PartSender::attempt(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    auto address = co_await answerOf(m_environment.pool.urlFor(part));
    if (failureAs<UploadForgotten>(address.failure) || isLasting(address.failure) || asksToSignIn(address.failure))
        std::rethrow_exception(address.failure);
    if (address.failure)
        co_return missed(describe(address.failure));
    if (!parseHttpAddress(*address.value))
        co_return std::unexpected(
            Missed{.failure = {}, .reason = QObject::tr("The platform gave an address that is none.")});

    watcher->reset();
    auto answer = co_await put(*address.value, body, watcher);
    if (isCancellation(answer.failure) || failureAs<FileError>(answer.failure) || isLasting(answer.failure))
        std::rethrow_exception(answer.failure);
    if (answer.failure)
        co_return std::unexpected(
            Missed{.failure = describe(answer.failure), .reason = describe(answer.failure), .hasBroken = true});
    co_return judge(*answer.value);
}

Task<Outcome<HttpResponse>> PartSender::put(QByteArray address, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    HttpRequest request{
        .method = "PUT",
        .url = std::move(address),
        .source = &body,
        .idleTimeout = 60s,
        .totalTimeout = 3600s,
        .onSent = [watcher](qint64 sent, qint64 acknowledged) { watcher->progressed(sent, acknowledged); },
        .onHeld = [watcher] { watcher->held(); }};
    auto sending = m_environment.session.send(std::move(request));
    auto first = co_await firstOf(std::move(sending), watchStall(watcher, body.size(), m_environment.clock));
    if (auto* answer = std::get_if<0>(&first))
        co_return std::move(*answer);
    co_return Outcome<HttpResponse>{.failure = std::get<1>(first).failure};
}

PartSender::Attempt PartSender::judge(const HttpResponse& answer)
{
    if (!answer.isSuccess())
        return std::unexpected(Missed{.failure = QObject::tr("Storage answered %1 on a part.").arg(answer.status),
                                      .reason = QObject::tr("Storage answers %1.").arg(answer.status)});
    QString etag = unquoted(answer.header("ETag"));
    if (etag.isEmpty())
        return missed(QObject::tr("The storage service returned no ETag."));
    return etag;
}

PartSender::Attempt PartSender::missed(const QString& failure)
{
    return std::unexpected(Missed{.failure = failure, .reason = failure});
}

Task<void> PartSender::untilMayBegin()
{
    while (!m_environment.board.mayBeginAttempt())
        co_await m_environment.clock.sleep(250ms);
}

void PartSender::endIfStopped() const
{
    if (m_environment.flag->isStopped())
        throwCancelled();
}

} // namespace palvera
