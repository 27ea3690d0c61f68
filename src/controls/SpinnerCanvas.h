#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A ring of spokes of which one is the brightest: the next one with every step. Main thread.
class SpinnerCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(int step MEMBER m_step NOTIFY changed)

public:
    explicit SpinnerCanvas(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::black;
    int m_step = 0;
};

} // namespace palvera
