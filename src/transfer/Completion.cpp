#include "transfer/Completion.h"

#include "async/TaskGroup.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "service/BrowsingOperations.h"
#include "transfer/UploadFailures.h"
#include "transfer/UploadProtocol.h"

#include <QObject>

namespace palvera {

namespace {

/// How long the platform may take to put the parts together, and how often it is asked meanwhile.
constexpr std::chrono::minutes mostTime{15};
constexpr std::chrono::seconds pause{10};
/// So many answers may get lost on their way, and so soon after each it is asked again.
constexpr int mostLost = 3;
constexpr std::chrono::seconds pauseAfterLoss{1};

/// The status of a refusal; 0 for any other failure and for none.
qint64 statusOf(const std::exception_ptr& failure)
{
    auto error = failureAs<APIError>(failure);
    return error ? error->status() : 0;
}

/// What the user has to answer, by a confirmation or by signing in: it is no use to ask on.
bool isForTheUser(const std::exception_ptr& failure)
{
    auto error = failureAs<APIError>(failure);
    return error && (error->asksToSignIn() || error->code() == QStringLiteral("delivery_doubt"));
}

/// Whether the platform has no such upload, or none any more.
bool isGone(const std::exception_ptr& failure)
{
    return saysGone(statusOf(failure));
}

/// Whether the platform may be putting the file together still.
bool isStillAtIt(const std::exception_ptr& failure)
{
    constexpr int requestTimeout = 408, conflict = 409, gatewayTimeout = 504;
    const auto status = statusOf(failure);
    if (status == requestTimeout || status == conflict || status == gatewayTimeout)
        return true;
    auto error = failureAs<TransportError>(failure);
    return error && (error->kind() == TransportError::Kind::idle || error->kind() == TransportError::Kind::timedOut);
}

/// Whether the platform may have done what it was asked, and its answer got lost.
bool isAnswerLost(const std::exception_ptr& failure)
{
    auto error = failureAs<TransportError>(failure);
    return error && error->kind() == TransportError::Kind::broken;
}

} // namespace

Task<void> Completion::perform()
{
    const auto deadline = m_clock.now() + mostTime;
    int lost = 0;
    while (auto failure = co_await attempt()) {
        const bool isLost = isAnswerLost(failure);
        lost += isLost;
        if (m_clock.now() >= deadline || lost > mostLost)
            std::rethrow_exception(failure);
        co_await m_clock.sleep(isLost ? pauseAfterLoss : pause);
    }
}

/// Null once the file is there; else why that cannot be told yet.
///
/// The answer to an earlier completion may have been lost, this run's or an earlier one's, and the platform may still
/// be at it. Whether the file is there shows only in what follows: in the platform agreeing to file it, or in the bin's
/// listing.
Task<std::exception_ptr> Completion::attempt()
{
    CompleteBody body{.object = m_journal.object, .uploadId = m_journal.uploadId, .parts = {}};
    for (const auto& [part, etag] : m_journal.done)
        body.parts.push_back({.partNumber = part, .etag = etag});
    const auto target = m_journal.destination();
    auto completion = co_await answerOf(completeUpload(m_api, target, m_journal.sessionId, body));
    auto failure = completion.failure;
    if (failure && (isForTheUser(failure) || !(isGone(failure) || isStillAtIt(failure) || isAnswerLost(failure))))
        std::rethrow_exception(failure);
    if (target.asDeliverable())
        co_return co_await fileIt(failure);
    if (completion.value && completion.value->object == m_journal.object)
        co_return nullptr;
    co_return co_await findInBin(failure);
}

/// After a completion that ended with `failure`, or well.
Task<std::exception_ptr> Completion::fileIt(std::exception_ptr failure)
{
    const ConfirmBody body{.object = m_journal.object, .filename = m_journal.filename};
    auto filing = co_await answerOf(confirmAsset(m_api, m_journal.destination(), body));
    if (!filing.failure)
        co_return nullptr;
    if (isAnswerLost(filing.failure))
        co_return filing.failure;
    if (!failure || isForTheUser(filing.failure))
        std::rethrow_exception(filing.failure);
    if (isStillAtIt(failure) || (isAnswerLost(failure) && failureAs<APIError>(filing.failure)))
        co_return failure;
    if (isGone(failure) && isGone(filing.failure))
        throw UploadForgotten(describe(failure));
    std::rethrow_exception(failureAs<APIError>(filing.failure) ? failure : filing.failure);
}

/// As `fileIt`. An answer that is not about our object is no proof either.
Task<std::exception_ptr> Completion::findInBin(std::exception_ptr failure)
{
    auto listed = co_await answerOf(isInBin());
    if (listed.value.value_or(false))
        co_return nullptr;
    if (isForTheUser(listed.failure))
        std::rethrow_exception(listed.failure);
    if (!failure)
        co_return std::make_exception_ptr(APIError(0, QObject::tr("The platform has not confirmed the file.")));
    if (isStillAtIt(failure) || (isAnswerLost(failure) && !listed.failure))
        co_return failure;
    if (listed.failure)
        std::rethrow_exception(listed.failure);
    throw UploadForgotten(describe(failure));
}

Task<bool> Completion::isInBin() const
{
    constexpr int mostPages = 100; // of a listing that is searched by name: more is a listing that goes round
    BinQuery query{.search = m_journal.filename};
    for (int page = 0; page < mostPages; ++page) {
        BinPage listed = co_await listBin(m_api, m_journal.orgId, query);
        for (const auto& object : listed.objects)
            if (object.key == m_journal.object && object.size == m_journal.byteSize)
                co_return true;
        if (listed.nextCursor.value_or(QString()).isEmpty())
            break;
        query.cursor = listed.nextCursor;
    }
    co_return false;
}

} // namespace palvera
