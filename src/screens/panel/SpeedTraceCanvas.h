#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// The drawing of a speed graph. Main thread.
class SpeedTraceCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<double> samples READ samples WRITE setSamples NOTIFY samplesChanged)
    Q_PROPERTY(double fraction READ fraction WRITE setFraction NOTIFY fractionChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(QString peakText READ peakLabel NOTIFY samplesChanged)

public:
    explicit SpeedTraceCanvas(QQuickItem* parent = nullptr);

    /// Bytes per second, oldest first.
    const QList<double>& samples() const { return m_samples; }
    void setSamples(const QList<double>& samples);
    /// How much of the width the graph may use.
    double fraction() const { return m_fraction; }
    void setFraction(double fraction);
    /// Of what is below the line.
    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    QString peakLabel() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void samplesChanged();
    void fractionChanged();
    void colorChanged();

private:
    QList<double> m_samples;
    double m_fraction = 1;
    QColor m_color = Qt::black;
};

} // namespace palvera
