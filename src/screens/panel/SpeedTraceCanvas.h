#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// The drawing of a speed graph. Main thread.
class SpeedTraceCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<double> samples MEMBER m_samples NOTIFY samplesChanged)
    Q_PROPERTY(double fraction READ fraction WRITE setFraction NOTIFY fractionChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    Q_PROPERTY(QString peakText READ peakLabel NOTIFY samplesChanged)

public:
    explicit SpeedTraceCanvas(QQuickItem* parent = nullptr);

    /// How much of the width the graph may use.
    double fraction() const { return m_fraction; }
    void setFraction(double fraction);
    QString peakLabel() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void samplesChanged();
    void fractionChanged();
    void colorChanged();

private:
    QList<double> m_samples; // bytes per second, oldest first
    double m_fraction = 1;
    QColor m_color = Qt::black; // of what is below the line
};

} // namespace palvera
