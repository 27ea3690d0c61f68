#pragma once

#include "async/Clock.h"
#include "async/Event.h"
#include "async/TaskScope.h"
#include "async/Turns.h"
#include "transfer/Downloader.h"
#include "transfer/Uploader.h"
#include "transfers/Interrupted.h"
#include "transfers/ItemList.h"
#include "transfers/RetryRules.h"
#include "transfers/SignIns.h"
#include "transfers/TransferRequests.h"

#include <QHash>
#include <QObject>
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
class Transfers final : public QObject {
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
        int binUploads = 3;        ///< into bins, at once; each has up to eight connections
        int downloads = 3;         ///< at once; the same
    };

    explicit Transfers(Environment environment);
    Transfers(Environment environment, Settings settings, QObject* parent = nullptr);
    ~Transfers() override;

    // What there is.

    const std::vector<Item>& items() const { return m_items.all(); }
    /// Null when no item has that id. Valid until the next change.
    const Item* find(const QUuid& id) const { return m_items.find(id); }
    /// What waits, runs or is about to be tried again, in the order added.
    std::vector<Item> inFlight() const;
    int inFlightCount() const { return m_inFlight; }
    /// What has failed, is done or was stopped, in the order added.
    std::vector<Item> finished() const;
    /// The first item in flight, of either kind, of that deliverable.
    std::optional<Item> activeItem(const QString& deliverableId) const;
    /// The uploads in flight into that organisation's bin, in the order added.
    std::vector<Item> binUploads(const QString& orgId) const;
    /// How many uploads were completed in this run.
    int uploadsFinished() const { return m_uploadsFinished; }
    bool isPanelOpen() const { return m_panelOpen; }
    void setPanelOpen(bool open);

    // Uploads.

    /// Begins an upload and gives its item's id.
    QUuid addUpload(DeliverableUpload upload);
    /// Lists uploads, in their order, and begins a few; of an organisation's bin so many run at once as `binUploads` of
    /// the settings says, and the others wait. Leaves out folders, what cannot be sent and what is on its way there
    /// already, and says so. Looks at each file in the background, which a cancellation does not cut short.
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

    /// Begins a download and gives its item's id; so many run at once as `downloads` of the settings says, and the
    /// others wait. An existing file is never touched unless it is the unfinished
    /// download of the same object, which is gone on with.
    QUuid addDownload(Download download);
    /// Goes on with a download that was cut off and gives its item's id.
    QUuid resume(const UnfinishedDownload& download);

    // Both.

    /// Stops a transfer in flight, at once; of an upload nothing is left, neither on the platform nor here. Does
    /// nothing for other ids.
    void stop(const QUuid& id);
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
    void itemAdded(const QUuid& id);
    void itemChanged(const QUuid& id);
    void itemRemoved(const QUuid& id);
    /// Nothing is under way any more for a transfer that has ended or was suspended, whose item may be gone.
    void itemEnded(const QUuid& id);
    void inFlightChanged();
    void uploadsFinishedChanged();
    void doubtChanged();
    void panelOpenChanged();

private:
    friend class UploadTask;
    friend class DownloadTask;
    friend class SignInWait;

    /// What is kept of a transfer while its task runs.
    struct Live {
        std::optional<QString> journalKey;
        qint64 number = 0; ///< in the order in which they began
        std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
        /// Ends what goes on after the flag is stopped: the chunks in flight, and telling the platform.
        std::shared_ptr<CancelFlag> cut = std::make_shared<CancelFlag>();
        bool isSuspended = false;
    };
    /// What an upload is made of besides its item.
    struct UploadSource {
        QString file;
        std::optional<QByteArray> bookmark = {}; ///< of an earlier run
        bool confirmed = false;
        std::optional<Deliverable> deliverable = {}; ///< nothing for the bin
    };

    /// Lists an upload to where `item.target` says as running, and starts it.
    QUuid begin(Item item, UploadSource source);
    void add(Item item);

    /// Ends when that item may run, and shows it as waiting until then. Throws a cancellation once it is stopped or the
    /// model is gone.
    static Task<Turns::Turn> takeTurn(QPointer<Transfers> model, QUuid id, std::shared_ptr<Turns> turns,
                                      std::shared_ptr<CancelFlag> flag);

    // What tasks change. Main thread.
    void change(const QUuid& id, const std::function<void(Item&)>& change);
    void setState(const QUuid& id, Item::State state);
    void remove(const QUuid& id);
    void apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate,
               const std::optional<Trouble>& trouble);
    /// Whether the item's flag was stopped by `suspend`.
    bool isSuspended(const QUuid& id) const { return m_live.value(id).isSuspended; }
    /// The task of that item is over.
    void ended(const QUuid& id);
    void countUpload();
    /// Puts a question to the user in the place of an item.
    void raise(const QUuid& id, Doubt doubt);
    void loadInterruptedSoon();
    void cutOffInFlight();

    /// Whether an upload with that key is in flight or still being given up.
    bool isBusy(const QString& journalKey) const;
    /// Whether an upload with that key that began before `id` has been stopped and is still being given up.
    bool isBeingGivenUp(const QString& journalKey, const QUuid& id) const;
    /// Whether the item was stopped and its task is not over yet.
    bool isBeingStopped(const QUuid& id) const;
    /// Ends once the task of that item is over, or the model gone.
    Task<void> untilEnded(QUuid id);
    void updateInFlight(int difference);
    std::optional<Account> account() const;
    /// Has every retry that waits made at once.
    void retryAtOnce();

    const Environment m_environment;
    const Settings m_settings;
    const Executor m_places; // a strand: a place is not claimed while another is given back
    TaskScope m_tasks;       // the transfers, and readings of the journals
    // Shared with the transfers, which may outlive the model.
    const std::shared_ptr<Turns> m_binTurns;
    const std::shared_ptr<Turns> m_downloadTurns;
    ItemList m_items;
    QHash<QUuid, Live> m_live;
    QHash<QUuid, std::shared_ptr<Event>> m_waits; // set to end a wait for a retry
    QHash<QString, QUuid> m_paths;                // files that downloads write, by their items' ids
    std::optional<Account> m_account;             // the last one that was signed in, whose all items are
    Interrupted m_interrupted;
    QList<Doubt> m_doubts;
    qint64 m_begun = 0; // transfers so far
    int m_inFlight = 0;
    int m_uploadsFinished = 0;
    bool m_panelOpen = false;
};

} // namespace palvera
