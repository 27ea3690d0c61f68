#pragma once

#include "platform/CancelFlag.h"
#include "platform/Clock.h"
#include "platform/Event.h"
#include "service/Deliverable.h"
#include "transfer/Downloader.h"
#include "transfer/Journal.h"
#include "transfer/Uploader.h"
#include "transfers/Item.h"
#include "transfers/RetryRules.h"
#include "transfers/StoredObject.h"
#include "transfers/TransfersListModel.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>

#include <map>

namespace palvera {

class NetworkPath;
class SleepInhibitor;

/// A file that the platform wants confirmed before it takes it. A plain value.
struct Doubt {
    QUuid id;
    QString message; ///< the platform's, for the user
    QString file;    ///< path of what was to be sent
    QString orgId;
    QString projectId;
    Deliverable deliverable;

    bool operator==(const Doubt&) const = default;
};

/// A file for a deliverable.
struct DeliverableUpload {
    QString file; ///< path
    QString orgId;
    QString projectId;
    Deliverable deliverable;
    bool confirmed = false; ///< the user has answered the platform's question about it
};

/// Files for an organisation's Uploads bin.
struct BinUploads {
    QStringList files; ///< paths
    QString orgId;
    std::optional<QString> caption = {};
    std::optional<QString> folder = {}; ///< nothing is the bin's top level
};

/// A stored file to bring down.
struct Download {
    StoredObject object;
    QString name; ///< for the file; only its last component counts
    QString label = {};
    std::optional<QString> titleName = {};
    QString folder; ///< path of an existing folder
};

/// The file that a download writes.
struct ClaimedPlace {
    QString path;
    std::function<void()> removeIfEmpty; ///< see DownloadPlace; blocks on the disk
};

/// All transfers of this run: turns what the user asks for into items, runs them on the engines, tries failed uploads
/// again, asks the user what the platform wants confirmed, and lists what earlier runs left unfinished.
///
/// Lives on the main thread. Operations return at once and what they start goes on in coroutines there; nothing comes
/// out of these but changes of this object, and they end quietly once it is gone. Disk work happens in the background.
/// Nothing is stopped or saved at the end of the program: the journals hold what is confirmed.
class Transfers final : public QObject {
    Q_OBJECT
    Q_PROPERTY(palvera::TransfersListModel* items READ listModel CONSTANT)
    Q_PROPERTY(int uploadsFinished READ uploadsFinished NOTIFY uploadsFinishedChanged)
    Q_PROPERTY(int inFlightCount READ inFlightCount NOTIFY inFlightChanged)
    Q_PROPERTY(bool panelOpen READ isPanelOpen WRITE setPanelOpen NOTIFY panelOpenChanged)
    Q_PROPERTY(QString doubtMessage READ doubtMessage NOTIFY doubtChanged)

public:
    /// What it works with. Everything referred to outlives it and the transfers under way.
    struct Environment {
        Executor main;       ///< the main thread's
        Executor background; ///< threads for disk work
        Clock& clock;
        API& api;
        const JournalStore& journals;
        std::function<Task<void>(UploadRequest)> upload;     ///< as Uploader::upload
        std::function<Task<void>(DownloadRequest)> download; ///< as Downloader::download
        SleepInhibitor& sleep;
        NetworkPath& network;
        /// As DownloadPlace::claim, which it is unless it is set.
        std::function<ClaimedPlace(QString folder, QString name, QString source)> claim = {};
    };
    struct Settings {
        int retries = mostRetries; ///< of a failed upload; 0 makes one attempt only
    };

    explicit Transfers(Environment environment);
    Transfers(Environment environment, Settings settings, QObject* parent = nullptr);
    ~Transfers() override;

    // What there is.

    const std::vector<Item>& items() const { return m_model.items(); }
    TransfersListModel* listModel() { return &m_model; }
    /// Nothing when no item has that id. Valid until the next change.
    const Item* find(const QUuid& id) const { return m_model.find(id); }
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
    /// Begins uploads and gives the ids of their items. Leaves out folders and what is on its way there already. Looks
    /// at each file.
    QList<QUuid> addBinUploads(const BinUploads& uploads);

    /// Reads the folder of journals, in the background. The model does so by itself when it is made and whenever an
    /// upload ends; await this to have the list at a certain moment.
    Task<void> loadJournals();
    /// Uploads that were cut off, as of the last reading: their journals, but for those that are on their way again.
    const std::vector<Journal>& interruptedJournals() const { return m_interrupted; }
    /// Goes on with an upload that was cut off and gives its item's id; nothing when it is on its way already.
    std::optional<QUuid> resume(const Journal& journal);

