#pragma once

#include "async/TaskScope.h"
#include "service/Organisations.h"
#include "transfers/TransferRequests.h"

#include <QObject>
#include <QUrl>

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// A file above this size, in bytes, is asked about before it goes to a deliverable of textless elements.
constexpr qint64 mostForTextless = 4'000'000'000;

/// A deliverable, and what it is part of. A plain value.
struct Destination {
    Org org;
    Project project;
    Deliverable deliverable;
};

/// What somebody wants sent, as far as one can tell without looking at the disk. A plain value.
struct Intended {
    DeliverableUpload upload;
    QStringList leftOut; ///< names of what was dropped along with it
};

/// Sends files to deliverables for every screen on which they are dropped or chosen: takes the first of several, asks
/// about one that looks misplaced, and says what was not taken, where the user is by then.
///
/// Lives on the main thread; files are looked at elsewhere.
class FileSender : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SenderModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool refusal READ isRefusal NOTIFY noticeChanged)
    Q_PROPERTY(QString doubtfulMessage READ doubtfulMessage NOTIFY doubtfulChanged)

public:
    /// Of `transfers`, which outlives it. `background` are threads for looking at files.
    FileSender(const Executor& main, const Executor& background, Transfers& transfers, QObject* parent = nullptr);

    /// Takes the first of what was dropped. Nothing when it cannot be sent there, which is then said.
    std::optional<Intended> take(const QList<QUrl>& files, const Destination& to);
    /// Looks at the file and sends it, or asks first, or says why not.
    void send(Intended intended);
    /// Says why nothing was sent.
    void refuse(const QString& why);
    /// The user is on another page: what is still to be said of an earlier one names its deliverable.
    void turnPage();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_tasks.close(); }

    /// What there is to say of the last file, for the user; empty when it simply went.
    const QString& notice() const { return m_notice; }
    /// Whether that is why it was not taken, where the user dropped it.
    bool isRefusal() const { return m_isRefusal; }
    /// The question about a file that looks too long for its deliverable; empty when there is none.
    QString doubtfulMessage() const;

    /// Sends the file that was asked about.
    Q_INVOKABLE void confirmDoubtful();
    Q_INVOKABLE void dismissDoubtful();
    Q_INVOKABLE void dismissNotice() { say({}, false); }

Q_SIGNALS:
    void noticeChanged();
    void doubtfulChanged();

private:
    struct Doubtful {
        Intended intended;
        qint64 bytes = 0;
    };

    Task<void> check(Intended intended, int page);
    void begin(const Intended& intended);
    /// Why nothing can go to that deliverable at present, for the user; empty when it can.
    QString objectionTo(const QString& deliverableId) const;
    void say(const QString& notice, bool isRefusal);
    void setDoubtful(std::optional<Doubtful> doubtful);

    const Executor m_disk; // a strand
    Transfers& m_transfers;
    TaskScope m_tasks;
    std::optional<Doubtful> m_doubtful;
    QString m_notice;
    bool m_isRefusal = false;
    int m_page = 0; // how many were turned
};

} // namespace palvera
