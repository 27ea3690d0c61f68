#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A dashed rounded rectangle around where something may be dropped. Main thread.
class DashedFrame : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    explicit DashedFrame(QQuickItem* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    double radius() const { return m_radius; }
    void setRadius(double radius);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();

private:
    QColor m_color = Qt::black;
    double m_radius = 0;
};

} // namespace palvera