    /// What the platform wants confirmed; a further question waits until this one is answered.
    std::optional<Doubt> doubt() const;
    QString doubtMessage() const;
    /// "Send anyway": begins the upload again, as a new item, whose id it gives. Nothing without a doubt.
    std::optional<QUuid> confirmDoubt();
    /// "Cancel".
    void dismissDoubt();

    // Downloads.

    /// Begins a download and gives its item's id. An existing file is never touched unless it is the unfinished
    /// download of the same object, which is gone on with.
    QUuid addDownload(Download download);

    // Both.

    /// Stops a transfer in flight, at once; of an upload nothing is left, neither on the platform nor here. Does
    /// nothing for other ids.
    void stop(const QUuid& id);
    /// Forgets the items that are not in flight.
    void clearFinished();
    /// Cuts off all that is in flight, such that it can be gone on with: journals and records stay, and the platform is
    /// told nothing. Ends when nothing is under way any more, the giving up of stopped uploads and readings of the
    /// journals included. Items keep their states. Nothing may be begun from then on.
    Task<void> suspend();

Q_SIGNALS:
    void itemAdded(const QUuid& id);
    void itemChanged(const QUuid& id);
    void itemRemoved(const QUuid& id);
    /// Nothing is under way any more for a transfer that has ended or was suspended, whose item may be gone.
    void itemEnded(const QUuid& id);
    void inFlightChanged();
    void uploadsFinishedChanged();
    void journalsChanged();
    void doubtChanged();
    void panelOpenChanged();

private:
    friend class UploadTask;
    friend class DownloadTask;

    /// What is kept of a transfer while its task runs.
    struct Live {
        std::shared_ptr<CancelFlag> flag;
        std::optional<QString> journalKey;
        qint64 number = 0; ///< in the order in which they began
        bool isSuspended = false;
    };
    /// What an upload is made of besides its item.
    struct UploadSource {
        QString file;
        std::optional<QByteArray> bookmark = {}; ///< of an earlier run
        bool confirmed = false;
        std::optional<Deliverable> deliverable = {}; ///< nothing for the bin
    };

    /// Lists the item as running and starts its upload.
    QUuid begin(Item item, UploadSource source);
    QUuid beginForDeliverable(DeliverableUpload upload, std::optional<QByteArray> bookmark);
    QUuid beginForBin(TransferTarget target, QString key, UploadSource source, std::optional<QString> caption);
    std::shared_ptr<CancelFlag> add(Item item);
    void spawn(Task<void> task);
    static Task<void> readJournals(QPointer<Transfers> model, const JournalStore& store, Executor disk);

    // What tasks change. Main thread.
    void change(const QUuid& id, const std::function<void(Item&)>& change);
    void setState(const QUuid& id, Item::State state);
    void remove(const QUuid& id);
    void apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate);
    /// Whether the item's flag was stopped by `suspend`.
    bool isSuspended(const QUuid& id) const { return m_live.value(id).isSuspended; }
    /// The task of that item is over.
    void ended(const QUuid& id);
    void countUpload();
    /// Puts a question to the user in the place of an item.
    void raise(const QUuid& id, Doubt doubt);
    void mayBeResumedAgain(const QString& key);
    void loadJournalsSoon();

    /// Whether an upload with that key is in flight or still being given up.
    bool isBusy(const QString& journalKey) const;
    /// Whether an upload with that key that began before `id` has been stopped and is still being given up.
    bool isBeingGivenUp(const QString& journalKey, const QUuid& id) const;
    void updateInFlight(int difference);
    void updateInterrupted();
    /// Has every retry that waits made at once.
    void retryAtOnce();

    const Environment m_environment;
    const Settings m_settings;
    const Executor m_places;  // a strand: a place is not claimed while another is given back
    const Executor m_reading; // a strand: the latest reading comes last
    TransfersListModel m_model;
    QHash<QUuid, Live> m_live;
    int m_tasks = 0; // under way
    Event m_nothingUnderWay;
    QHash<QUuid, std::shared_ptr<Event>> m_waits; // set to end a wait for a retry
    QSet<QString> m_paths;                        // files that downloads write
    std::vector<Journal> m_journals;
    std::vector<Journal> m_interrupted;
    QSet<QString> m_resuming; // keys
    QList<Doubt> m_doubts;
    qint64 m_begun = 0; // transfers so far
    int m_inFlight = 0;
    int m_uploadsFinished = 0;
    bool m_panelOpen = false;
};

} // namespace palvera
