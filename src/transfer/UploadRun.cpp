#include "transfer/UploadRun.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Bookmark.h"
#include "files/FileError.h"
#include "files/FileTypes.h"
#include "files/SourcePath.h"
#include "service/APIError.h"
#include "transfer/Completion.h"
#include "transfer/PartBody.h"
#include "transfer/UploadFailures.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/this_coro.hpp>

#include <QFileInfo>
#include <QObject>

namespace palvera {

namespace asio = boost::asio;

UploadRun::UploadRun(const Uploader::Environment& environment, const Uploader::Settings& settings,
                     UploadRequest request)
    : m_environment(environment),
      m_settings(settings),
      m_request(std::move(request)),
      m_disk(asio::make_strand(environment.engine)),
      m_subject{.path = m_request.file,
                .identity = {},
                .target = m_request.target,
                .service = QString::fromUtf8(m_request.api->makeURL(QString())),
                .account = m_request.account}
{}

Task<void> UploadRun::perform()
{
    if (!isUsableKey(m_request.key))
        throw CannotSend(QObject::tr("This upload cannot be recorded under the name “%1”.").arg(m_request.key));
    findFile();
    if (co_await claim())
        co_await send();
    m_request.onProgress({.sent = m_subject.identity.size, .total = m_subject.identity.size});
}

void UploadRun::findFile()
{
    auto found = m_request.bookmark ? bookmark::resolve(*m_request.bookmark) : std::nullopt;
    auto path = found ? found->path : m_request.file;
    if (auto objection = objectionToSource(path); !objection.isEmpty())
        throw CannotSend(objection);
    m_file = SourceFile::open(path);
    m_subject.path = path;
    m_subject.identity = m_file->identity();
}

Task<bool> UploadRun::claim()
{
    try {
        m_claim.emplace(m_environment.journals, m_environment.clock, m_request.key, m_subject);
        co_return co_await m_claim->take(m_request.onRemark);
    } catch (const CannotSend&) {
        throw;
    } catch (const FileError&) {
        m_claim.reset();
        remarkOnce(std::current_exception());
    }
    co_return true;
}

Task<void> UploadRun::send()
{
    auto outcome = co_await outcomeOf(sendAndDeliver());
    if (failureAs<UploadForgotten>(outcome.failure)) {
        m_request.onRemark(QObject::tr("The platform does not know this upload any more: it is sent from its start."));
        co_await forget();
        outcome = co_await outcomeOf(sendAndDeliver());
    }
    if (outcome.failure)
        std::rethrow_exception(outcome.failure);
}

Task<void> UploadRun::sendAndDeliver()
{
    if (!adoptJournal())
        co_await sayingWhy(startAfresh(), {.total = m_subject.identity.size,
                                           .trouble = Trouble{.reason = QObject::tr("Waiting for the platform.")}});
    TransferLog log(m_environment.libraryFolder, m_journal.filename, m_environment.clock);
    auto sent = co_await outcomeOf(sendParts(log));
    if (failureAs<SourceChanged>(sent.failure))
        co_await giveUp(); // what was sent belongs to no file any more
    if (sent.failure)
        std::rethrow_exception(sent.failure);
    checkComplete();
    Completion completion(*m_request.api, m_environment.clock, m_journal);
    co_await sayingWhy(completion.perform(), {.sent = m_journal.byteSize,
                                              .total = m_journal.byteSize,
                                              .trouble = Trouble{.reason = QObject::tr("Finishing on the platform.")}});
    if (m_claim)
        m_claim->noteDone();
    co_await forget();
    log.done(m_journal.byteSize);
}

Task<void> UploadRun::forget()
{
    if (m_keepsJournal)
        co_await callOn(m_disk, [this] { m_environment.journals.removeJournal(m_journal.key); });
}

Task<void> UploadRun::giveUp()
{
    AbortBody body{.object = m_journal.object, .uploadId = m_journal.uploadId};
    co_await outcomeOf(abortUpload(*m_request.api, m_journal.destination(), m_journal.sessionId, body));
    co_await forget();
}

bool UploadRun::adoptJournal()
{
    const auto& store = m_environment.journals;
    const auto& key = m_request.key;
    if (auto journal = store.loadJournal(key)) {
        auto fit = fitOf(*journal, m_subject);
        if (fit == JournalFit::fits) {
            m_journal = std::move(*journal);
            refreshBookmark();
            return true;
        }
        if (fit == JournalFit::fileChanged) {
            m_request.onRemark(
                QObject::tr("“%1” has changed since: it is sent from its start.").arg(journal->filename));
        } else {
            try {
                m_request.onRemark(
                    QObject::tr("The upload of “%1” that was cut off here is kept.").arg(journal->filename));
                store.setAside(std::move(*journal));
            } catch (const FileError&) {
                m_keepsJournal = false;
                remarkOnce(std::current_exception());
                return false;
            }
        }
    }
    for (auto& journal : store.loadJournals()) {
        if (!journal.key.startsWith(key + QLatin1Char('~')) || fitOf(journal, m_subject) != JournalFit::fits ||
            store.isRunning(journal.key))
            continue;
        m_journal = std::move(journal);
        auto earlier = std::exchange(m_journal.key, key);
        try {
            store.saveJournal(m_journal);
            store.removeJournal(earlier);
        } catch (const FileError&) {
            m_journal.key = earlier; // it stays where it is
            remarkOnce(std::current_exception());
        }
        return true;
    }
    return false;
}

/// So that the file is found again under the name that it has by now.
void UploadRun::refreshBookmark()
{
    if (m_subject.path != m_journal.filePath)
        m_journal.bookmark = bookmark::make(m_subject.path, m_subject.identity);
}

Task<void> UploadRun::startAfresh()
{
    const auto& [path, identity, target, service, account] = m_subject;
    QString filename = QFileInfo(path).fileName();
    if (filename != QFileInfo(m_request.file).fileName()) // nothing is sent under a name that nobody gave
        throw CannotSend(QObject::tr("“%1” has another name by now, “%2”, and must be sent anew.")
                             .arg(QFileInfo(m_request.file).fileName(), filename));
    filename = readableName(filename);
    QString contentType = mimeTypeForName(filename);
    Started started;
    if (const auto* bin = target.asBin()) {
        started = co_await startBinUpload(
            *m_request.api, *bin,
            {.filename = filename, .contentType = contentType, .byteSize = identity.size, .folder = bin->folder});
    } else {
        StartBody body{.filename = filename, .contentType = contentType, .byteSize = identity.size};
        if (m_request.confirmed)
            body.confirmed = true;
        started = co_await startUpload(*m_request.api, target, body);
    }
    auto sessionId = target.asBin() ? std::optional(started.sessionId.value_or(started.uploadId)) : std::nullopt;
    if (!coversExactly(started.partSize, started.partCount, identity.size)) {
        co_await outcomeOf(
            abortUpload(*m_request.api, target, sessionId, {.object = started.object, .uploadId = started.uploadId}));
        throw CannotSend(QObject::tr("The platform cut the file into parts that do not add up to it."));
    }
    m_journal = Journal{.key = m_request.key,
                        .orgId = target.orgId(),
                        .projectId = target.projectId(),
                        .object = started.object,
                        .uploadId = started.uploadId,
                        .partSize = started.partSize,
                        .partCount = int(started.partCount),
                        .byteSize = identity.size,
                        .filePath = path,
                        .filename = filename,
                        .bookmark = bookmark::make(path, identity),
                        .fileStamp = fileStamp(identity),
                        .done = {},
                        .target = target,
                        .sessionId = sessionId,
                        .service = service,
                        .account = account,
                        .label = m_request.label,
                        .client = m_request.client};
    co_await record({});
}

Task<void> UploadRun::record(ConfirmedParts done)
{
    m_journal.done = std::move(done);
    if (!m_keepsJournal)
        co_return;
    auto saved = co_await outcomeOf(
        callOn(m_disk, [this, journal = m_journal] { m_environment.journals.saveJournal(journal); }));
    if (failureAs<FileError>(saved.failure))
        remarkOnce(saved.failure);
    else if (saved.failure)
        std::rethrow_exception(saved.failure);
}

void UploadRun::remarkOnce(const std::exception_ptr& failure)
{
    if (!std::exchange(m_hasRemarked, true))
        m_request.onRemark(QObject::tr("The progress of this upload cannot be kept, so it must not be cut off: %1")
                               .arg(describe(failure)));
}

Task<void> UploadRun::sendParts(TransferLog& log)
{
    auto run = co_await asio::this_coro::executor;
    auto queue = partsToSend(m_journal.partCount, m_journal.done);
    const int lanes = laneCount(m_settings.lanes, m_settings.inFlightBudget, m_journal.partSize, queue.size());
    Shared shared{.board = Board(std::move(queue), m_journal.done, m_journal.partSize, m_journal.byteSize, lanes),
                  .pool = URLPool(m_environment.engine, m_environment.clock, *m_request.api,
                                  {.target = m_journal.destination(),
                                   .sessionId = m_journal.sessionId,
                                   .object = m_journal.object,
                                   .uploadId = m_journal.uploadId},
                                  m_journal.partCount),
                  .log = log};
    m_request.onProgress({.sent = shared.board.sent(), .total = m_journal.byteSize});
    ProgressReporter reporter(
        run, m_environment.clock, shared.board, m_journal.byteSize,
        {.redrawEvery = m_settings.redrawEvery, .reportEvery = m_settings.reportEvery},
        [this, &shared](UploadProgress now) {
            now.trouble = troubleOn(shared.board);
            m_request.onProgress(now);
        },
        [this](ConfirmedParts done) { return record(std::move(done)); }, reportToPlatform());
    auto first = co_await firstOf(sendOverLanes(shared, lanes), reporter.run());

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
    requireUnchanged();
}

ProgressReporter::Report UploadRun::reportToPlatform() const
{
    auto target = m_journal.destination();
    if (target.asBin())
        return {};
    return [&api = *m_request.api, target](ProgressBody body) { return reportProgress(api, target, body); };
}

Task<void> UploadRun::sendOverLanes(Shared& shared, int count)
{
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
    if (failureAs<SourceChanged>(outcome.failure) || failureAs<UploadForgotten>(outcome.failure))
        shared.board.clearQueue(); // nothing that the other lanes could still send is worth anything
}

Task<void> UploadRun::sendFromQueue(Shared& shared)
{
    auto& board = shared.board;
    auto session = m_environment.storage();
    PartSender sender({.session = *session,
                       .pool = shared.pool,
                       .board = board,
                       .clock = m_environment.clock,
                       .spread = m_environment.spread,
                       .flag = m_request.flag});
    while (auto part = co_await nextPart(shared)) {
        auto range = rangeOfPart(*part, m_journal.partSize, m_journal.byteSize);
        m_file->willNeed(range.offset, range.length);
        PartBody body(*m_file, range);
        Board::Sending sending{
            .part = *part, .bytes = range.length, .watcher = std::make_shared<SendWatcher>(m_environment.clock)};
        board.watch(sending);
        auto began = m_environment.clock.now();
        QString etag;
        auto sent = co_await outcomeOf(runUntilStopped(sending.cut, sendPart(sender, sending, body, etag)));
        if (sending.cut->isStopped())
            continue; // another lane has it
        if (sent.failure) {
            board.giveUp(*part);
            std::rethrow_exception(sent.failure);
        }
        board.settle(sending, etag);
        shared.log.part(*part, range.length, secondsBetween(began, m_environment.clock.now()));
    }
}

Task<void> UploadRun::sendPart(PartSender& sender, const Board::Sending& sending, PartBody& body, QString& etag) const
{
    if (m_request.flag->isStopped())
        throwCancelled();
    requireUnchanged();
    etag = co_await sender.send(sending.part, body, sending.watcher);
    requireUnchanged(); // each attempt has read it anew
}

/// A part from the queue; when that is empty, one whose sending crawls, for as long as any is in flight.
Task<std::optional<int>> UploadRun::nextPart(Shared& shared) const
{
    auto& board = shared.board;
    constexpr std::chrono::milliseconds lookEvery{250};
    for (;;) {
        if (auto part = board.nextPart())
            co_return part;
        if (board.finished()->isStopped())
            co_return std::nullopt;
        if (auto part = board.takeOver()) {
            co_await shared.pool.forget(*part);
            co_return part;
        }
        co_await firstOf(m_environment.clock.sleep(lookEvery), untilStopped(board.finished()));
    }
}

std::optional<Trouble> UploadRun::troubleOn(const Board& board) const
{
    const auto now = m_environment.clock.now();
    constexpr std::chrono::seconds suspicious{2};
    if (board.silence(now) > suspicious && !m_environment.hasNetwork())
        return Trouble{.reason = QObject::tr("No network.")};
    return board.trouble(now);
}

Task<void> UploadRun::sayingWhy(Task<void> operation, UploadProgress why)
{
    auto first = co_await firstOf(std::move(operation), sayLater(std::move(why)));
    if (auto failure = std::visit([](const auto& outcome) { return outcome.failure; }, first))
        std::rethrow_exception(failure);
}

Task<void> UploadRun::sayLater(UploadProgress why)
{
    constexpr std::chrono::seconds moment{3};
    co_await m_environment.clock.sleep(moment);
    m_request.onProgress(why);
    co_await m_environment.clock.sleepUntil(Clock::Moment::max());
}

void UploadRun::requireUnchanged() const
{
    auto now = m_file->identity();
    if (now.size != m_subject.identity.size || now.changed != m_subject.identity.changed)
        throw SourceChanged();
}

void UploadRun::checkComplete() const
{
    if (!isComplete(m_journal.done, m_journal.partCount))
        throw APIError(0, QObject::tr("The upload is missing parts (%1 of %2). Resume it to send the rest.")
                              .arg(m_journal.done.size())
                              .arg(m_journal.partCount));
}

} // namespace palvera
