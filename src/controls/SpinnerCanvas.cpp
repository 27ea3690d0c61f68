#include "controls/SpinnerCanvas.h"

#include <QPainter>

#include <algorithm>

namespace palvera {

SpinnerCanvas::SpinnerCanvas(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &SpinnerCanvas::changed, this, [this] { update(); });
}

void SpinnerCanvas::paint(QPainter* painter)
{
    constexpr int spokes = 8;
    const auto radius = std::min(width(), height()) / 2;
    const auto thickness = std::max(1.5, radius * 0.18);
    painter->translate(width() / 2, height() / 2);
    auto color = m_color;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const auto age = (m_step - spoke) % spokes; // below zero before the first turn
        color.setAlphaF(m_color.alphaF() * (1 - 0.75F * float(age < 0 ? age + spokes : age) / spokes));
        painter->setPen(QPen(color, thickness, Qt::SolidLine, Qt::RoundCap));
        painter->drawLine(QPointF(0, -radius + thickness / 2), QPointF(0, -radius * 0.44 - thickness / 2));
        painter->rotate(360.0 / spokes);
    }
}

} // namespace palvera
