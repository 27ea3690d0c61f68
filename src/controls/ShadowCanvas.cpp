#include "controls/ShadowCanvas.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace palvera {

ShadowCanvas::ShadowCanvas(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &ShadowCanvas::changed, this, [this] { update(); });
}

void ShadowCanvas::paint(QPainter* painter)
{
    constexpr int layers = 8;
    const auto surface = boundingRect().adjusted(m_depth, m_depth, -m_depth, -m_depth);
    QPainterPath around;
    around.addRect(boundingRect());
    around.addRoundedRect(surface.adjusted(1, 1, -1, -1), m_radius, m_radius);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipPath(around);
    painter->setPen(Qt::NoPen);
    auto layer = m_color;
    layer.setAlphaF(float(m_strength / layers));
    painter->setBrush(layer);
    const auto drop = m_depth / 5; // light comes from above
    for (int i = 1; i <= layers; ++i) {
        const auto reach = (m_depth - drop) * std::pow(double(i) / layers, 1.6);
        painter->drawRoundedRect(surface.adjusted(-reach, -reach, reach, reach).translated(0, drop), m_radius + reach,
                                 m_radius + reach);
    }
}

} // namespace palvera
