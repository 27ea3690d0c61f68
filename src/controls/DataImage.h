#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A picture that its address carries itself, as a `data:` address with base64. Decoded on a thread of Qt's pool, never
/// on the main thread; drawn without smoothing, so that a QR code stays sharp. Main thread.
class DataImage : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString address READ address WRITE setAddress NOTIFY addressChanged)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)

public:
    enum State {
        Empty, ///< no address
        Decoding,
        Ready,
        Failed, ///< not a picture, or larger than the limits
    };
    Q_ENUM(State)

    static constexpr qsizetype longestAddress = 1 << 20; ///< characters
    static constexpr int longestSide = 2048;             ///< pixels

    explicit DataImage(QQuickItem* parent = nullptr);

    const QString& address() const { return m_address; }
    void setAddress(const QString& address);
    State state() const { return m_state; }

    /// The picture in `address`: PNG, JPEG or GIF. Null where there is none within the limits. Any thread.
    static QImage decode(const QString& address);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void addressChanged();
    void stateChanged();

private:
    void take(const QString& address, const QImage& image);
    void setState(State state);

    QString m_address;
    QImage m_image;
    State m_state = Empty;
};

} // namespace palvera
