#pragma once

#include "transfer/ResumeRules.h"
#include "transfers/Transfers.h"

namespace palvera {

/// One upload of the model, attempt after attempt, until it is done, given up or out of retries. Main thread.
class UploadTask {
public:
    /// For an item of `model` that is listed and registered as live.
    UploadTask(Transfers& model, const Item& item, Transfers::UploadSource source, std::shared_ptr<LiveTransfer> live);

    /// Runs `task` to its end, in a frame of which it lives. Ends quietly when the model is gone.
    static Task<void> run(UploadTask task);

private:
    Task<void> perform();
    /// Another upload with this key that was stopped still removes what the key stands for.
    Task<void> letPredecessorEnd();
    /// Bookmarks the file, and shows it under the name that it has by now where it is bookmarked already.
    Task<void> findFile();
    struct Found {
        QString path;
        qint64 size = 0;
        qint64 sent = 0; ///< bytes that an earlier run has confirmed
    };
    /// Blocks on the disk.
    Found lookForFile();
    /// Has the upload outlive the program before it has a journal. Blocks on the disk.
    void enter(const UploadSubject& subject) const;
    /// It needs that no more.
    Task<void> leave();
    /// Ends when the user has it go on. Nobody else may go on with it meanwhile.
    Task<void> stayPaused();
    Task<void> attempt();
    /// Ends when the time for the next attempt has come, the machine woke, a network returned or the upload was
    /// stopped.
    Task<void> waitForRetry(std::chrono::seconds delay, std::exception_ptr failure);
    Task<void> waitFor(std::chrono::seconds delay);
    void succeed();
    Task<void> raiseDoubt(std::exception_ptr failure);
    Task<void> fail(std::exception_ptr failure);
    /// Of a stopped or suspended upload.
    Task<void> end();
    Task<void> giveUp();
    Task<void> discard();
    Task<void> sendStopReport();
    std::optional<QString> accountId() const { return m_account ? std::optional(m_account->userId) : std::nullopt; }
    std::optional<QString> client() const { return m_client.isEmpty() ? std::nullopt : std::optional(m_client); }

    const QPointer<Transfers> m_model;
    const Transfers::Environment m_environment;
    const int m_retries;
    const bool m_keepsWaiting;
    const Executor m_disk; // a strand
    const QUuid m_id;
    const TransferTarget m_target;
    const QString m_key;
    const QString m_label;
    const QString m_client;
    const std::optional<Account> m_account; // whose it is
    const std::shared_ptr<API> m_api;       // of the service where it began
    const QString m_service;
    Transfers::UploadSource m_source;
    const std::shared_ptr<LiveTransfer> m_live;
    const std::shared_ptr<TransferQueue> m_queue;
    SignInWait m_signIn;
};

} // namespace palvera
