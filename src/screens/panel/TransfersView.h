#pragma once

#include "screens/panel/Footing.h"
#include "screens/panel/InterruptedView.h"
#include "screens/panel/TransferActions.h"
#include "screens/panel/TransferRows.h"

#include <QSet>
#include <QTimer>

namespace palvera {

class Transfers;

/// The transfers panel, the button that opens it, and the question about a doubtful file.
///
/// Lives on the main thread.
class TransfersView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(TransfersModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(palvera::TransferRows* inFlight READ inFlight CONSTANT)
    Q_PROPERTY(palvera::TransferRows* finished READ finished CONSTANT)
    Q_PROPERTY(palvera::InterruptedView* interrupted READ interrupted CONSTANT)
    Q_PROPERTY(Tab tab READ tab WRITE setTab NOTIFY tabChanged)
    Q_PROPERTY(bool panelOpen READ isPanelOpen WRITE setPanelOpen NOTIFY panelOpenChanged)
    Q_PROPERTY(bool moving READ isMoving NOTIFY badgeChanged)
    Q_PROPERTY(QString badge READ badge NOTIFY badgeChanged)
    Q_PROPERTY(QString badgeText READ badgeText NOTIFY badgeChanged)
    Q_PROPERTY(QString overallText READ overallText NOTIFY overallChanged)
    Q_PROPERTY(QString footer READ footer NOTIFY footerChanged)
    Q_PROPERTY(bool allPaused READ areAllPaused NOTIFY badgeChanged)
    Q_PROPERTY(QStringList tabTitles READ tabTitles NOTIFY tabTitlesChanged)
    Q_PROPERTY(QString doubtText READ doubtText NOTIFY doubtChanged)

public:
    enum Tab { InFlight, Finished, Interrupted };
    Q_ENUM(Tab)

    /// What shows files beside this program. Each returns at once.
    struct Files {
        std::function<void(const QString& path)> showInFolder;
        std::function<void(const QString& path)> open;
    };

    /// Of `transfers`; all referred to outlives this.
    TransfersView(Transfers& transfers, Clock& clock, const Executor& main, Files files, QObject* parent = nullptr);

    TransferRows* inFlight() { return &m_inFlight; }
    TransferRows* finished() { return &m_finished; }
    InterruptedView* interrupted() { return &m_interrupted; }
    Tab tab() const { return m_tab; }
    void setTab(Tab tab);
    bool isPanelOpen() const;
    void setPanelOpen(bool open);
    /// Whether anything is in flight.
    bool isMoving() const;
    /// How many are in flight, else how many were cut off; empty for none.
    QString badge() const;
    /// The same with what it counts, for users who cannot see it.
    QString badgeText() const;
    /// How much of all that is in flight has gone, such as "42%"; empty while nothing moves or nobody knows.
    QString overallText() const { return m_overall; }
    /// What all that is in flight comes to; see footingText.
    QString footer() const { return m_footer; }
    bool areAllPaused() const;
    /// With how many there are in each.
    QStringList tabTitles() const;
    /// The question about a doubtful file; empty when there is none.
    QString doubtText() const;

    /// What can be done with a transfer: a list of objects, each with an "action" and its "text".
    Q_INVOKABLE QVariantList actions(const QString& key) const;
    Q_INVOKABLE palvera::TransferAction::Value mainAction(const QString& key) const;
    Q_INVOKABLE void perform(const QString& key, palvera::TransferAction::Value action);
    /// What is asked before a transfer is stopped.
    Q_INVOKABLE QString stopTitle(const QString& key) const;
    Q_INVOKABLE QString stopMessage(const QString& key) const;
    /// Puts one in flight into that row of those in flight; the nearest where there is none.
    Q_INVOKABLE void moveTo(const QString& key, int row);
    Q_INVOKABLE void pauseAll();
    Q_INVOKABLE void resumeAll();
    /// What is asked before `stopAll`.
    Q_INVOKABLE QString stopAllMessage() const;
    Q_INVOKABLE void stopAll();
    /// Opens the panel on what was cut off.
    Q_INVOKABLE void showInterrupted();
    Q_INVOKABLE void clearFinished();
    /// "Send anyway".
    Q_INVOKABLE void confirmDoubt();
    Q_INVOKABLE void dismissDoubt();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_interrupted.close(); }

Q_SIGNALS:
    void tabChanged();
    void panelOpenChanged();
    void badgeChanged();
    void overallChanged();
    void footerChanged();
    void tabTitlesChanged();
    /// The user wants to see that deliverable.
    void deliverableWanted(const palvera::TransferTarget::Deliverable& deliverable);
    void doubtChanged();

private:
    void added(const QUuid& id);
    void noteOpen();
    void updateSoon();
    void update();

    Transfers& m_transfers;
    Clock& m_clock;
    const Executor m_main;
    TransferRows m_inFlight;
    TransferRows m_finished;
    InterruptedView m_interrupted;
    const Files m_files;
    QTimer m_tick; // while something is about to be tried again
    Tab m_tab = InFlight;
    bool m_isToUpdate = false;
    QString m_overall;
    QString m_footer;
    QSet<QString> m_openFor; // ids of deliverables, and of organisations for their bins; kept when the user closes it
};

} // namespace palvera
