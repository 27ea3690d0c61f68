#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A symbol by its name in symbols.txt, drawn in one colour and crisp at any scale. An unknown name draws nothing and
/// is warned of. Main thread.
class SymbolIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)

public:
    explicit SymbolIcon(QQuickItem* parent = nullptr);

    const QString& name() const { return m_name; }
    void setName(const QString& name);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QByteArray m_drawing; // SVG, empty for no symbol
    QColor m_color = Qt::black;
};

} // namespace palvera
