#pragma once

#include "async/TaskScope.h"
#include "screens/RowsModel.h"

#include <QUrl>

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// A transfer that was cut off.
struct InterruptedRow {
    QString key; ///< the journal's, or that of a download
    QString symbol;
    QString filename;
    QString place;    ///< "Picture master · Northlight Pictures"; empty where it is not known
    QString progress; ///< "12 of 40 parts done"
    QString spoken;   ///< all that matters, for users who cannot see it
    bool isSourceGone = false;

    bool operator==(const InterruptedRow&) const = default;
};

/// "2 uploads and 1 download were cut off."; empty for none.
QString cutOffText(qsizetype uploads, qsizetype downloads);

/// The transfers that were cut off, as a list. Main thread.
class InterruptedRows : public RowsModel<InterruptedRow> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    InterruptedRows();

    using RowsModel::rows;
    using RowsModel::setRows;
};

/// What was cut off, in this run or an earlier one, and what can become of it. Main thread.
class InterruptedView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(InterruptedModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(palvera::InterruptedRows* rows READ rows CONSTANT)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY countChanged)

public:
    /// That of `transfers`, which must outlive this.
    InterruptedView(Transfers& transfers, const Executor& main, QObject* parent = nullptr);

    InterruptedRows* rows() { return &m_rows; }
    int count() const { return m_rows.rowCount(); }
    /// See cutOffText.
    QString summary() const;
    /// Reads again what there is.
    void load();
    /// Cuts off what is under way; see TaskScope.
    Task<void> close() { return m_tasks.close(); }

    Q_INVOKABLE void resume(const QString& key);
    Q_INVOKABLE void resumeAll();
    /// What is asked before `discard`.
    Q_INVOKABLE QString discardTitle(const QString& key) const;
    Q_INVOKABLE QString discardMessage(const QString& key) const;
    Q_INVOKABLE void discard(const QString& key);
    /// Looks whether `file` is what that upload was sending; ends in `located`.
    Q_INVOKABLE void locate(const QString& key, const QUrl& file);
    /// Goes on with the file that was located.
    Q_INVOKABLE void resumeLocated();
    /// Sends it from the start, in the place of what was cut off.
    Q_INVOKABLE void sendLocated();

Q_SIGNALS:
    void countChanged();
    /// `message` says what was found out of the file, for the user.
    void located(const QString& key, bool isSame, const QString& message);
    /// What was asked for could not be done; a sentence.
    void failed(const QString& key, const QString& why);

private:
    struct Located {
        QString key;
        QString path;
    };

    void update();
    Task<void> look(Located located);
    Task<void> moveAndResume(Located located);
    Task<void> discardAndSend(Located located);
    Task<void> discardUpload(QString key);
    Task<void> discardDownload(QString key);

    Transfers& m_transfers;
    TaskScope m_tasks;
    InterruptedRows m_rows;
    Located m_located;
};

} // namespace palvera
