#include "transfer/PartSender.h"

#include "files/FileError.h"
#include "http/HttpAddress.h"
#include "service/APIError.h"
#include "transfer/UploadRules.h"

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr int attempts = 8;

} // namespace

PartSender::PartSender(HttpClient& session, URLPool& pool, Clock& clock, Spread spread,
                       std::shared_ptr<CancelFlag> flag)
    : m_session(session), m_pool(pool), m_clock(clock), m_spread(std::move(spread)), m_flag(std::move(flag))
{}

Task<QString> PartSender::send(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    QString failure = QStringLiteral("The upload failed.");
    for (int number = 0; number < attempts; ++number) {
        endIfStopped();
        if (number > 0) {
            co_await m_pool.forget(part);
            co_await m_clock.sleep(backOff(number, m_spread()));
            endIfStopped();
        }
        Attempt result = co_await attempt(part, body, watcher);
        if (result)
            co_return *std::move(result);
        failure = result.error().value_or(failure);
    }
    throw APIError(0, failure);
}

Task<PartSender::Attempt> PartSender::attempt(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    auto address = co_await answerOf(m_pool.urlFor(part));
    if (address.failure)
        co_return std::unexpected(describe(address.failure));
    if (!parseHttpAddress(*address.value))
        co_return std::unexpected(std::nullopt);

    watcher->reset();
    auto answer = co_await put(*address.value, body, watcher);
    if (isCancellation(answer.failure) || failureAs<FileError>(answer.failure))
        std::rethrow_exception(answer.failure);
    if (answer.failure)
        co_return std::unexpected(describe(answer.failure));
    co_return judge(*answer.value);
}

Task<Outcome<HttpResponse>> PartSender::put(QByteArray address, PartBody& body, std::shared_ptr<SendWatcher> watcher)
{
    HttpRequest request{.method = "PUT",
                        .url = std::move(address),
                        .source = &body,
                        .idleTimeout = 60s,
                        .totalTimeout = 3600s,
                        .onSent = [watcher](qint64 sent) { watcher->progressed(sent); }};
    auto sending = m_session.send(std::move(request));
    auto first = co_await firstOf(std::move(sending), watchStall(watcher, body.size(), m_clock));
    if (auto* answer = std::get_if<0>(&first))
        co_return std::move(*answer);
    co_return Outcome<HttpResponse>{.failure = std::get<1>(first).failure};
}

PartSender::Attempt PartSender::judge(const HttpResponse& answer)
{
    if (!answer.isSuccess())
        return std::unexpected(QStringLiteral("Storage answered %1 on a part.").arg(answer.status));
    QString etag = unquoted(answer.header("ETag"));
    if (etag.isEmpty())
        return std::unexpected(QStringLiteral("The storage service returned no ETag."));
    return etag;
}

void PartSender::endIfStopped() const
{
    if (m_flag->isStopped())
        throwCancelled();
}

} // namespace palvera
