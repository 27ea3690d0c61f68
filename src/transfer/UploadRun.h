#pragma once

#include "transfer/Board.h"
#include "transfer/TransferLog.h"
#include "transfer/URLPool.h"
#include "transfer/Uploader.h"

#include <QDateTime>

namespace palvera {

/// One run of one upload, from finding the file to removing the journal. It lives on the strand it is performed on, its
/// lanes each on another. `Uploader::upload` owns it and waits for it.
class UploadRun {
public:
    UploadRun(const Uploader::Environment& environment, const Uploader::Settings& settings, UploadRequest request);

    Task<void> perform();

private:
    /// What the lanes share.
    struct Shared {
        Board board;
        URLPool pool;
        TransferLog& log;
    };

    void findFile();
    bool adoptJournal();
    Task<void> startAfresh();
    /// Sends what is missing. Throws SourceChanged when the file is no longer what it was.
    Task<void> sendParts(TransferLog& log);
    Task<void> sendOverLanes(Shared& shared);
    Task<void> lane(Shared& shared);
    Task<void> sendFromQueue(Shared& shared);
    Task<void> record(ConfirmedParts done);
    Task<void> forget();
    ProgressReporter::Report reportToPlatform() const;
    void checkComplete() const;
    Task<void> deliver();
    Task<bool> isInBin() const;

    const Uploader::Environment& m_environment;
    const Uploader::Settings& m_settings;
    const UploadRequest m_request;
    const Executor m_disk; // a strand for saves of the journal: one at a time, off the run's own

    // The run's strand only; after `startAfresh` only the confirmed parts change.
    QString m_path;
    std::optional<QByteArray> m_bookmark;
    qint64 m_byteSize = 0;
    QDateTime m_changed; // when the file last changed, finer than the journal's stamp
    Journal m_journal;
};

} // namespace palvera
