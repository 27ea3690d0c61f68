#include "screens/panel/SpeedTraceCanvas.h"

#include "screens/panel/SpeedTraceShape.h"

#include <QPainter>
#include <QPainterPath>

namespace palvera {

SpeedTraceCanvas::SpeedTraceCanvas(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &SpeedTraceCanvas::samplesChanged, this, [this] { update(); });
    connect(this, &SpeedTraceCanvas::colorChanged, this, [this] { update(); });
}

void SpeedTraceCanvas::setFraction(double fraction)
{
    // Less than this moves nothing that one could see.
    if (qAbs(fraction - m_fraction) * std::max(width(), 1.0) < 0.5 && fraction != 1)
        return;
    m_fraction = fraction;
    update();
    Q_EMIT fractionChanged();
}

QString SpeedTraceCanvas::peakLabel() const
{
    return peakText(m_samples);
}

void SpeedTraceCanvas::paint(QPainter* painter)
{
    const auto points = tracePoints(m_samples, m_fraction, size());
    if (points.isEmpty())
        return;
    QPainterPath area({0, height()});
    for (const auto& point : points)
        area.lineTo(point);
    area.lineTo(usedFraction(m_fraction) * width(), height());
    area.closeSubpath();
    auto below = m_color;
    below.setAlphaF(0.06F);
    painter->fillPath(area, below);

    const auto peak = peakOf(m_samples);
    QPen pen(Qt::black, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setMiterLimit(10);
    for (qsizetype i = 1; i < points.size(); ++i) {
        pen.setColor(traceColor(m_samples[i], peak));
        painter->setPen(pen);
        painter->drawLine(points[i - 1], points[i]);
    }
}

} // namespace palvera
