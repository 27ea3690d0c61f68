#pragma once

#include "async/Clock.h"
#include "async/Event.h"
#include "async/TaskScope.h"
#include "transfer/Downloader.h"
#include "transfer/Uploader.h"
#include "transfers/Interrupted.h"
#include "transfers/LiveTransfer.h"
#include "transfers/RetryRules.h"
#include "transfers/SignIns.h"
#include "transfers/TransferItems.h"
#include "transfers/TransferQueue.h"
#include "transfers/TransferRequests.h"

#include <QHash>
#include <QPointer>

namespace palvera {

class NetworkPath;
class SleepInhibitor;

/// All transfers of this run: turns what the user asks for into items, runs them on the engines, tries failed uploads
/// again, asks the user what the platform wants confirmed, and lists what earlier runs left unfinished.
///
/// Lives on the main thread. Operations return at once and what they start goes on in coroutines there; nothing comes
/// out of these but changes of this object, and they end quietly once it is gone. Disk work happens in the background.
/// At the end of the program `suspend` cuts off what is in flight.
class Transfers final : public TransferItems {
    Q_OBJECT

public:
    /// What it works with. Everything referred to outlives it and the transfers under way.
    struct Environment {
        Executor main;       ///< the main thread's
        Executor background; ///< threads for disk work
        Clock& clock;
        API& api;
        const JournalStore& journals;
        const DownloadIndex& index;
        std::function<Task<void>(UploadRequest)> upload;     ///< as Uploader::upload
        std::function<Task<void>(DownloadRequest)> download; ///< as Downloader::download
        SleepInhibitor& sleep;
        NetworkPath& network;
        SignIns signIns = {};
    };
    struct Settings {
        int retries = mostRetries; ///< of a failed upload; 0 makes one attempt only
        int uploads = 3;           ///< at once; each has up to eight connections
        int downloads = 3;         ///< at once; the same
        bool keepsWaiting = true;  ///< what has not begun at the end is listed at the next start
        bool keepsAwake = true;    ///< the machine does not sleep while something moves
    };

    explicit Transfers(Environment environment);
    Transfers(Environment environment, Settings settings, QObject* parent = nullptr);
    ~Transfers() override;

    /// From here on. More than are allowed then go on.
    void setAtOnce(int uploads, int downloads);
    void setKeepsAwake(bool keeps);

    /// The last upload to that deliverable, when it failed and none was begun since.
    std::optional<Item> failedUpload(const QString& deliverableId) const;
    /// How many uploads were completed in this run.
    int uploadsFinished() const { return m_uploadsFinished; }
    bool isPanelOpen() const { return m_panelOpen; }
    void setPanelOpen(bool open);

    // Uploads.

    // So many run at once as the settings say, in the order of the items; the others wait.

    /// Begins an upload and gives its item's id.
    QUuid addUpload(DeliverableUpload upload);
    /// Begins uploads, in their order. Leaves out folders, what cannot be sent and what is on its way there already,
    /// and says so. Looks at each file in the background, which a cancellation does not cut short.
    Task<BinUploadsBegun> addBinUploads(BinUploads uploads);

    /// What was cut off. It is read anew when the model is made and whenever an upload or a download ends.
    Interrupted& interrupted() { return m_interrupted; }
    const Interrupted& interrupted() const { return m_interrupted; }
    /// Goes on with an upload that was cut off and gives its item's id; nothing when it is on its way already.
    std::optional<QUuid> resume(Journal journal);
    /// Gives up what was cut off under that journal key, and sends the file at `path` to the same place in its stead.
    /// Throws CannotSend before anything is given up.
    Task<void> sendInstead(QString key, QString path);

    /// What the platform wants confirmed; a further question waits until this one is answered.
    std::optional<Doubt> doubt() const;
    /// "Send anyway": begins the upload again, as a new item, whose id it gives. Nothing without a doubt.
    std::optional<QUuid> confirmDoubt();
    /// "Cancel".
    void dismissDoubt();

    // Downloads.

    /// Begins a download and gives its item's id. An existing file is never touched unless it is the unfinished
    /// download of the same object, which is gone on with.
    QUuid addDownload(Download download);
    /// Goes on with a download that was cut off and gives its item's id.
    QUuid resume(const UnfinishedDownload& download);

    // Both.

