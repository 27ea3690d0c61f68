#include "transfer/UploadRun.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/BulkBuffer.h"
#include "files/FileError.h"
#include "files/FileTypes.h"
#include "files/SourceFile.h"
#include "service/APIError.h"
#include "service/BrowsingOperations.h"
#include "transfer/PartBody.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/this_coro.hpp>

#include <QFileInfo>

namespace palvera {

namespace asio = boost::asio;

namespace {

/// Whether the platform refuses to complete an upload because it is not, or no longer, an open one.
bool saysNotOpen(const std::exception_ptr& failure)
{
    auto error = failureAs<APIError>(failure);
    return error && (error->status() == 404 || error->status() == 409 || error->status() == 410);
}

} // namespace

UploadRun::UploadRun(const Uploader::Environment& environment, const Uploader::Settings& settings,
                     UploadRequest request)
    : m_environment(environment),
      m_settings(settings),
      m_request(std::move(request)),
      m_disk(asio::make_strand(environment.engine))
{}

Task<void> UploadRun::perform()
{
    if (!isPlainFileName(m_request.key))
        throw FileError(QStringLiteral("This upload cannot be recorded under the name “%1”.").arg(m_request.key));
    auto running = m_environment.journals.tryLock(m_request.key);
    if (!running)
        throw FileError(QStringLiteral("This upload is already running."));
    findFile();
    if (!adoptJournal())
        co_await startAfresh();
    TransferLog log(m_environment.libraryFolder, m_journal.filename, m_environment.clock);
    auto sent = co_await outcomeOf(sendParts(log));
    if (failureAs<SourceChanged>(sent.failure))
        co_await forget(); // the journal's stamp may be too coarse to tell the file from what it was
    if (sent.failure)
        std::rethrow_exception(sent.failure);
    checkComplete();
    co_await deliver();
    co_await forget();
    log.done(m_byteSize);
    m_request.onProgress({.sent = m_byteSize, .total = m_byteSize});
}

Task<void> UploadRun::forget()
{
    co_await callOn(m_disk, [this] { m_environment.journals.removeJournal(m_journal.key); });
}

void UploadRun::findFile()
{
    m_path = m_request.file;
    m_bookmark = m_request.bookmark;
    if (auto found = m_bookmark ? bookmark::resolve(*m_bookmark) : std::nullopt) {
        m_path = found->path;
        if (found->stale)
            m_bookmark = bookmark::make(m_path);
    }
    QFileInfo file(m_path);
    m_byteSize = file.isFile() ? file.size() : 0;
    if (m_byteSize < 1)
        throw APIError(0, QStringLiteral("That file is empty."));
    m_changed = file.lastModified();
}

bool UploadRun::adoptJournal()
{
    auto journal = m_environment.journals.loadJournal(m_request.key);
    if (!journal || journal->fileStamp != fileStamp(m_path) || journal->byteSize != m_byteSize)
        return false;
    m_journal = std::move(*journal);
    return true;
}

Task<void> UploadRun::startAfresh()
{
    QString stamp = fileStamp(m_path); // before the platform learns the size, so that a change meanwhile shows
    QString filename = QFileInfo(m_path).fileName();
    QString contentType = mimeTypeForName(filename);
    const auto& target = m_request.target;
    Started started;
    if (const auto* bin = target.asBin()) {
        started = co_await startBinUpload(
            m_environment.api, *bin,
            {.filename = filename, .contentType = contentType, .byteSize = m_byteSize, .folder = bin->folder});
    } else {
        StartBody body{.filename = filename, .contentType = contentType, .byteSize = m_byteSize};
        if (m_request.confirmed)
            body.confirmed = true;
        started = co_await startUpload(m_environment.api, target, body);
    }
    if (!coversExactly(started.partSize, started.partCount, m_byteSize))
        throw APIError(0, QStringLiteral("The platform cut the file into parts that do not add up to it."));

    m_journal = Journal{.key = m_request.key,
                        .orgId = target.orgId(),
                        .projectId = target.projectId(),
                        .object = started.object,
                        .uploadId = started.uploadId,
                        .partSize = started.partSize,
                        .partCount = int(started.partCount),
                        .byteSize = m_byteSize,
                        .filePath = m_path,
                        .filename = filename,
                        .bookmark = m_bookmark ? m_bookmark : bookmark::make(m_path),
                        .fileStamp = stamp,
                        .done = {},
                        .target = target,
                        .sessionId = target.asBin() ? std::optional(started.sessionId.value_or(started.uploadId))
                                                    : std::nullopt};
    co_await record({});
}

Task<void> UploadRun::record(ConfirmedParts done)
{
    m_journal.done = std::move(done);
    co_await callOn(m_disk, [this, journal = m_journal] { m_environment.journals.saveJournal(journal); });
}

Task<void> UploadRun::sendParts(TransferLog& log)
{
    auto run = co_await asio::this_coro::executor;
    Shared shared{.board = Board(partsToSend(m_journal.partCount, m_journal.done), m_journal.done, m_journal.partSize,
                                 m_byteSize),
                  .pool = URLPool(m_environment.engine, m_environment.clock, m_environment.api,
                                  {.target = m_journal.destination(),
                                   .sessionId = m_journal.sessionId,
                                   .object = m_journal.object,
                                   .uploadId = m_journal.uploadId},
                                  m_journal.partCount),
                  .log = log};
    m_request.onProgress({.sent = shared.board.sent(), .total = m_byteSize});
    ProgressReporter reporter(
        run, m_environment.clock, shared.board, m_byteSize,
        {.redrawEvery = m_settings.redrawEvery, .reportEvery = m_settings.reportEvery}, m_request.onProgress,
        [this](ConfirmedParts done) { return record(std::move(done)); }, reportToPlatform());
    auto first = co_await firstOf(sendOverLanes(shared), reporter.run());

    // However that ended, by a stop too: what storage confirmed is recorded before anything else happens.
    co_await asio::this_coro::throw_if_cancelled(false);
    co_await record(shared.board.done());
    co_await asio::this_coro::throw_if_cancelled(true);
    auto state = co_await asio::this_coro::cancellation_state;
    if (state.cancelled() != asio::cancellation_type::none)
        throwCancelled();
    if (auto failure = shared.board.failure())
        std::rethrow_exception(failure);
    if (auto failure = std::visit([](const auto& outcome) { return outcome.failure; }, first))
        std::rethrow_exception(failure);
    if (fileStamp(m_path) != m_journal.fileStamp || QFileInfo(m_path).lastModified() != m_changed)
        throw SourceChanged();
}

ProgressReporter::Report UploadRun::reportToPlatform() const
{
    auto target = m_journal.destination();
    if (target.asBin())
        return {};
    return [&api = m_environment.api, target](ProgressBody body) { return reportProgress(api, target, body); };
}

Task<void> UploadRun::sendOverLanes(Shared& shared)
{
    int count = laneCount(m_settings.lanes, m_settings.inFlightBudget, m_journal.partSize, shared.board.queued());
    std::vector<Task<void>> lanes;
    for (int i = 0; i < count; ++i)
        lanes.push_back(runOn(Executor(asio::make_strand(m_environment.engine)), lane(shared)));
    co_await joinAll(std::move(lanes));
}

Task<void> UploadRun::lane(Shared& shared)
{
    auto outcome = co_await outcomeOf(sendFromQueue(shared));
    if (!outcome.failure || isCancellation(outcome.failure))
        co_return;
    shared.board.noteFailure(outcome.failure);
    if (failureAs<SourceChanged>(outcome.failure))
        shared.board.clearQueue(); // the other lanes' parts are of a file that is gone
}

Task<void> UploadRun::sendFromQueue(Shared& shared)
{
    auto session = m_environment.storage();
    auto file = SourceFile::open(m_path);
    BulkBuffer buffer(std::min(m_journal.partSize, m_byteSize));
    PartSender sender(*session, shared.pool, m_environment.clock, m_environment.spread, m_request.flag);
    while (auto part = shared.board.nextPart()) {
        if (m_request.flag->isStopped())
            throwCancelled();
        auto range = rangeOfPart(*part, m_journal.partSize, m_byteSize);
        file.willNeed(range.offset, range.length);
        PartBody body(file, range, buffer.first(range.length));
        auto watcher = std::make_shared<SendWatcher>(m_environment.clock);
        shared.board.watch(*part, watcher);
        auto began = m_environment.clock.now();
        auto sent = co_await outcomeOf(sender.send(*part, body, watcher));
        if (sent.failure) {
            shared.board.giveUp(*part);
            std::rethrow_exception(sent.failure);
        }
        shared.board.settle(*part, *sent.value, range.length);
        shared.log.part(*part, range.length, secondsBetween(began, m_environment.clock.now()));
    }
}

void UploadRun::checkComplete() const
{
    if (!isComplete(m_journal.done, m_journal.partCount))
        throw APIError(0, QStringLiteral("The upload is missing parts (%1 of %2). Resume it to send the rest.")
                              .arg(m_journal.done.size())
                              .arg(m_journal.partCount));
}

Task<void> UploadRun::deliver()
{
    auto target = m_journal.destination();
    CompleteBody body{.object = m_journal.object, .uploadId = m_journal.uploadId, .parts = {}};
    for (const auto& [part, etag] : m_journal.done)
        body.parts.push_back({.partNumber = part, .etag = etag});
    auto completion = co_await outcomeOf(completeUpload(m_environment.api, target, m_journal.sessionId, body));

    // The answer to an earlier completion may have been lost, an earlier run's or one that the session sent again on a
    // fresh connection. Then the platform refuses this one, and whether the file is there shows only in what follows:
    // in the bin's listing, or in the platform agreeing to file it.
    bool refused = completion.failure && saysNotOpen(completion.failure);
    if (completion.failure && !refused)
        std::rethrow_exception(completion.failure);
    if (target.asBin()) {
        bool there = !refused || co_await isInBin();
        if (!there)
            std::rethrow_exception(completion.failure);
        co_return;
    }
    auto filing = co_await outcomeOf(
        confirmAsset(m_environment.api, target, {.object = m_journal.object, .filename = m_journal.filename}));
    if (filing.failure)
        std::rethrow_exception(refused && failureAs<APIError>(filing.failure) ? completion.failure : filing.failure);
}

Task<bool> UploadRun::isInBin() const
{
    constexpr int mostPages = 100; // of a listing that is searched by name: more is a listing that goes round
    BinQuery query{.search = m_journal.filename};
    for (int page = 0; page < mostPages; ++page) {
        BinPage listed = co_await listBin(m_environment.api, m_journal.orgId, query);
        for (const auto& object : listed.objects)
            if (object.key == m_journal.object && object.size == m_byteSize)
                co_return true;
        if (listed.nextCursor.value_or(QString()).isEmpty())
            break;
        query.cursor = listed.nextCursor;
    }
    co_return false;
}

} // namespace palvera
