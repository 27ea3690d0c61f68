#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace palvera {

/// Keeps the children of an item in the order in which one sees them, from the top. Assistants read them in the order
/// of the children, which in a list is that in which its rows were made or used again. Main thread.
class RowOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* rows READ rows WRITE setRows NOTIFY rowsChanged)

public:
    QQuickItem* rows() const { return m_rows; }
    void setRows(QQuickItem* rows);

Q_SIGNALS:
    void rowsChanged();

private:
    void follow(QQuickWindow* window);
    void sort() const;

    QPointer<QQuickItem> m_rows;
    QMetaObject::Connection m_pictures;
};

} // namespace palvera
