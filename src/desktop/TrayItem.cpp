#include "desktop/TrayItem.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QUuid>

namespace palvera {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString menuPath = QStringLiteral("/MenuBar");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// A line of the menu, or the menu itself, as dbusmenu has it: (ia{sv}av).
struct MenuNode {
    int id = 0;
    QVariantMap properties = {};
    QList<QDBusVariant> children = {};
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuNode& node)
{
    argument.beginStructure();
    argument << node.id << node.properties << node.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuNode& node)
{
    argument.beginStructure();
    argument >> node.id >> node.properties >> node.children;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): so Qt has it
}

/// The properties of a line alone: (ia{sv}).
struct MenuProperties {
    int id = 0;
    QVariantMap properties = {};
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& line)
{
    argument.beginStructure();
    argument << line.id << line.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& line)
{
    argument.beginStructure();
    argument >> line.id >> line.properties;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): so Qt has it
}

enum MenuLine { wholeMenu, showLine, quitLine };

QDBusMessage watcherCall(const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(watcherName, watcherPath, interface, method);
}

} // namespace
} // namespace palvera

Q_DECLARE_METATYPE(palvera::MenuNode)
Q_DECLARE_METATYPE(palvera::MenuProperties)

namespace palvera {

/// Answers for both of its interfaces.
class TrayObject : public QDBusVirtualObject {
public:
    TrayObject(TrayItem::Texts texts, TrayItem::Actions actions)
        : m_texts(std::move(texts)), m_actions(std::move(actions))
    {}

    QString introspect(const QString& path) const override
    {
        return QStringLiteral("<interface name=\"%1\"/>").arg(path == menuPath ? menuInterface : itemInterface);
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const auto values = answer(message);
        if (!values)
            return false;
        QDBusConnection(connection).send(message.createReply(*values));
        return true;
    }

private:
    std::optional<QVariantList> answer(const QDBusMessage& message)
    {
        const auto method = message.member();
        if (message.interface() == propertiesInterface)
            return property(message.arguments().value(0).toString(), method, message.arguments().value(1).toString());
        return message.path() == menuPath ? menuAnswer(method, message.arguments()) : itemAnswer(method);
    }
    std::optional<QVariantList> property(const QString& interface, const QString& method, const QString& name) const
    {
        const auto all = interface == menuInterface ? menuState() : itemState();
        if (method == QStringLiteral("GetAll"))
            return QVariantList{all};
        if (method != QStringLiteral("Get") || !all.contains(name))
            return {};
        return QVariantList{QVariant::fromValue(QDBusVariant(all.value(name)))};
    }
    QVariantMap itemState() const
    {
        return {{QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
                {QStringLiteral("Id"), m_texts.icon},
                {QStringLiteral("Title"), m_texts.title},
                {QStringLiteral("Status"), QStringLiteral("Active")},
                {QStringLiteral("IconName"), m_texts.icon},
                {QStringLiteral("ItemIsMenu"), false},
                {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(menuPath))}};
    }
    static QVariantMap menuState()
    {
        return {{QStringLiteral("Version"), 3U},
                {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
                {QStringLiteral("Status"), QStringLiteral("normal")}};
    }
    std::optional<QVariantList> itemAnswer(const QString& method)
    {
        if (method == QStringLiteral("Activate") || method == QStringLiteral("SecondaryActivate"))
            m_actions.show();
        return QVariantList();
    }
    std::optional<QVariantList> menuAnswer(const QString& method, const QVariantList& given)
    {
        if (method == QStringLiteral("GetLayout"))
            return QVariantList{1U, QVariant::fromValue(node(given.value(0).toInt()))};
        if (method == QStringLiteral("GetGroupProperties"))
            return QVariantList{QVariant::fromValue(QList<MenuProperties>{
                {.id = showLine, .properties = line(showLine)}, {.id = quitLine, .properties = line(quitLine)}})};
        if (method == QStringLiteral("GetProperty"))
            return QVariantList{
                QVariant::fromValue(QDBusVariant(line(given.value(0).toInt()).value(given.value(1).toString())))};
        if (method == QStringLiteral("AboutToShow"))
            return QVariantList{false};
        if (method == QStringLiteral("AboutToShowGroup"))
            return QVariantList{QVariant::fromValue(QList<int>()), QVariant::fromValue(QList<int>())};
        if (method == QStringLiteral("EventGroup"))
            return QVariantList{QVariant::fromValue(QList<int>())};
        if (method == QStringLiteral("Event") && given.value(1).toString() == QStringLiteral("clicked"))
            (given.value(0).toInt() == quitLine ? m_actions.quit : m_actions.show)();
        return QVariantList();
    }
    QVariantMap line(int id) const
    {
        if (id == wholeMenu)
            return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
        return {{QStringLiteral("label"), id == quitLine ? m_texts.quit : m_texts.show}};
    }
    MenuNode node(int id) const
    {
        MenuNode made{.id = id, .properties = line(id)};
        if (id == wholeMenu)
            for (const int child : {showLine, quitLine})
                made.children.append(QDBusVariant(QVariant::fromValue(node(child))));
        return made;
    }

    const TrayItem::Texts m_texts;
    const TrayItem::Actions m_actions;
};

TrayItem::TrayItem(const Texts& texts, Actions actions, const QString& busAddress, QObject* parent)
    : QObject(parent),
      m_connection(QUuid::createUuid().toString()),
      m_object(std::make_unique<TrayObject>(texts, std::move(actions)))
{
    qDBusRegisterMetaType<MenuNode>();
    qDBusRegisterMetaType<MenuProperties>();
    qDBusRegisterMetaType<QList<MenuProperties>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    auto bus = busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connection)
                                    : QDBusConnection::connectToBus(busAddress, m_connection);
    bus.registerVirtualObject(itemPath, m_object.get());
    bus.registerVirtualObject(menuPath, m_object.get());
    for (const char* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus.connect(watcherName, watcherPath, watcherName, QString::fromLatin1(change), this, SLOT(lookForHost()));
    m_watcher = new QDBusServiceWatcher(watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayItem::offer);
    connect(m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &TrayItem::lose);
    offer();
}

TrayItem::~TrayItem()
{
    QDBusConnection::disconnectFromBus(m_connection);
}

void TrayItem::offer()
{
    auto call = watcherCall(watcherName, QStringLiteral("RegisterStatusNotifierItem"));
    const QDBusConnection bus(m_connection);
    call << bus.baseService();
    call.setAutoStartService(false);
    bus.call(call, QDBus::NoBlock);
    lookForHost();
}

void TrayItem::lookForHost()
{
    auto call = watcherCall(propertiesInterface, QStringLiteral("Get"));
    call << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* asked = new QDBusPendingCallWatcher(QDBusConnection(m_connection).asyncCall(call), this);
    connect(asked, &QDBusPendingCallWatcher::finished, this, [this, asked] {
        const QDBusPendingReply<QDBusVariant> reply = *asked;
        setShown(reply.isValid() && reply.value().variant().toBool());
        asked->deleteLater();
    });
}

void TrayItem::lose()
{
    setShown(false);
}

void TrayItem::setShown(bool shown)
{
    if (std::exchange(m_isShown, shown) != shown)
        Q_EMIT shownChanged();
    Q_EMIT settled();
}

} // namespace palvera
