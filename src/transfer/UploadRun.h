#pragma once

#include "files/SourceFile.h"
#include "transfer/Board.h"
#include "transfer/PartSender.h"
#include "transfer/ResumeRules.h"
#include "transfer/TransferLog.h"
#include "transfer/URLPool.h"
#include "transfer/UploadClaim.h"
#include "transfer/Uploader.h"

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
    /// Takes the lock of the upload. False when another program had it and has delivered the file meanwhile.
    Task<bool> claim();
    /// From there on to the end of the delivery, once more from the start when the platform forgot the upload.
    Task<void> send();
    Task<void> sendAndDeliver();
    /// Looks for a journal that fits and makes room for another.
    bool adoptJournal();
    void refreshBookmark();
    Task<void> startAfresh();
    /// Sends what is missing. Throws SourceChanged when the file is no longer what it was.
    Task<void> sendParts(TransferLog& log);
    Task<void> sendOverLanes(Shared& shared, int count);
    Task<void> lane(Shared& shared);
    Task<void> sendFromQueue(Shared& shared);
    Task<void> sendPart(PartSender& sender, const Board::Sending& sending, PartBody& body, QString& etag) const;
    Task<std::optional<int>> nextPart(Shared& shared) const;
    Task<void> record(ConfirmedParts done);
    Task<void> forget();
    Task<void> giveUp();
    void remarkOnce(const std::exception_ptr& failure);
    ProgressReporter::Report reportToPlatform() const;
    std::optional<Trouble> troubleOn(const Board& board) const;
    /// Runs `operation`, and reports `why` should it take longer than a moment.
    Task<void> sayingWhy(Task<void> operation, UploadProgress why);
    Task<void> sayLater(UploadProgress why);
    void requireUnchanged() const;
    void checkComplete() const;

    const Uploader::Environment& m_environment;
    const Uploader::Settings& m_settings;
    const UploadRequest m_request;
    const Executor m_disk; // a strand for saves of the journal: one at a time, off the run's own

    // The run's strand only; after `startAfresh` only the confirmed parts change.
    std::optional<SourceFile> m_file; // one for all lanes: whatever becomes of its path, it stays the same file
    UploadSubject m_subject;
    std::optional<UploadClaim> m_claim; // nothing where no lock can be had
    bool m_keepsJournal = true;         // not where another file's cannot be moved out of the way
    bool m_hasRemarked = false;         // on progress that cannot be kept
    Journal m_journal;
};

} // namespace palvera
