#pragma once

#include "async/Event.h"
#include "files/DestinationFile.h"
#include "transfer/ChunkWriter.h"
#include "transfer/Downloader.h"
#include "transfer/Partial.h"

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
    };

    Task<void> probe();
    void prepare();
    Task<void> fetchAll();
    Task<void> fetchInWaves();
    Task<void> fetchWave(std::span<const qint64> chunks);
    Task<void> fetch(Lane& lane, qint64 index);
    Task<std::optional<QString>> attempt(Lane& lane, ByteRange range);

    Task<void> keepRecord();
    Task<void> record();
    void report();

    ByteRange rangeOf(qint64 index) const;

    const Downloader::Environment& m_environment;
    const Downloader::Settings& m_settings;
    const DownloadRequest m_request;
    SlicePool m_slices;
    std::vector<Lane> m_lanes;
    const Executor m_writing; // a strand for the bytes: a file takes them from one thread at a time
    const Executor m_disk;    // a strand for the record
    std::optional<DestinationFile> m_file;
    Partial m_partial; // as it is on the disk, or about to be
    // Of the object, since the probe. Read by every lane's session, on its own strand.
    qint64 m_total = 0;
    QString m_tag;

    std::optional<Event> m_somethingWritten;
    std::vector<qint64> m_written; // chunks in the file that the record does not list yet
    // Why chunks are not on the disk for good. Kept, since the waves may be over when it shows, and nobody listening
    // any more, and since the system tells it only once.
    std::exception_ptr m_notStored;
    qint64 m_received = 0;
    Clock::Moment m_windowStart;
    qint64 m_windowBytes = 0;
    std::optional<Clock::Moment> m_lastReport;
};

} // namespace palvera
