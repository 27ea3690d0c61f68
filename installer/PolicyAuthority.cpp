#include "installer/PolicyAuthority.h"

#include "installer/Built.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include <cstdio>

namespace palvera::installer {

namespace {

constexpr uint mayAskTheUser = 1;

QVariant subjectOf(const QString& busName)
{
    QDBusArgument subject;
    subject.beginStructure();
    subject << QStringLiteral("system-bus-name") << QVariantMap{{QStringLiteral("name"), busName}};
    subject.endStructure();
    return QVariant::fromValue(subject);
}

QVariant noDetails()
{
    QDBusArgument details;
    details.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    details.endMap();
    return QVariant::fromValue(details);
}

PolicyAuthority::Verdict verdictOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1StringView("(bba{ss})")) {
        std::fprintf(stderr, "palvera-installer: polkit: %s\n", qPrintable(reply.errorMessage()));
        return PolicyAuthority::Verdict::nobodyToAsk;
    }
    const auto result = reply.arguments().constFirst().value<QDBusArgument>();
    bool isAllowed = false;
    result.beginStructure();
    result >> isAllowed;
    result.endStructure(); // frees what the beginning has taken
    return isAllowed ? PolicyAuthority::Verdict::allowed : PolicyAuthority::Verdict::refused;
}

} // namespace

PolicyAuthority::PolicyAuthority(QDBusConnection bus, std::chrono::milliseconds patience)
    : m_bus(std::move(bus)), m_patience(patience)
{}

void PolicyAuthority::ask(const QString& busName, QObject* context, std::function<void(Verdict)> then)
{
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.PolicyKit1"), QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
        QStringLiteral("org.freedesktop.PolicyKit1.Authority"), QStringLiteral("CheckAuthorization"));
    question << subjectOf(busName) << QString::fromLatin1(builtId) + QStringLiteral(".Installer.update") << noDetails()
             << mayAskTheUser << QString();
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(question, static_cast<int>(m_patience.count())), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, then = std::move(then)] {
        watcher->deleteLater();
        then(verdictOf(watcher->reply()));
    });
}

} // namespace palvera::installer
