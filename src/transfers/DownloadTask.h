#pragma once

#include "transfer/DownloadPlace.h"
#include "transfers/Transfers.h"

namespace palvera {

/// One download of the model, from asking for its address to its end. Main thread.
class DownloadTask {
public:
    /// For an item of `model` that is listed and registered as live.
    DownloadTask(Transfers& model, const QUuid& id, Download download, std::shared_ptr<CancelFlag> flag);

    /// Runs `task` to its end, in a frame of which it lives. Ends quietly when the model is gone.
    static Task<void> run(DownloadTask task);

private:
    Task<void> perform();
    Task<void> bringDown();
    Task<void> askForAddress();
    /// Throws FileError when another download of the model writes the file already.
    Task<void> claimPlace();
    Task<void> giveBackPlace();

    const QPointer<Transfers> m_model;
    const Transfers::Environment m_environment;
    const Executor m_disk; // a strand that all downloads share
    const QUuid m_id;
    const Download m_download;
    const std::shared_ptr<CancelFlag> m_flag;
    QString m_address;
    std::optional<DownloadPlace> m_place;
};

} // namespace palvera
