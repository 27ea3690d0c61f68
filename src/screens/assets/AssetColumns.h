#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

#include <array>

namespace palvera {

class Preferences;

/// How wide the columns of the table of assets are, in pixels: as the user has drawn them, as far as there is room. The
/// name has what they leave. Kept between runs. Main thread.
class AssetColumns : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the screen has it")
    Q_PROPERTY(double available MEMBER m_available WRITE setAvailable NOTIFY changed)
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
    double name() const;
    double deal() const { return m_shown[Deal]; }
    double type() const { return m_shown[Type]; }
    double size() const { return m_shown[Size]; }
    double date() const { return m_shown[Date]; }
    /// Makes a column that wide, within its limits, and keeps that.
    Q_INVOKABLE void setWidth(Column column, double width);

    /// What `wanted` comes to in `available`: each within its limits, and narrower, towards the least that they need,
    /// where the name would get too little.
    static Widths fitted(const Widths& wanted, double available);
    /// What `stored` says, or the usual widths where it makes no sense.
    static Widths parse(const QString& stored);

Q_SIGNALS:
    void changed();

private:
    void fit();

    Preferences& m_preferences;
    double m_available = 0;
    Widths m_wanted, m_shown{};
};

} // namespace palvera
