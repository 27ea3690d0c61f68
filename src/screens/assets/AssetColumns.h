#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include <array>

namespace palvera {

class Preferences;

/// How wide the columns of the table of assets are, in pixels: as the user has drawn them, as far as there is room, and
/// growing with the texts. The name has what they leave, and all where there is no room for columns. Kept between runs,
/// as they are without growing. Main thread.
class AssetColumns : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the screen has it")
    Q_PROPERTY(double available MEMBER m_available WRITE setAvailable NOTIFY changed)
    Q_PROPERTY(double scale MEMBER m_scale WRITE setScale NOTIFY changed)
    Q_PROPERTY(bool folded READ isFolded NOTIFY changed)
    Q_PROPERTY(double name READ name NOTIFY changed)
    Q_PROPERTY(double deal READ deal NOTIFY changed)
    Q_PROPERTY(double type READ type NOTIFY changed)
    Q_PROPERTY(double size READ size NOTIFY changed)
    Q_PROPERTY(double date READ date NOTIFY changed)

public:
    enum Column { Deal, Type, Size, Date };
    Q_ENUM(Column)
    using Widths = std::array<double, 4>;

    /// Under which they are kept: "200,110,90,130".
    static const QString preferencesKey;

    explicit AssetColumns(Preferences& preferences, QObject* parent = nullptr);

    void setAvailable(double available);
    void setScale(double scale);
    /// Whether there is no room for columns.
    bool isFolded() const { return m_shown == Widths{}; }
    double name() const;
    double deal() const { return m_shown[Deal] * m_scale; }
    double type() const { return m_shown[Type] * m_scale; }
    double size() const { return m_shown[Size] * m_scale; }
    double date() const { return m_shown[Date] * m_scale; }
    /// Makes a column that wide, within its limits, and keeps that.
    Q_INVOKABLE void setWidth(Column column, double width);

    /// What `wanted` comes to in `available`: each within its limits, and narrower, towards the least that they need,
    /// where the name would get too little; none where it would all the same.
    static Widths fitted(const Widths& wanted, double available);
    /// What `stored` says, or the usual widths where it makes no sense.
    static Widths parse(const QString& stored);

Q_SIGNALS:
    void changed();

private:
    void fit();

    Preferences& m_preferences;
    double m_available = 0;
    double m_scale = 1;
    Widths m_wanted, m_shown{}; // not scaled
};

} // namespace palvera
