#include "controls/DashedFrame.h"

#include <QPainter>

#include <utility>

namespace palvera {

DashedFrame::DashedFrame(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void DashedFrame::setColor(const QColor& color)
{
    if (std::exchange(m_color, color) == color)
        return;
    update();
    Q_EMIT colorChanged();
}

void DashedFrame::setRadius(double radius)
{
    if (std::exchange(m_radius, radius) == radius)
        return;
    update();
    Q_EMIT radiusChanged();
}

void DashedFrame::paint(QPainter* painter)
{
    constexpr double thickness = 1.5;
    QPen pen(m_color, thickness);
    pen.setDashPattern({5, 4});
    painter->setPen(pen);
    const auto inset = thickness / 2;
    painter->drawRoundedRect(boundingRect().adjusted(inset, inset, -inset, -inset), m_radius, m_radius);
}

} // namespace palvera
