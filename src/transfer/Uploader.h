#pragma once

#include "async/CancelFlag.h"
#include "transfer/JournalStore.h"
#include "transfer/PartSender.h"
#include "transfer/ProgressReporter.h"

#include <memory>
#include <optional>

namespace palvera {

/// One file to send.
struct UploadRequest {
    std::shared_ptr<API> api; ///< pinned: an upload ends where it began
    TransferTarget target;
    QString file;                            ///< its path
    std::optional<QByteArray> bookmark = {}; ///< finds the file again should it have been renamed
    QString key;                             ///< of the journal, see isUsableKey
    std::optional<QString> account = {};     ///< id of the user whose upload it is; others' journals are let alone
    std::optional<QString> label = {};       ///< for the journal: what the place is called
    std::optional<QString> client = {};      ///< and the organisation
    bool confirmed = false;                  ///< the user has answered the platform's question about this delivery
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
    ProgressReporter::OnProgress onProgress = {}; ///< called from the engine, on any of its threads, one at a time
    /// Takes what the user should know although the upload goes on, a sentence each, empty once that is past; called
    /// as `onProgress`.
    std::function<void(const QString&)> onRemark = [](const QString&) {};
};

/// Sends files to the platform as multipart uploads straight to storage.
///
/// A run goes on from its journal when one fits the unchanged file, sends the parts over several lanes, keeps the
/// journal current, completes the upload and files it on its deliverable. Any thread; any number of runs at once.
class Uploader {
public:
    struct Settings {
        int lanes = 8; ///< most parts in flight at once for one upload
        qint64 inFlightBudget =
            268'435'456; ///< most bytes of parts that one upload has under way, where those are large
        std::chrono::milliseconds reportEvery{2000}; ///< between reports to the platform
        std::chrono::milliseconds redrawEvery{200};  ///< between calls of `onProgress`
    };
    /// What the engine works with. Everything referred to outlives it.
    struct Environment {
        Executor engine; ///< threads for lanes and disk work; more of them than one upload has lanes
        Clock& clock;
        HttpClientFactory storage; ///< makes each lane's own session
        const JournalStore& journals;
        QString libraryFolder; ///< the transfer log goes below it
        Spread spread;
        std::function<bool()> hasNetwork = [] { return true; }; ///< asked on any of the engine's threads
    };

    explicit Uploader(Environment environment);
    Uploader(Environment environment, Settings settings);

    /// Sends one file and returns once the platform has it whole and, for a deliverable, filed.
    ///
    /// Throws APIError, TransportError, FileError or CannotSend with a text for the user, or a cancellation after a
    /// stop of the flag or a cancellation of the caller; what was in flight is then cut off at once. Whatever it throws
    /// but SourceChanged, the journal holds every part that storage confirmed, and a later call with the same key and
    /// the unchanged file goes on there. While another run, in any process, sends the same file to the same place, a
    /// call waits and then returns as that run did, or goes on where it ended; where it sends another file, the call
    /// fails.
    Task<void> upload(UploadRequest request);

private:
    const Environment m_environment;
    const Settings m_settings;
};

} // namespace palvera
