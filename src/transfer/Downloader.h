#pragma once

#include "async/CancelFlag.h"
#include "async/Clock.h"
#include "http/HttpClient.h"
#include "transfer/Trouble.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace palvera {

/// How far a download is.
struct DownloadProgress {
    qint64 received = 0;                       ///< bytes that are here, this run's and an earlier one's; never fewer
    qint64 total = 0;                          ///< bytes in all
    std::optional<double> bytesPerSecond = {}; ///< since the last report, where known
    std::optional<Trouble> trouble = {};       ///< while nothing moves

    bool operator==(const DownloadProgress&) const = default;
};

/// One file to bring down.
struct DownloadRequest {
    QByteArray address;  ///< signed; used byte for byte
    QString destination; ///< path of the file; what stands there is replaced unless the record beside it fits
    QString source = {}; ///< which stored object this is, for the record; empty when unknown
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
    /// Asks for another address of the object, should storage refuse this one meanwhile. Awaited by the engine.
    std::function<Task<QByteArray>()> renewAddress = {};
    /// Awaited by the engine once storage has said how many bytes the object has; ends the download by throwing.
    std::function<Task<void>(qint64 total)> checkTotal = {};
    /// Called from the engine, on any of its threads, one at a time, about once a second.
    std::function<void(const DownloadProgress&)> onProgress = {};
    /// Takes what the user should know although the download goes on, a sentence each; called as `onProgress`.
    std::function<void(const QString&)> onRemark = [](const QString&) {};
};

/// Brings stored files down in ranged chunks, several at a time, and goes on where an earlier run of the same file
/// ended: a record beside the destination lists the chunks that are on the disk. Any thread; any number of downloads at
/// once, which share the connections.
class Downloader {
public:
    struct Settings {
        int lanes = 8;                 ///< chunks in flight at once for one download
        qint64 chunkSize = 33'554'432; ///< bytes
        qint64 sliceSize = 131'072;    ///< bytes of a chunk that are gathered before they are written
    };
    /// What the engine works with. Everything referred to outlives it.
    struct Environment {
        Executor engine; ///< threads for disk work; one download keeps two of them busy at most
        Clock& clock;
        HttpClientFactory storage; ///< makes the session of each lane, shared by all downloads
        std::function<bool()> hasNetwork = [] { return true; }; ///< asked on any of the engine's threads
    };

    explicit Downloader(Environment environment);
    Downloader(Environment environment, Settings settings);
    ~Downloader();

    /// Brings one file down and returns once all of it is on the disk and the record is gone.
    ///
    /// Throws APIError, TransportError or FileError with a text for the user. After a stop of the flag the chunks in
    /// flight are finished first, then it throws a cancellation; a cancellation of the caller cuts them off. Whatever
    /// it throws, the record lists only chunks that are on the disk.
    Task<void> download(DownloadRequest request);

private:
    const Environment m_environment;
    const Settings m_settings;
    std::vector<std::unique_ptr<HttpClient>> m_sessions; // one for each lane
};

} // namespace palvera
