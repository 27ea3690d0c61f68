#include "transfer/DownloadRun.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "transfer/DownloadRules.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/this_coro.hpp>

#include <QFileInfo>
#include <QObject>

#include <algorithm>

namespace palvera {

namespace asio = boost::asio;
using namespace std::chrono_literals;

namespace {

constexpr int attempts = 4;
constexpr int mostTakeOvers = 2; // of one chunk
constexpr std::size_t rememberedPaces = 16;
/// Between looks of a lane that has nothing to do at those that have.
constexpr std::chrono::milliseconds lookEvery{250};

APIError changedInStorage()
{
    return APIError(0, QObject::tr("The file changed in storage while it was being downloaded. Download it again."));
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
      m_disk(asio::make_strand(environment.engine)),
      m_address(m_request.address)
{
    for (const auto& session : sessions)
        m_lanes.emplace_back(*session);
}

Task<void> DownloadRun::perform()
{
    m_somethingWritten.emplace(co_await asio::this_coro::executor);
    co_await probe();
    if (m_request.checkTotal)
        co_await m_request.checkTotal(m_partial.total);
    co_await callOn(m_disk, [this] { prepare(); });
    m_settled = qint64(m_partial.done.size()) * m_settings.chunkSize;
    m_reported = {.received = received(), .total = m_partial.total};
    m_reportedAt = m_environment.clock.now();
    if (m_request.onProgress)
        m_request.onProgress(m_reported);
    co_await fetchAll();
    co_await callOn(m_disk, [this] { removePartial(m_request.destination); });
    if (m_request.onProgress)
        m_request.onProgress({.received = m_partial.total, .total = m_partial.total});
}

Task<void> DownloadRun::probe()
{
    auto request = rangedRequest(m_address, {.offset = 0, .length = 1});
    // Storage that ignores the range would send the whole file.
    request.wantsBody = [](const HttpResponse& head) { return head.status == 206 || !head.isSuccess(); };
    auto answer = co_await m_lanes.front().session.send(std::move(request));
    constexpr int rangeNotSatisfiable = 416; // what storage says of an empty object
    if (!answer.isSuccess() && answer.status != rangeNotSatisfiable)
        throw APIError(answer.status,
                       QObject::tr("That file could not be reached (storage answered %1).").arg(answer.status));
    const auto total = answer.isSuccess() ? totalIn(answer) : 0;
    if (!total)
        throw APIError(0, QObject::tr("Storage did not say how large the file is."));
    if (total < 1)
        throw APIError(0, QObject::tr("That file is empty."));
    m_partial.total = *total;
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
    const auto file = m_file->identity();
    m_partial.file = file.handle;
    if (earlier && recordFits(*earlier, m_partial, file.size, m_settings.chunkSize)) {
        m_partial.done = std::move(earlier->done);
        return;
    }
    // Before the chunks that an earlier record lists are gone; and should there be no room, what stands there is still
    // known as a download that can be removed.
    try {
        savePartial(m_request.destination, m_partial);
    } catch (const FileError& error) {
        if (!removePartial(m_request.destination))
            throw;
        remarkOnce(error);
    }
    m_file->reset(m_partial.total);
}

void DownloadRun::remarkOnce(const FileError& failure)
{
    if (!m_hasRemarked.exchange(true))
        m_request.onRemark(QObject::tr("The progress of this download cannot be kept, so it must not be cut off: %1")
                               .arg(failure.text()));
}

/// The record is kept beside the waves, so that no wave waits for the disk to have everything for good.
Task<void> DownloadRun::fetchAll()
{
    auto keeping = firstOf(keepRecord(), keepReporting());
    auto ended = co_await firstOf(fetchInWaves(), std::move(keeping));
    std::exception_ptr failure;
    if (auto* fetched = std::get_if<0>(&ended))
        failure = fetched->failure;
    else if (auto& kept = std::get<1>(ended); kept.failure)
        failure = kept.failure;
    else
        failure = std::visit([](const auto& outcome) { return outcome.failure; }, *kept.value);
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
    m_open = {chunks.begin(), chunks.end()};
    m_waveEnded = std::make_shared<CancelFlag>();
    std::vector<Task<void>> shares;
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane)
        shares.push_back(work(m_lanes[lane], lane < chunks.size() ? std::optional(chunks[lane]) : std::nullopt));
    co_await allOrNone(std::move(shares));
}

Task<void> DownloadRun::work(Lane& lane, std::optional<qint64> index)
{
    if (index)
        co_await fetch(lane, *index);
    while (!m_open.empty()) {
        if (auto* slow = crawlingLane())
            co_await takeOver(lane, *slow);
        else
            co_await firstOf(m_environment.clock.sleep(lookEvery), untilStopped(m_waveEnded));
    }
}

Task<void> DownloadRun::fetch(Lane& lane, qint64 index)
{
    const auto range = rangeOf(index);
    if (!lane.chunk)
        lane.chunk.emplace(*m_file, m_settings.sliceSize);
    lane.isBusy = true;
    lane.index = index;
    lane.cut = std::make_shared<CancelFlag>();
    lane.moved = m_environment.clock.now();
    const auto cut = lane.cut;
    auto fetched = co_await outcomeOf(runUntilStopped(cut, bring(lane, range)));
    lane.isBusy = false;
    lane.trouble.reset();
    lane.chunk->forgetTaken();
    if (fetched.failure && cut->isStopped() && isCancellation(fetched.failure))
        co_return;
    if (fetched.failure)
        std::rethrow_exception(fetched.failure);
    m_settled += range.length;
    m_written.push_back(index);
    m_somethingWritten->set();
    m_open.erase(index);
    if (m_open.empty())
        m_waveEnded->stop();
}

Task<void> DownloadRun::bring(Lane& lane, ByteRange range)
{
    lane.chunk->begin(range);
    for (int number = 1;; ++number) {
        const auto address = m_addressNumber;
        const auto began = m_environment.clock.now();
        const auto kept = lane.chunk->taken();
        lane.pace.begin(began, kept);
        auto missed = co_await attempt(lane, range);
        lane.pace.end();
        if (!missed) {
            const auto taken = secondsBetween(began, m_environment.clock.now());
            if (taken > 0)
                m_paces.push_back(double(range.length - kept) / taken);
            if (m_paces.size() > rememberedPaces)
                m_paces.pop_front();
            co_return;
        }
        if (lane.chunk->taken() - kept >= m_settings.sliceSize)
            number = 1; // on a line that breaks again and again, all comes in time
        else if (number == attempts)
            throw APIError(0, missed->reason);
        lane.trouble = Trouble{.reason = missed->reason, .attempt = number + 1};
        bool hasOther = missed->isRefused && co_await renewAddress(address);
        if (!hasOther)
            co_await m_environment.clock.sleep(500ms * (1 << number));
    }
}

/// The slow lane lets go of the chunk first: what it still writes must not come after what takes its place.
Task<void> DownloadRun::takeOver(Lane& lane, Lane& slow)
{
    const auto index = slow.index;
    ++m_takenOver[index];
    slow.cut->stop();
    while (slow.isBusy && slow.index == index)
        co_await m_environment.clock.sleep(lookEvery / 25);
    if (m_open.contains(index))
        co_await fetch(lane, index);
}

void DownloadRun::forgiveHolds()
{
    const auto now = m_environment.clock.now();
    for (auto& lane : m_lanes) {
        if (!lane.isBusy || !lane.chunk->wasHeld())
            continue;
        lane.moved = now;
        lane.pace.restart(now, lane.chunk->taken());
    }
}

DownloadRun::Lane* DownloadRun::crawlingLane()
{
    forgiveHolds();
    const auto now = m_environment.clock.now();
    for (auto& lane : m_lanes) {
        if (!lane.isBusy || lane.cut->isStopped() || m_takenOver[lane.index] == mostTakeOvers)
            continue;
        std::vector<double> others(m_paces.begin(), m_paces.end());
        for (auto& other : m_lanes)
            if (auto pace = other.isBusy ? other.pace.pace(now, other.chunk->taken()) : std::nullopt;
                pace && &other != &lane)
                others.push_back(pace->bytesPerSecond);
        const auto pace = lane.pace.pace(now, lane.chunk->taken());
        const auto usual = medianPace(std::move(others));
        const auto whole = rangeOf(lane.index).length;
        const auto left = whole - lane.chunk->taken();
        if (pace && usual && left > 0 && crawls(left, *pace, whole, *usual))
            return &lane;
    }
    return nullptr;
}

/// One lane asks for all: the others, which come meanwhile, find the address at their next attempt.
Task<bool> DownloadRun::renewAddress(int refused)
{
    if (m_request.renewAddress && refused == m_addressNumber && !m_isRenewing) {
        m_isRenewing = true;
        auto asked = co_await outcomeOf(m_request.renewAddress());
        m_isRenewing = false;
        if (isCancellation(asked.failure) || asksToSignIn(asked.failure))
            std::rethrow_exception(asked.failure);
        if (asked.value) {
            m_address = *std::move(asked.value);
            ++m_addressNumber;
        }
    }
    co_return refused != m_addressNumber;
}

/// Brings what has not come yet of the chunk at `range`. What came before the connection broke stays.
Task<std::optional<DownloadRun::Missed>> DownloadRun::attempt(Lane& lane, ByteRange range)
{
    const auto rest = lane.chunk->goOn();
    auto request = rangedRequest(m_address, rest);
    request.sink = &*lane.chunk;
    request.onHeld = [&chunk = *lane.chunk] { chunk.noteHeld(); };
    bool isSure = false; // that what comes belongs there
    request.wantsBody = [this, rest, &isSure](const HttpResponse& head) {
        isSure = namesRange(head, rest);
        return !head.isSuccess() || (!isAnotherObject(head, m_total, m_tag) && !objectionTo(head, rest));
    };
    auto sent = co_await outcomeOf(lane.session.send(std::move(request)));
    if (isCancellation(sent.failure) || isLasting(sent.failure) || failureAs<FileError>(sent.failure))
        std::rethrow_exception(sent.failure);
    if (sent.failure) {
        const auto error = failureAs<TransportError>(sent.failure);
        const bool isTooLong = error && error->kind() == TransportError::Kind::tooLarge;
        const auto came = lane.chunk->taken() - (range.length - rest.length);
        if ((came > 0 && !isSure) || isTooLong || came == rest.length)
            lane.chunk->begin(range);
        co_return Missed{.reason = describe(sent.failure)};
    }
    const auto& answer = *sent.value;
    constexpr int forbidden = 403;
    if (!answer.isSuccess())
        co_return Missed{.reason = QObject::tr("Storage answered %1 on a chunk.").arg(answer.status),
                         .isRefused = answer.status == forbidden};
    if (isAnotherObject(answer, m_total, m_tag))
        throw changedInStorage();
    auto objection = objectionTo(answer, rest);
    if (!objection && answer.length == rest.length)
        co_return std::nullopt;
    lane.chunk->begin(range);
    co_return Missed{.reason = objection.value_or(
                         QObject::tr("Storage sent %1 bytes of a chunk of %2.").arg(answer.length).arg(rest.length))};
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
        } catch (const FileError& error) {
            remarkOnce(error);
        }
    }));
    if (stored.failure) {
        m_notStored = stored.failure;
        std::rethrow_exception(stored.failure);
    }
    m_partial = std::move(next);
}

