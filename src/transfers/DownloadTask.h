#pragma once

#include "transfer/DownloadPlace.h"
#include "transfers/Transfers.h"

namespace palvera {

/// One download of the model, from asking for its address to its end. Main thread.
class DownloadTask {
public:
    /// For an item of `model` that is listed and registered as live.
    DownloadTask(Transfers& model, const QUuid& id, Download download, std::shared_ptr<LiveTransfer> live);

    /// Runs `task` to its end, in a frame of which it lives. Ends quietly when the model is gone.
    static Task<void> run(DownloadTask task);

private:
    Task<void> perform();
    Task<void> bringDown();
    Task<void> attempt();
    Task<void> askForAddress();
    /// Once a download of the model that was stopped has let go of the file. Throws FileError while another one writes
    /// it.
    Task<void> claimPlace();
    Task<void> waitFor(const QUuid& stopped);
    Task<QByteArray> freshAddress();
    /// Throws FileError where storage has less than the platform lists; says so where it has more.
    Task<void> checkTotal(qint64 total);
    void remark(const QString& text);
    /// As it is entered in the index, for the file at `path`.
    UnfinishedDownload entryFor(const QString& path) const;
    /// Enters it in the index. Throws FileError where it cannot be; then it is only not listed, should it be cut off.
    void enter();
    /// When it is over: it stays in the index if it can be gone on with and the user has not stopped it.
    void leavePlace(bool isDone, bool isStopped);

    const QPointer<Transfers> m_model;
    const Transfers::Environment m_environment;
    const bool m_keepsWaiting;
    const Executor m_disk; // a strand that all downloads share
    const QUuid m_id;
    const Download m_download;
    const std::shared_ptr<LiveTransfer> m_live;
    const std::shared_ptr<TransferQueue> m_queue;
    std::shared_ptr<CancelFlag> m_run; // of the attempt under way
    QByteArray m_address;
    const std::optional<Account> m_account; // whose it is
    const QString m_service;                // where it began
    std::optional<DownloadPlace> m_place;
    std::optional<LockFile> m_waitingHold;
    std::optional<LockFile> m_hold; // on its entry in the index; nothing where no lock can be had
    SignInWait m_signIn;
};

} // namespace palvera
