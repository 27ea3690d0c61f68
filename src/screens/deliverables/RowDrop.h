#pragma once

#include "screens/deliverables/DeliverablesView.h"
#include "screens/deliverables/FileSender.h"

namespace palvera {

/// What becomes of files that are dropped on a row of the list: the question whether that row is meant, which stays
/// with its deliverable wherever the row moves.
///
/// Lives on the main thread.
class RowDrop : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(RowDropModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(QString title READ title NOTIFY questionChanged)
    Q_PROPERTY(QString message READ message NOTIFY questionChanged)
    Q_PROPERTY(bool replacing READ isReplacing NOTIFY questionChanged)

public:
    /// On rows of `list`, through `sender`; both outlive it.
    RowDrop(const DeliverablesView& list, FileSender& sender, QObject* parent = nullptr);

    /// Asks about the first of `files`, or says why it cannot go to that deliverable.
    Q_INVOKABLE void drop(const QString& deliverableId, const QList<QUrl>& files);
    /// "Send".
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void dismiss() { ask({}); }

    /// The question; empty when there is none.
    QString title() const;
    /// Where the deliverable belongs, what is replaced and what is left out.
    QString message() const;
    /// Whether a file is filed there.
    bool isReplacing() const { return m_asked && isFiled(m_asked->upload.deliverable); }

Q_SIGNALS:
    void questionChanged();

private:
    void ask(std::optional<Intended> intended);
    void update();

    const DeliverablesView& m_list;
    FileSender& m_sender;
    std::optional<Intended> m_asked;
};

} // namespace palvera