Task<void> DownloadRun::keepReporting()
{
    for (;;) {
        co_await m_environment.clock.sleep(1s);
        report();
    }
}

void DownloadRun::report()
{
    if (!m_request.onProgress)
        return;
    // What an attempt had brought is lost with it; the figure waits until as much is there again.
    const auto before = m_reported.received;
    const auto now = m_environment.clock.now();
    m_reported.received = std::max(before, received());
    m_reported.bytesPerSecond = double(m_reported.received - before) / secondsBetween(m_reportedAt, now);
    m_reportedAt = now;
    m_reported.trouble = lookForTrouble();
    m_request.onProgress(m_reported);
}

std::optional<Trouble> DownloadRun::lookForTrouble()
{
    forgiveHolds();
    const auto now = m_environment.clock.now();
    std::optional<Clock::Moment> moved;
    std::optional<Trouble> trouble;
    bool isStuck = true;
    bool isUnderWay = false; // between attempts storage has nothing to answer
    for (auto& lane : m_lanes) {
        if (!lane.isBusy)
            continue;
        if (std::exchange(lane.seen, lane.chunk->taken()) != lane.chunk->taken()) {
            lane.moved = now;
            if (lane.chunk->taken() > 0)
                lane.trouble.reset();
        }
        moved = std::max(moved, std::optional(lane.moved));
        isStuck = isStuck && lane.trouble;
        isUnderWay = isUnderWay || lane.pace.began();
        trouble = lane.trouble ? lane.trouble : trouble;
    }
    const auto silence = moved ? now - *moved : std::chrono::nanoseconds(0);
    if (silence > 2s && !m_environment.hasNetwork())
        return Trouble{.reason = QObject::tr("No network.")};
    auto silent = isUnderWay ? troubleOfSilence(silence) : std::nullopt;
    return silent ? silent : isStuck ? trouble : std::nullopt;
}

qint64 DownloadRun::received() const
{
    auto bytes = m_settled;
    for (const auto& lane : m_lanes)
        if (lane.chunk)
            bytes += lane.chunk->taken();
    return std::min(bytes, m_partial.total);
}

ByteRange DownloadRun::rangeOf(qint64 index) const
{
    return rangeOfChunk(index, m_settings.chunkSize, m_partial.total);
}

} // namespace palvera
