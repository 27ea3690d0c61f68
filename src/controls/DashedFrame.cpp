#include "controls/DashedFrame.h"

#include <QPainter>

namespace palvera {

DashedFrame::DashedFrame(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &DashedFrame::changed, this, [this] { update(); });
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
