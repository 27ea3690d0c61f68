#include "controls/SymbolIcon.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QtQml/qqmlinfo.h>

namespace palvera {

SymbolIcon::SymbolIcon(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void SymbolIcon::setName(const QString& name)
{
    if (m_name == name)
        return;
    m_name = name;
    m_drawing.clear();
    QFile file(QStringLiteral(":/palvera/symbols/%1.svg").arg(name));
    if (!name.isEmpty() && file.open(QIODevice::ReadOnly))
        m_drawing = file.readAll();
    else if (!name.isEmpty())
        qmlWarning(this) << "There is no symbol " << name;
    update();
    Q_EMIT nameChanged();
}

void SymbolIcon::setColor(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void SymbolIcon::paint(QPainter* painter)
{
    if (m_drawing.isEmpty())
        return;
    auto drawing = m_drawing;
    drawing.replace("currentColor", m_color.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(drawing);
    painter->setOpacity(m_color.alphaF());
    renderer.render(painter, boundingRect());
}

} // namespace palvera
