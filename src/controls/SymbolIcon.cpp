#include "controls/SymbolIcon.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QtQml/qqmlinfo.h>

namespace palvera {

SymbolIcon::SymbolIcon(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &SymbolIcon::colorChanged, this, [this] { update(); });
}

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
