#include "desktop/Notices.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QUuid>
#include <QVariantMap>

namespace palvera {

DesktopNotices::~DesktopNotices()
{
    if (!m_connection.isEmpty())
        QDBusConnection::disconnectFromBus(m_connection);
}

// As the Desktop Notifications Specification 1.2 describes it.
void DesktopNotices::show(const QString& title, const QString& text)
{
    if (m_connection.isEmpty()) {
        m_connection = QUuid::createUuid().toString();
        m_busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connection)
                               : QDBusConnection::connectToBus(m_busAddress, m_connection);
    }
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service,
                                               QStringLiteral("Notify"));
    constexpr uint replacesNothing = 0;
    constexpr int asLongAsUsual = -1;
    const QVariantMap hints{{QStringLiteral("desktop-entry"), m_program}};
    call << QStringLiteral("Palvera") << replacesNothing << QStringLiteral("palvera") << title
         << text.toHtmlEscaped() // the text may hold markup, and file names may look like it
         << QStringList() << hints << asLongAsUsual;
    QDBusConnection(m_connection).send(call);
}

} // namespace palvera
