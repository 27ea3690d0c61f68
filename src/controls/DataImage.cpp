#include "controls/DataImage.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QPointer>
#include <QThreadPool>

namespace palvera {

DataImage::DataImage(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void DataImage::setAddress(const QString& address)
{
    if (address == m_address)
        return;
    m_address = address;
    m_image = {};
    setState(address.isEmpty() ? Empty : Decoding);
    update();
    Q_EMIT addressChanged();
    if (address.isEmpty())
        return;
    QThreadPool::globalInstance()->start([address, self = QPointer(this)] {
        // Posted to the application object: the item may be gone by then, and only the main thread can tell.
        QMetaObject::invokeMethod(qApp, [address, self, image = decode(address)] {
            if (self)
                self->take(address, image);
        });
    });
}

namespace {

bool isWithinLimits(QSize size)
{
    return !size.isEmpty() && size.width() <= DataImage::longestSide && size.height() <= DataImage::longestSide;
}

} // namespace

QImage DataImage::decode(const QString& address)
{
    const auto comma = address.indexOf(u',');
    const auto head = address.left(comma).toLower();
    if (comma < 0 || address.size() > longestAddress || !head.startsWith(QLatin1String("data:image/")) ||
        !head.endsWith(QLatin1String(";base64")))
        return {};
    auto format = head.mid(11, head.size() - 11 - 7).toLatin1();
    if (!QByteArrayList{"png", "jpeg", "gif"}.contains(format))
        return {};
    auto bytes = QByteArray::fromBase64(address.mid(comma + 1).toLatin1());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false); // only what these few decoders read
    if (!isWithinLimits(reader.size()))
        return {};
    const auto image = reader.read();
    return isWithinLimits(image.size()) ? image : QImage(); // a GIF may hold a picture larger than it says
}

void DataImage::take(const QString& address, const QImage& image)
{
    if (address != m_address)
        return;
    m_image = image;
    setState(image.isNull() ? Failed : Ready);
    update();
}

void DataImage::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

void DataImage::paint(QPainter* painter)
{
    if (m_image.isNull())
        return;
    auto size = m_image.size().scaled(boundingRect().size().toSize(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(boundingRect().center().toPoint());
    painter->drawImage(place, m_image);
}

} // namespace palvera