    /// Stops a transfer in flight, at once; of an upload nothing is left, neither on the platform nor here. Does
    /// nothing for other ids.
    void stop(const QUuid& id);
    void stopAll();
    /// Keeps a transfer in flight from going on until `goOn`, such that it goes on from where it is. It keeps others
    /// from what it has begun, and no slot. Does nothing for other ids.
    void pause(const QUuid& id);
    void goOn(const QUuid& id);
    void pauseAll();
    void goOnAll();
    /// Has one that waits for its turn, or to be tried again, begin at once, whatever the others do.
    void startNow(const QUuid& id);
    /// Begins a transfer that failed or was stopped again, as a new item in the stead of the old one, whose id it
    /// gives. Nothing for others, and for an upload of which another one is on its way.
    std::optional<QUuid> tryAgain(const QUuid& id);
    /// Forgets an item that is not in flight. Does nothing for others.
    void forget(const QUuid& id);
    /// Forgets the items that are not in flight.
    void clearFinished();
    /// Somebody else may be signed in: cuts off what is another user's.
    void followAccount();
    /// Cuts off all that is in flight such that it can be gone on with, and forgets every item and every question, as
    /// for a user who signs out. What still ends does so in the background.
    void cutOff();
    /// Cuts off all that is in flight at once, such that it can be gone on with: journals and records stay, and the
    /// platform is told nothing. Ends when nothing is under way any more, readings of the journals included; the giving
    /// up of stopped uploads is cut off after half a second, and then their journals stay. Items keep their states.
    /// Nothing may be begun from then on.
    Task<void> suspend();

Q_SIGNALS:
    /// Nothing is under way any more for a transfer that has ended or was suspended, whose item may be gone.
    void itemEnded(const QUuid& id);
    void uploadsFinishedChanged();
    void failedUploadsChanged();
    void doubtChanged();
    void panelOpenChanged();

private:
    friend class UploadTask;
    friend class DownloadTask;
    friend class SignInWait;

    /// What an upload is made of besides its item.
    struct UploadSource {
        QString file;
        std::optional<QByteArray> bookmark = {}; ///< of an earlier run
        bool confirmed = false;
        std::optional<Deliverable> deliverable = {}; ///< nothing for the bin
    };

    struct FailedUpload {
        Item item;
        UploadSource source;
    };

    /// Lists an upload to where `item.target` says, and starts it.
    QUuid begin(Item item, UploadSource source);
    std::shared_ptr<LiveTransfer> add(Item item);
    static std::function<std::ptrdiff_t(const QUuid&)> placesOf(QPointer<Transfers> model);
    const std::shared_ptr<TransferQueue>& queueOf(Item::Kind kind) const;

    /// Ends when that item may run, and shows it as waiting until then. Throws a cancellation once the attempt `run` is
    /// stopped or the model is gone.
    static Task<void> takeSlot(QPointer<Transfers> model, QUuid id, std::shared_ptr<TransferQueue> queue,
                               std::shared_ptr<CancelFlag> run);

    // What tasks change.
    /// `state` is waiting or running; nothing happens while the item is paused or once it is stopped.
    void showMoving(const QUuid& id, Item::State state);
    /// The task of that item is over.
    void ended(const QUuid& id);
    void countUpload();
    /// Puts a question to the user in the place of an item.
    void raise(const QUuid& id, Doubt doubt);
    void noteFailure(const QUuid& id);
    void forgetFailure(const QString& deliverableId);
    void loadInterruptedSoon();

    /// Whether an upload with that key is in flight or still being given up.
    bool isBusy(const QString& journalKey) const;
    /// Ends once the task of that item is over, or the model gone.
    Task<void> untilEnded(QUuid id);
    void followInFlight();
    std::optional<Account> account() const;
    /// Has every retry that waits made at once, or that of one item.
    void retryAtOnce();
    void retryAtOnce(const QUuid& id);

    const Environment m_environment;
    Settings m_settings;
    const Executor m_places; // a strand: a place is not claimed while another is given back
    TaskScope m_tasks;       // the transfers, and readings of the journals
    // Shared with the transfers, which may outlive the model.
    const std::shared_ptr<TransferQueue> m_uploadQueue;
    const std::shared_ptr<TransferQueue> m_downloadQueue;
    QHash<QUuid, std::variant<UploadSource, Download>> m_origins; // what the items were made of
    QHash<QString, FailedUpload> m_failedUploads;                 // by the ids of their deliverables
    LiveTransfers m_live;
    QHash<QString, QUuid> m_paths;    // files that downloads write, by their items' ids
    std::optional<Account> m_account; // the last one that was signed in, whose all items are
    Interrupted m_interrupted;
    QList<Doubt> m_doubts;
    int m_uploadsFinished = 0;
    bool m_panelOpen = false;
};

} // namespace palvera
