#pragma once

#include "async/TaskScope.h"
#include "screens/TransferTexts.h"
#include "screens/deliverables/FileSender.h"
#include "screens/deliverables/FiledFile.h"
#include "transfers/Interrupted.h"
#include "transfers/Item.h"

#include <QTimer>

namespace palvera {

class API;
class Session;

/// One deliverable: what is known of it, the file that is filed on it or the transfer that is under way for it, and the
/// way in for files.
///
/// Lives on the main thread. One is used for one deliverable after the other.
class DeliverableView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(DeliverableModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString title READ title NOTIFY deliverableChanged)
    Q_PROPERTY(QString contextLine READ contextLine NOTIFY deliverableChanged)
    Q_PROPERTY(QString symbol READ symbol NOTIFY deliverableChanged)
    Q_PROPERTY(QString tint READ tint NOTIFY deliverableChanged)
    Q_PROPERTY(QStringList chips READ chips NOTIFY deliverableChanged)
    Q_PROPERTY(QString filedName READ filedName NOTIFY deliverableChanged)
    Q_PROPERTY(QString filedDetails READ filedDetails NOTIFY deliverableChanged)
    Q_PROPERTY(Face face READ face NOTIFY faceChanged)
    Q_PROPERTY(QString headline READ headline NOTIFY transferChanged)
    Q_PROPERTY(bool paused READ isPaused NOTIFY transferChanged)
    Q_PROPERTY(bool downloading READ isDownloading NOTIFY transferChanged)
    Q_PROPERTY(QString transferName READ transferName NOTIFY transferChanged)
    Q_PROPERTY(double fraction READ fraction NOTIFY transferChanged)
    Q_PROPERTY(QString doneText READ doneText NOTIFY transferChanged)
    Q_PROPERTY(QString transferredText READ transferredText NOTIFY transferChanged)
    Q_PROPERTY(QString speedText READ speedText NOTIFY transferChanged)
    Q_PROPERTY(QString leftText READ leftText NOTIFY transferChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY transferChanged)
    Q_PROPERTY(QString stopTitle READ stopTitle NOTIFY transferChanged)
    Q_PROPERTY(QString stopMessage READ stopMessage NOTIFY transferChanged)
    Q_PROPERTY(QString transferKey READ transferKey NOTIFY transferChanged)
    Q_PROPERTY(bool gone READ isGone NOTIFY faceChanged)
    Q_PROPERTY(QString cutOffKey READ cutOffKey NOTIFY cutOffChanged)
    Q_PROPERTY(QString cutOffName READ cutOffName NOTIFY cutOffChanged)
    Q_PROPERTY(QString cutOffText READ cutOffText NOTIFY cutOffChanged)
    Q_PROPERTY(bool cutOffSourceGone READ isCutOffSourceGone NOTIFY cutOffChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)
    Q_PROPERTY(QString failedName READ failedName NOTIFY failureChanged)
    Q_PROPERTY(bool cutOffFailed READ isCutOffFailed NOTIFY failureChanged)
    Q_PROPERTY(bool picking READ isPicking NOTIFY pickingChanged)
    Q_PROPERTY(QUrl proposedFolder READ proposedFolder CONSTANT)
    Q_PROPERTY(bool pickingFolder READ isPickingFolder NOTIFY pickingChanged)

public:
    /// What is shown below the header.
    enum Face { InFlight, Gone, Filed, Empty };
    Q_ENUM(Face)

    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Executor main;
        Clock& clock;
        API& api;
        Transfers& transfers;
        Session& session;
        FileSender& sender;
    };

    explicit DeliverableView(const Environment& environment, QObject* parent = nullptr);

    /// Begins afresh with that deliverable.
    void open(const Org& org, const Project& project, const Deliverable& deliverable);
    /// Takes in what the platform says of it by now; null where it has it no more.
    void update(const Deliverable* deliverable);
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_tasks.close(); }

    const Deliverable& deliverable() const { return m_destination.deliverable; }
    QString title() const;
    QString contextLine() const;
    QString symbol() const;
    QString tint() const;
    QStringList chips() const;
    QString filedName() const { return m_filed ? m_filed->name : QString(); }
    QString filedDetails() const { return m_filed ? m_filed->details : QString(); }
    Face face() const;
    QString headline() const { return m_item ? headlineOf(*m_item) : QString(); }
    bool isPaused() const { return m_item && m_item->isPaused(); }
    bool isDownloading() const { return m_item && m_item->kind == Item::Kind::download; }
    QString transferName() const { return m_item ? m_item->name : QString(); }
    double fraction() const;
    QString doneText() const;
    QString transferredText() const;
    QString speedText() const;
    QString leftText() const;
    /// Why the transfer does not move, and when it is tried again, for the user; empty when there is nothing to say.
    QString trouble() const;
    /// What is asked before the transfer is stopped.
    QString stopTitle() const;
    QString stopMessage() const;
    QString transferKey() const { return m_item ? m_item->id.toString(QUuid::WithoutBraces) : QString(); }
    /// The platform no longer has the deliverable, so that nothing can be sent to it.
    bool isGone() const { return m_isGone; }
    /// The journal key of an upload to here that was cut off; empty when there is none.
    QString cutOffKey() const { return m_cutOff ? m_cutOff->journal.key : QString(); }
    /// What there is to say of it, for the user.
    QString cutOffName() const; ///< of the file
    QString cutOffText() const;
    bool isCutOffSourceGone() const { return m_cutOff && m_cutOff->isSourceGone; }
    /// Why the last upload to here failed, for the user; empty when it did not.
    QString failure() const;
    QString failedName() const;
    /// Whether it is the one that was cut off, so that trying again goes on with it.
    bool isCutOffFailed() const;
    /// The desktop's dialog is wanted: for a file, or for a folder.
    bool isPicking() const { return m_asking != Asking::nothing; }
    /// Where the choice of a folder for downloads begins.
    QUrl proposedFolder() const;
    bool isPickingFolder() const { return m_asking == Asking::folder; }

    Q_INVOKABLE void drop(const QList<QUrl>& files);
    Q_INVOKABLE void chooseFile();
    /// The dialog's answer.
    Q_INVOKABLE void pick(const QUrl& chosen);
    Q_INVOKABLE void cancelPicking();
    /// Downloads the filed file into the remembered folder; asks for one where there is none.
    Q_INVOKABLE void downloadFiled();
    /// Sends the file of the last upload again, or the rest of it.
    Q_INVOKABLE void tryAgain();
    /// Stops the transfer with that key, unless it is over.
    Q_INVOKABLE void pause();
    Q_INVOKABLE void resume();
    Q_INVOKABLE void stop(const QString& key);

Q_SIGNALS:
    void deliverableChanged();
    void faceChanged();
    void transferChanged();
    void cutOffChanged();
    void failureChanged(); ///< or what was cut off
    void pickingChanged();

private:
    enum class Asking { nothing, file, folder };

    Task<void> bringDown(Download filed);
    Task<void> bringDownTo(QString folder, Download filed);
    Download downloadOfFiled() const;
    void show();
    void ask(Asking asking);
    void setGone(bool gone);
    void updateTransfer();
    void updateCutOff();
    void updateFailure();

    const Environment m_environment;
    TaskScope m_tasks;
    Destination m_destination;
    std::optional<FiledFile> m_filed;
    QTimer m_tick;              // while it waits to be tried again
    std::optional<Item> m_item; // in flight for this deliverable
    std::optional<InterruptedUpload> m_cutOff;
    std::optional<Item> m_failed;
    Asking m_asking = Asking::nothing;
    bool m_isFindingFolder = false;
    bool m_isGone = false;
};

} // namespace palvera
