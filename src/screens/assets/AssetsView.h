#pragma once

#include "async/Event.h"
#include "async/Failure.h"
#include "async/TaskScope.h"
#include "screens/RowsModel.h"
#include "screens/assets/AssetColumns.h"
#include "screens/assets/AssetsListing.h"
#include "service/Organisations.h"

#include <QUrl>

#include <QtQml/qqmlregistration.h>

namespace palvera {

class API;
class Clock;
class Session;
class Transfers;

/// An organisation's files apart from its projects: those delivered, and its Uploads bin, in one list; what is selected
/// in it, the ways in for files and the ways out.
///
/// Lives on the main thread; answers are decoded elsewhere. One is used for one organisation after the other.
class AssetsView : public RowsModel<AssetRow> {
    Q_OBJECT
    QML_NAMED_ELEMENT(AssetsModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(bool inUploads READ isInUploads NOTIFY placeChanged)
    Q_PROPERTY(QString title READ title NOTIFY placeChanged)
    Q_PROPERTY(QString backText READ backText NOTIFY placeChanged)
    Q_PROPERTY(QString dropText READ dropText NOTIFY placeChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(bool narrowed READ isNarrowed NOTIFY kindChanged)
    Q_PROPERTY(QStringList kinds READ kinds CONSTANT)
    Q_PROPERTY(int kind READ kind WRITE setKind NOTIFY kindChanged)
    Q_PROPERTY(Face face READ face NOTIFY faceChanged)
    Q_PROPERTY(QString error READ error NOTIFY faceChanged)
    Q_PROPERTY(bool bare READ isBare NOTIFY faceChanged)
    Q_PROPERTY(QString emptyIcon READ emptyIcon NOTIFY faceChanged)
    Q_PROPERTY(QString emptyTitle READ emptyTitle NOTIFY faceChanged)
    Q_PROPERTY(QString emptyDetail READ emptyDetail NOTIFY faceChanged)
    Q_PROPERTY(int loads READ loads NOTIFY loadsChanged)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY moreChanged)
    Q_PROPERTY(bool loadingMore READ isLoadingMore NOTIFY moreChanged)
    Q_PROPERTY(QString moreError READ moreError NOTIFY moreChanged)
    Q_PROPERTY(QString moreText READ moreText NOTIFY moreChanged)
    Q_PROPERTY(int downloadCount READ downloadCount NOTIFY selectionChanged)
    Q_PROPERTY(QString downloadText READ downloadText NOTIFY selectionChanged)
    Q_PROPERTY(QString folder READ folder NOTIFY folderChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool picking READ isPicking NOTIFY pickingChanged)
    Q_PROPERTY(QUrl proposedFolder READ proposedFolder CONSTANT)
    Q_PROPERTY(bool pickingFolder READ isPickingFolder NOTIFY pickingChanged)
    Q_PROPERTY(palvera::AssetColumns* columns READ columns CONSTANT)

public:
    using Place = AssetsPlace;
    /// What is shown below the bar.
    enum Face { Loading, Failed, Empty, Table };
    Q_ENUM(Face)

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;
        Executor background; ///< threads for decoding
        Clock& clock;
        API& api;
        Transfers& transfers;
        Session& session;
        Preferences& preferences;
    };

    explicit AssetsView(const Environment& environment, QObject* parent = nullptr);

    /// Begins afresh with what was delivered to that organisation.
    void open(const Org& org);
    /// Ends what keeps it up to date, until it is opened again.
    void leave();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close();

    // Where it is, and what it shows of that.

    const AssetsQuery& query() const { return m_query; }
    bool isInUploads() const { return m_query.place == Place::uploads; }
    QString title() const;
    QString backText() const;
    QString dropText() const { return palvera::dropText(m_query.prefix); }
    /// As it stands in the field. It is searched for 0.3 s after it was last changed, or by `searchNow`.
    const QString& search() const { return m_search; }
    void setSearch(const QString& search);
    Q_INVOKABLE void searchNow();
    /// Whether a search or a kind leaves something out.
    bool isNarrowed() const { return !m_query.search.isEmpty() || !m_query.family.isEmpty(); }
    /// Every file of this place, of every kind.
    Q_INVOKABLE void showAll();
    QStringList kinds() const;
    int kind() const;
    void setKind(int kind);
    /// Opens the row that leads into the bin, or a folder.
    Q_INVOKABLE bool enter(int row);
    /// Goes to the place before. False where that is out of here.
    Q_INVOKABLE bool back();
    /// Loads the first page.
    Q_INVOKABLE void load();
    Q_INVOKABLE void loadMore();
    /// The user has come to the end of the list: loads more, unless that has failed.
    Q_INVOKABLE void reachEnd();

