#include "transfer/DownloadRun.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/FileError.h"
#include "service/APIError.h"
#include "transfer/DownloadRules.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/this_coro.hpp>

#include <QFileInfo>

#include <algorithm>

namespace palvera {

namespace asio = boost::asio;
using namespace std::chrono_literals;

namespace {

constexpr int attempts = 4;

APIError changedInStorage()
{
    return APIError(0, QStringLiteral("The file changed in storage while it was being downloaded. Download it again."));
}

std::exception_ptr firstFailure(const std::vector<std::exception_ptr>& failures)
{
    auto found = std::ranges::find_if(failures, [](const auto& failure) { return failure != nullptr; });
    return found == failures.end() ? nullptr : *found;
}

/// The first failure of several operations that run together.
struct FirstFailure {
    Event happened;
    std::exception_ptr failure = nullptr;
};

Task<void> watch(Task<void> operation, FirstFailure& first)
{
    auto outcome = co_await outcomeOf(std::move(operation));
    if (!outcome.failure || first.failure)
        co_return;
    first.failure = outcome.failure;
    first.happened.set();
}

Task<void> join(std::vector<Task<void>> operations)
{
    auto failures = co_await joinAll(std::move(operations));
    if (auto failure = firstFailure(failures))
        std::rethrow_exception(failure);
}

/// Runs all of `operations`; the first failure cancels the others and is thrown once they have ended.
Task<void> allOrNone(std::vector<Task<void>> operations)
{
    FirstFailure first{.happened = Event(co_await asio::this_coro::executor)};
    std::vector<Task<void>> watched;
    for (auto& operation : operations)
        watched.push_back(watch(std::move(operation), first));
    co_await firstOf(join(std::move(watched)), first.happened.wait());
    if (first.failure)
        std::rethrow_exception(first.failure);
}

} // namespace

DownloadRun::DownloadRun(const Downloader::Environment& environment, const Downloader::Settings& settings,
                         std::span<const std::unique_ptr<HttpClient>> sessions, DownloadRequest request)
    : m_environment(environment),
      m_settings(settings),
      m_request(std::move(request)),
      m_slices(settings.sliceSize),
      m_writing(asio::make_strand(environment.engine)),
      m_disk(asio::make_strand(environment.engine))
{
    for (const auto& session : sessions)
        m_lanes.push_back({.session = *session});
}

Task<void> DownloadRun::perform()
{
    m_somethingWritten.emplace(co_await asio::this_coro::executor);
    co_await probe();
    co_await callOn(m_disk, [this] { prepare(); });
    m_received = qint64(m_partial.done.size()) * m_settings.chunkSize;
    m_windowStart = m_environment.clock.now();
    if (m_request.onProgress)
        m_request.onProgress({.received = std::min(m_received, m_partial.total), .total = m_partial.total});
    co_await fetchAll();
    co_await callOn(m_disk, [this] { removePartial(m_request.destination); });
    if (m_request.onProgress)
        m_request.onProgress({.received = m_partial.total, .total = m_partial.total});
}

Task<void> DownloadRun::probe()
{
    auto request = rangedRequest(m_request.address, {.offset = 0, .length = 1});
    // Storage that ignores the range would send the whole file.
    request.wantsBody = [](const HttpResponse& head) { return head.status == 206 || !head.isSuccess(); };
    auto answer = co_await m_lanes.front().session.send(std::move(request));
    constexpr int rangeNotSatisfiable = 416; // what storage says of an empty object
    if (!answer.isSuccess() && answer.status != rangeNotSatisfiable)
        throw APIError(answer.status,
                       QStringLiteral("That file could not be reached (storage answered %1).").arg(answer.status));
    m_partial.total = totalIn(answer);
    if (m_partial.total < 1 || !answer.isSuccess())
        throw APIError(0, QStringLiteral("That file is empty."));
    m_partial.tag = QString::fromLatin1(answer.header("ETag"));
    m_total = m_partial.total;
    m_tag = m_partial.tag;
    m_partial.source = m_request.source;
}

/// Goes on from the record where it fits what storage has now and what is on the disk; else starts over.
void DownloadRun::prepare()
{
    bool existed = QFileInfo::exists(m_request.destination);
    m_file = DestinationFile::open(m_request.destination);
    auto earlier = existed ? loadPartial(m_request.destination) : std::nullopt;
    if (earlier && recordFits(*earlier, m_partial, m_file->size(), m_settings.chunkSize)) {
        m_partial.done = std::move(earlier->done);
        return;
    }
    // Before the chunks that an earlier record lists are gone; and should there be no room, what stands there is still
    // known as a download that can be removed.
    savePartial(m_request.destination, m_partial);
    m_file->reset(m_partial.total);
}

/// The record is kept beside the waves, so that no wave waits for the disk to have everything for good.
Task<void> DownloadRun::fetchAll()
{
    auto ended = co_await firstOf(fetchInWaves(), keepRecord());
    auto failure = std::visit([](const auto& outcome) { return outcome.failure; }, ended);
    auto state = co_await asio::this_coro::cancellation_state;
    bool cutOff = state.cancelled() != asio::cancellation_type::none;
    if (!cutOff && ended.index() == 0 && !m_written.empty()) {
        auto last = co_await outcomeOf(record());
        failure = failure ? failure : last.failure;
    }
    failure = failure ? failure : m_notStored;
    if (failure)
        std::rethrow_exception(failure);
}

Task<void> DownloadRun::fetchInWaves()
{
    std::vector<qint64> missing;
    for (qint64 index = 0; index < chunkCount(m_partial.total, m_settings.chunkSize); ++index)
        if (!m_partial.done.contains(index))
            missing.push_back(index);
    for (std::size_t first = 0; first < missing.size(); first += m_lanes.size()) {
        if (m_request.flag->isStopped())
            throwCancelled();
        co_await fetchWave(std::span(missing).subspan(first, std::min(m_lanes.size(), missing.size() - first)));
    }
}

Task<void> DownloadRun::fetchWave(std::span<const qint64> chunks)
{
    std::vector<Task<void>> fetches;
    for (std::size_t lane = 0; lane < chunks.size(); ++lane)
        fetches.push_back(fetch(m_lanes[lane], chunks[lane]));
    co_await allOrNone(std::move(fetches));
}

Task<void> DownloadRun::fetch(Lane& lane, qint64 index)
{
    const auto range = rangeOf(index);
    if (!lane.chunk)
        lane.chunk.emplace(m_writing, *m_file, m_slices);
    auto failure = co_await attempt(lane, range);
    for (int number = 1; failure && number < attempts; ++number) {
        co_await m_environment.clock.sleep(500ms * (1 << number));
        failure = co_await attempt(lane, range);
    }
    if (failure)
        throw APIError(0, *failure);
    co_await lane.chunk->finish();
    m_written.push_back(index);
    m_somethingWritten->set();
}

/// Why the chunk has not arrived; nothing when it has.
Task<std::optional<QString>> DownloadRun::attempt(Lane& lane, ByteRange range)
{
    auto request = rangedRequest(m_request.address, range);
    lane.chunk->begin(range);
    request.sink = &*lane.chunk;
    request.wantsBody = [this, range](const HttpResponse& head) {
        return !head.isSuccess() || (!isAnotherObject(head, m_total, m_tag) && !objectionTo(head, range));
    };
    auto sent = co_await outcomeOf(lane.session.send(std::move(request)));
    co_await asio::this_coro::throw_if_cancelled(false);
    co_await lane.chunk->settle();
    co_await asio::this_coro::throw_if_cancelled(true);
    if (isCancellation(sent.failure))
        std::rethrow_exception(sent.failure);
    if (sent.failure)
        co_return describe(sent.failure);
    const auto& answer = *sent.value;
    if (!answer.isSuccess())
        co_return QStringLiteral("Storage answered %1 on a chunk.").arg(answer.status);
    if (isAnotherObject(answer, m_total, m_tag))
        throw changedInStorage();
    if (auto objection = objectionTo(answer, range))
        co_return *objection;
    if (answer.length != range.length)
        co_return QStringLiteral("Storage sent %1 bytes of a chunk of %2.").arg(answer.length).arg(range.length);
    co_return std::nullopt;
}

Task<void> DownloadRun::keepRecord()
{
    for (;;) {
        co_await m_somethingWritten->wait();
        co_await record();
    }
}

/// Brings what is written to the disk for good, then lists it in the record. A record that cannot be written costs
/// chunks fetched twice, never the download.
Task<void> DownloadRun::record()
{
    auto written = std::exchange(m_written, {});
    auto next = m_partial;
    next.done.insert(written.begin(), written.end());
    auto stored = co_await outcomeOf(callOn(m_disk, [this, &next] {
        m_file->sync();
        try {
            savePartial(m_request.destination, next);
        } catch (const FileError&) { // NOLINT(bugprone-empty-catch): the next one may succeed
        }
    }));
    if (stored.failure) {
        m_notStored = stored.failure;
        std::rethrow_exception(stored.failure);
    }
    m_partial = std::move(next);
    for (qint64 index : written) {
        m_received += rangeOf(index).length;
        m_windowBytes += rangeOf(index).length;
    }
    report();
}

void DownloadRun::report()
{
    auto now = m_environment.clock.now();
    if (!m_request.onProgress || (m_lastReport && now - *m_lastReport < 1s))
        return;
    auto seconds = secondsBetween(m_windowStart, now);
    m_request.onProgress(
        {.received = std::min(m_received, m_partial.total),
         .total = m_partial.total,
         .bytesPerSecond = seconds > 0 ? std::optional(double(m_windowBytes) / seconds) : std::nullopt});
    m_lastReport = m_windowStart = now;
    m_windowBytes = 0;
}

ByteRange DownloadRun::rangeOf(qint64 index) const
{
    return rangeOfChunk(index, m_settings.chunkSize, m_partial.total);
}

} // namespace palvera
