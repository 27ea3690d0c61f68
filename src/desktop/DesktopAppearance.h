#pragma once

#include <QObject>
#include <QString>

class QDBusVariant;

namespace palvera {

/// Whether the desktop asks for a dark appearance, as its settings portal says and as long as it says so.
///
/// Main thread. It begins with the fallback and learns the rest through the event loop; it waits for nothing but the
/// connection to the bus, when it is made.
class DesktopAppearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)

public:
    /// `fallback` stands where the desktop has no portal or no preference. `busAddress` is the session bus unless
    /// given.
    explicit DesktopAppearance(bool fallback, const QString& busAddress = {}, QObject* parent = nullptr);
    ~DesktopAppearance() override;

    bool isDark() const { return m_dark; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& busAddress);
    void take(const QVariant& scheme);

    const QString m_connection;
    const bool m_fallback;
    bool m_dark;
    bool m_hasChanged = false; // since it was asked for
};

} // namespace palvera