    Face face() const;
    QString error() const { return m_failure ? describe(m_failure) : QString(); }
    /// Nothing is shown but the row that leads into the bin.
    bool isBare() const;
    QString emptyIcon() const { return emptyMessage(m_query).icon; }
    QString emptyTitle() const { return emptyMessage(m_query).title; }
    QString emptyDetail() const { return emptyMessage(m_query).detail; }
    /// How many first pages have come so far.
    int loads() const { return m_loads; }
    bool hasMore() const;
    bool isLoadingMore() const { return m_loadingMore; }
    QString moreError() const { return m_moreFailure ? describe(m_moreFailure) : QString(); }
    /// "60 of 130", or "100 loaded" where the platform does not say how many there are.
    QString moreText() const;
    AssetColumns* columns() { return &m_columns; }

    // What is selected.

    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void toggle(int row);
    /// All from the row that was selected last to this one, and no others.
    Q_INVOKABLE void selectTo(int row);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();
    Q_INVOKABLE bool isSelected(int row) const;
    int downloadCount() const { return m_downloadCount; }
    QString downloadText() const { return palvera::downloadText(m_downloadCount); }

    // Ways in and out.

    /// The folder that downloads go to; empty where none was chosen.
    const QString& folder() const { return m_folder; }
    /// Downloads what is selected; asks for a folder first where there is none.
    Q_INVOKABLE void downloadSelected();
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE void chooseFiles();
    /// The dialog's answer.
    Q_INVOKABLE void pick(const QList<QUrl>& chosen);
    Q_INVOKABLE void cancelPicking();
    /// Adds files to the bin, to the folder that is shown. False when nothing has come with the drop, which is said.
    Q_INVOKABLE bool drop(const QList<QUrl>& files);
    /// Begins an upload again that has failed.
    Q_INVOKABLE void tryAgain(int row);
    Q_INVOKABLE void dismissNotice() { setNotice({}); }
    /// What was not taken of what came last; empty when all was.
    const QString& notice() const { return m_notice; }
    /// The desktop's dialog is wanted: for files, or for a folder.
    bool isPicking() const { return m_asking != Asking::nothing; }
    /// Where the choice of a folder for downloads begins.
    QUrl proposedFolder() const;
    bool isPickingFolder() const { return m_asking == Asking::folder; }
    Q_INVOKABLE QString nameAt(int row) const;

Q_SIGNALS:
    void placeChanged();
    void searchChanged();
    void kindChanged();
    void faceChanged();
    void loadsChanged();
    void moreChanged();
    void selectionChanged();
    void folderChanged();
    void noticeChanged();
    void pickingChanged();

private:
    enum class Asking { nothing, files, folder };
    void goTo(AssetsQuery query);
    void change(AssetsQuery query);
    Task<void> loadFirst();
    Task<void> loadNext();
    Task<void> searchLater();
    Task<void> keepUpToDate();
    Task<void> listAgain();
    void take(AssetsListing listing);
    void showRows();
    void noteItem(const QUuid& id);
    void updatePendingSoon();
    void updatePending();
    void updateSelection(const QSet<QString>& selection);
    void countSelected();
    std::optional<Download> downloadOf(const AssetLine& line) const;
    Task<void> bringDown(QList<Download> downloads);
    Task<void> rememberFolder(QString path, QList<Download> downloads);
    Task<void> readFolder();
    Task<void> add(BinUploads uploads, bool wereSomeElsewhere);
    void setNotice(const QString& notice);
    void ask(Asking asking);

    const Environment m_environment;
    const Executor m_decoding; // a strand
    TaskScope m_loading;       // of pages; cut off when another first page is wanted
    TaskScope m_searches;      // the pause after a key
    TaskScope m_upkeep;
    TaskScope m_tasks; // what goes on when other things are looked at
    AssetColumns m_columns;
    Org m_org;
    bool m_open = false;
    AssetsQuery m_query;
    QString m_search;
    AssetsListing m_listing;
    QList<AssetRow> m_pending;
    QSet<QUuid> m_noted;   // uploads that are done
    QSet<QUuid> m_awaited; // those of them into the bin that no listing has shown yet
    bool m_isPendingStale = false;
    RenewalPlan m_renewals;
    Event m_arrived;
    int m_asked = 0; // for a first page, so often: what was asked for before is not shown
    int m_loads = 0;
    bool m_isLoading = false;
    bool m_loadingMore = false;
    std::exception_ptr m_failure;
    std::exception_ptr m_moreFailure;
    QSet<QString> m_selection; // keys, also of rows that are not shown
    QString m_anchor;          // where a range begins
    int m_downloadCount = 0;
    QList<Download> m_toDownload; // once there is a folder
    QString m_folder;
    QString m_notice;
    Asking m_asking = Asking::nothing;
};

} // namespace palvera
