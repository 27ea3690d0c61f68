#pragma once

#include "async/Event.h"
#include "files/DestinationFile.h"
#include "files/FileError.h"
#include "transfer/ChunkWriter.h"
#include "transfer/Downloader.h"
#include "transfer/Pace.h"
#include "transfer/Partial.h"

#include <atomic>
#include <deque>
#include <map>
#include <set>
#include <span>

namespace palvera {

/// One run of one download, from asking for the size to removing the record. It lives on the strand it is performed on,
/// which its lanes share; what blocks on the disk runs on strands of its own. A lane waits until the last of its chunk
/// is in the file, the end of the run until all of it is on the disk for good; nothing else waits for the disk.
class DownloadRun {
public:
    DownloadRun(const Downloader::Environment& environment, const Downloader::Settings& settings,
                std::span<const std::unique_ptr<HttpClient>> sessions, DownloadRequest request);

    Task<void> perform();

private:
    /// What a lane keeps from wave to wave.
    struct Lane {
        HttpClient& session;
        std::optional<ChunkWriter> chunk = {};
        bool isBusy = false; // with the chunk `index`
        qint64 index = 0;
        std::shared_ptr<CancelFlag> cut = {}; // ends its fetch: another lane takes it over
        PaceMeter pace = {};
        qint64 seen = 0;                     // bytes of the chunk at the last report
        Clock::Moment moved = {};            // when there were others, or the chunk began
        std::optional<Trouble> trouble = {}; // since its last attempt failed, while nothing has come since
    };

    Task<void> probe();
    void prepare();
    Task<void> fetchAll();
    Task<void> fetchInWaves();
    Task<void> fetchWave(std::span<const qint64> chunks);
    /// One lane's share of a wave: its chunk, then those of others that crawl.
    Task<void> work(Lane& lane, std::optional<qint64> index);
    /// Fetches the chunk unless another lane takes it over meanwhile.
    Task<void> fetch(Lane& lane, qint64 index);
    Task<void> bring(Lane& lane, ByteRange range);
    Task<void> takeOver(Lane& lane, Lane& slow);
    Lane* crawlingLane();
    /// That nothing moves while a rate limit holds a lane up is no fault of its connection.
    void forgiveHolds();
    /// Why a chunk has not arrived.
    struct Missed {
        QString reason;
        bool isRefused = false; ///< by storage, as at an address that has expired
    };
    Task<std::optional<Missed>> attempt(Lane& lane, ByteRange range);
    /// Whether there is another address than the one that was refused, of that number.
    Task<bool> renewAddress(int refused);

    Task<void> keepRecord();
    Task<void> record();
    void remarkOnce(const FileError& failure);
    Task<void> keepReporting();
    void report();
    qint64 received() const;
    std::optional<Trouble> lookForTrouble();

    ByteRange rangeOf(qint64 index) const;

    const Downloader::Environment& m_environment;
    const Downloader::Settings& m_settings;
    const DownloadRequest m_request;
    std::deque<Lane> m_lanes; // which do not move
    const Executor m_disk;    // a strand for the record
    std::optional<DestinationFile> m_file;
    Partial m_partial; // as it is on the disk, or about to be
    // Of the object, since the probe. Read by every lane's session, on its own strand.
    qint64 m_total = 0;
    QString m_tag;

    std::set<qint64> m_open; // chunks of the wave that are not in the file
    std::shared_ptr<CancelFlag> m_waveEnded;
    std::map<qint64, int> m_takenOver; // how often, by chunk
    std::deque<double> m_paces;        // bytes a second of the chunks that came last
    std::optional<Event> m_somethingWritten;
    std::vector<qint64> m_written; // chunks in the file that the record does not list yet
    // Why chunks are not on the disk for good. Kept, since the waves may be over when it shows, and nobody listening
    // any more, and since the system tells it only once.
    std::exception_ptr m_notStored;
    qint64 m_settled = 0; // bytes of the chunks in the file, an earlier run's too
    DownloadProgress m_reported;
    Clock::Moment m_reportedAt;

    QByteArray m_address;
    int m_addressNumber = 0;                 // counts the addresses there were
    bool m_isRenewing = false;               // another address is awaited
    std::atomic<bool> m_hasRemarked = false; // on progress that cannot be kept
};

} // namespace palvera
