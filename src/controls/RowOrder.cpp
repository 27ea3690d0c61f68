#include "controls/RowOrder.h"

#include <QQuickWindow>

namespace palvera {

void RowOrder::setRows(QQuickItem* rows)
{
    if (rows == m_rows)
        return;
    if (m_rows)
        m_rows->disconnect(this);
    m_rows = rows;
    if (rows) {
        connect(rows, &QQuickItem::windowChanged, this, &RowOrder::follow);
        follow(rows->window());
    }
    Q_EMIT rowsChanged();
}

void RowOrder::follow(QQuickWindow* window)
{
    disconnect(m_pictures);
    if (window) // once for every picture: rows come, go and move many at a time
        m_pictures = connect(window, &QQuickWindow::afterAnimating, this, &RowOrder::sort);
}

void RowOrder::sort() const
{
    if (!m_rows || !m_rows->isVisible())
        return;
    auto children = m_rows->childItems();
    if (std::ranges::is_sorted(children, {}, &QQuickItem::y))
        return;
    std::ranges::sort(children, {}, &QQuickItem::y);
    for (qsizetype i = 1; i < children.size(); ++i)
        children[i]->stackAfter(children[i - 1]);
}

} // namespace palvera
