#include "transfer/URLPool.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "service/APIError.h"
#include "transfer/UploadFailures.h"
#include "transfer/UploadProtocol.h"
#include "transfer/UploadRules.h"

#include <QObject>

#include <boost/asio/strand.hpp>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr int partsPerRequest = 16;
constexpr auto trustedFor = 480s;

} // namespace

URLPool::URLPool(Executor engine, Clock& clock, API& api, UploadIdentity upload, int lastPart)
    : m_strand(boost::asio::make_strand(engine)),
      m_clock(clock),
      m_api(api),
      m_upload(std::move(upload)),
      m_lastPart(lastPart)
{}

Task<QByteArray> URLPool::urlFor(int part)
{
    co_return co_await runOn(m_strand, find(part));
}

Task<void> URLPool::forget(int part)
{
    co_await callOn(m_strand, [this, part] { m_cache.erase(part); });
}

Task<QByteArray> URLPool::find(int part)
{
    auto known = m_cache.find(part);
    if (known != m_cache.end() && m_clock.now() - known->second.at < trustedFor)
        co_return known->second.url;

    PartsBody body{.object = m_upload.object,
                   .uploadId = m_upload.uploadId,
                   .from = part,
                   .to = std::min(m_lastPart, part + partsPerRequest - 1)};
    auto signing = co_await answerOf(signParts(m_api, m_upload.target, m_upload.sessionId, body));
    if (auto refusal = failureAs<APIError>(signing.failure); refusal && saysGone(refusal->status()))
        throw UploadForgotten(refusal->text());
    if (signing.failure)
        std::rethrow_exception(signing.failure);
    auto answer = *std::move(signing.value);
    auto at = m_clock.now();
    for (const auto& each : answer.urls) {
        if (each.partNumber < 1 || each.partNumber > m_lastPart)
            continue;
        m_api.requireEncryption(each.url);
        m_cache[int(each.partNumber)] = {.url = each.url.toUtf8(), .at = at};
    }
    // An address that was too old must not answer for a part that this answer left out.
    known = m_cache.find(part);
    if (known == m_cache.end() || known->second.at != at)
        throw APIError(0, QObject::tr("The platform did not sign part %1.").arg(part));
    co_return known->second.url;
}

} // namespace palvera
