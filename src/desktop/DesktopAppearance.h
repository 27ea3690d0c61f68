#pragma once

#include <QObject>
#include <QString>

#include <array>

class QDBusVariant;

namespace palvera {

/// How a desktop wants its programs to look.
struct Appearance {
    bool dark = false;
    bool still = false;   ///< without animations
    double textScale = 1; ///< how much larger texts are than as designed

    bool operator==(const Appearance&) const = default;
};

/// What the desktop's settings portal says of that, as long as it says so.
///
/// Main thread. It begins with the fallback and learns the rest through the event loop; it waits for nothing but the
/// connection to the bus, when it is made.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    /// `fallback` stands for what the desktop has no portal for, no preference, or none that makes sense. `busAddress`
    /// is the session bus unless given.
    explicit DesktopAppearance(Appearance fallback, const QString& busAddress = {}, QObject* parent = nullptr);
    ~DesktopAppearance() override;

    const Appearance& now() const { return m_now; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    enum Setting { colorScheme, animations, textScaling, settingCount };

    void ask(const QString& busAddress);
    void take(Setting setting, const QVariant& value);

    const QString m_connection;
    const Appearance m_fallback;
    Appearance m_now;
    std::array<bool, settingCount> m_hasChanged{}; // since it was asked for
};

} // namespace palvera
