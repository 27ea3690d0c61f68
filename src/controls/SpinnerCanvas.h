#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A ring of spokes of which one is the brightest: the next one with every step. Main thread.
class SpinnerCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(int step READ step WRITE setStep NOTIFY stepChanged)

public:
    explicit SpinnerCanvas(QQuickItem* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    int step() const { return m_step; }
    void setStep(int step);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void colorChanged();
    void stepChanged();

private:
    QColor m_color = Qt::black;
    int m_step = 0;
};

} // namespace palvera
