#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// The drawing of a soft shadow around a rounded rectangle that lies `depth` within this item on all sides. It is drawn
/// once for a size, in layers that every renderer draws alike, and not below the rectangle. Main thread.
class ShadowCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(double depth MEMBER m_depth NOTIFY changed)
    Q_PROPERTY(double strength MEMBER m_strength NOTIFY changed)

public:
    explicit ShadowCanvas(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::black;
    double m_radius = 0;
    double m_depth = 0;    // how far it reaches
    double m_strength = 0; // close to the rectangle, from 0 to 1
};

} // namespace palvera
