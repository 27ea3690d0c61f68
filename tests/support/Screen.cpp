#include "tests/support/Screen.h"

#include "tests/support/Watchdog.h"

#include <gtest/gtest.h>

#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPointer>
#include <QQmlComponent>
#include <QSignalSpy>
#include <QTest>

#include <mutex>

namespace palvera {
namespace {

// Qt's message handler is one for the process, and may be called on any thread.
std::mutex warningsLock;
QStringList warnings;
QtMessageHandler earlierHandler = nullptr;

void noteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        std::lock_guard lock(warningsLock);
        warnings.append(text);
    }
    earlierHandler(type, context, text);
}

bool isShown(QQuickItem* item)
{
    if (!item->isVisible() || item->width() <= 0 || item->height() <= 0)
        return false;
    for (auto* each = item; each; each = each->parentItem())
        if (each->opacity() == 0)
            return false;
    return true;
}

void collect(QAccessibleInterface* interface, QList<QQuickItem*>& into)
{
    if (!interface)
        return;
    if (auto* item = qobject_cast<QQuickItem*>(interface->object()); item && isShown(item) && !into.contains(item))
        into.append(item);
    for (int i = 0; i < interface->childCount(); ++i)
        collect(interface->child(i), into);
}

/// Sees the keys that get as far as the window.
struct KeyWatch : QObject {
    explicit KeyWatch(QQuickWindow* window) { window->installEventFilter(this); }
    bool eventFilter(QObject* /*window*/, QEvent* event) override
    {
        isReleased |= event->type() == QEvent::KeyRelease;
        return false;
    }
    bool isReleased = false;
};

/// Sends the events of that kind that a program from elsewhere would; what would become of the files.
template <class Event>
Qt::DropAction bring(QQuickWindow* window, QQuickItem* over, const QList<QUrl>& files, Qt::DropAction proposed)
{
    QMimeData data;
    data.setUrls(files);
    const auto place = over->mapToScene(QPointF(over->width() / 2, over->height() / 4)).toPoint();
    // Whoever may move proposes it when Shift is held.
    const auto shift = proposed == Qt::MoveAction ? Qt::ShiftModifier : Qt::NoModifier;
    Event event(place, Qt::CopyAction | proposed, &data, Qt::LeftButton, shift);
    QCoreApplication::sendEvent(window, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

} // namespace

Screen::Screen()
{
    QAccessible::setActive(true);
    m_engine.addImportPath("qrc:/qt/qml");
    takeWarnings();
    if (auto* watched = dynamic_cast<WatchedApplication*>(qApp))
        watched->takeLongest();
    earlierHandler = qInstallMessageHandler(noteMessage);
}

Screen::~Screen()
{
    m_ownWindow.reset();
    qInstallMessageHandler(earlierHandler);
    EXPECT_EQ(takeWarnings().join("\n").toStdString(), "");
    if (auto* watched = dynamic_cast<WatchedApplication*>(qApp)) {
        auto longest = watched->takeLongest();
        EXPECT_LE(longest.time, WatchedApplication::limit)
            << "The main thread was kept busy by " << longest.what.toStdString();
    }
}

QStringList Screen::takeWarnings()
{
    std::lock_guard lock(warningsLock);
    return std::exchange(warnings, {});
}

void Screen::showContent(const QString& qml, const QString& imports)
{
    QQmlComponent component(&m_engine);
    component.setData(("import QtQuick\nimport Palvera.Controls\n" + imports +
                       "\nWindow {\ncolor: Theme.window; width: 640; height: 480\n" + qml + "\n}")
                          .toUtf8(),
                      QUrl("test.qml"));
    auto* made = component.create();
    ASSERT_TRUE(made) << component.errorString().toStdString();
    m_ownWindow.reset(qobject_cast<QQuickWindow*>(made));
    use(m_ownWindow.get());
}

void Screen::use(QQuickWindow* window)
{
    m_window = window;
    m_window->show();
    m_window->requestActivate();
    waitUntil([&] { return m_window->isExposed() && m_window->isActive(); });
}

bool Screen::waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds limit)
{
    if (testing::Test::HasFailure())
        limit = std::min(limit, std::chrono::milliseconds(500)); // what follows from a failure is waited for no longer
    QElapsedTimer timer;
    timer.start();
    while (!holds()) {
        if (timer.hasExpired(limit.count())) {
            ADD_FAILURE() << "Waited in vain. The keyboard is at " << nameOf(focused()).toStdString()
                          << ". Shown: " << texts().join(" | ").toStdString();
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
    }
    return true;
}

void Screen::waitForText(const QString& text)
{
    EXPECT_TRUE(waitUntil([&] { return reads(text); })) << "no " << text.toStdString();
}

void Screen::waitForFocus(const QString& name)
{
    EXPECT_TRUE(waitUntil([&] { return words(name).contains(nameOf(focused())); })) << "not at " << name.toStdString();
}

void Screen::waitForFrame()
{
    const QSignalSpy frames(m_window, &QQuickWindow::frameSwapped);
    m_window->update();
    waitUntil([&] { return !frames.isEmpty(); });
}

void Screen::settle()
{
    QTest::qWait(0);
}

QList<QQuickItem*> Screen::all(std::optional<Role> role, const QString& name) const
{
    QList<QQuickItem*> items;
    collect(QAccessible::queryAccessibleInterface(m_window), items);
    const auto shown = words(name);
    items.removeIf([&](QQuickItem* item) {
        return (role && roleOf(item) != *role) || (!name.isNull() && !shown.contains(nameOf(item)));
    });
    return items;
}

QStringList Screen::names(std::optional<Role> role) const
{
    QStringList names;
    for (auto* item : all(role))
        names.append(nameOf(item));
    return names;
}

QQuickItem* Screen::find(Role role, const QString& name)
{
    QList<QQuickItem*> items;
    EXPECT_TRUE(waitUntil([&] { return !(items = all(role, name)).isEmpty(); })) << "no " << name.toStdString();
    return items.value(0);
}

QStringList Screen::texts() const
{
    auto texts = names({});
    texts.removeAll(QString());
    return texts;
}

bool Screen::reads(const QString& text) const
{
    auto shown = texts();
    return std::ranges::any_of(words(text), [&](const QString& part) {
        return std::ranges::any_of(shown, [&](const QString& each) { return each.contains(part); });
    });
}

QString Screen::nameOf(QObject* object)
{
    auto* interface = QAccessible::queryAccessibleInterface(object);
    if (!interface)
        return {};
    auto name = interface->text(QAccessible::Name);
    return name.isEmpty() ? interface->text(QAccessible::Description) : name; // Qt names no field for secrets
}

QAccessible::Role Screen::roleOf(QObject* object)
{
    auto* interface = QAccessible::queryAccessibleInterface(object);
    return interface ? interface->role() : QAccessible::NoRole;
}

void Screen::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    waitForFrame(); // as nobody is faster: what has come or gone has given the keyboard on by then
    const QPointer window(m_window);
    const KeyWatch keys(window);
    QTest::keyClick(m_window, key, modifiers);
    waitUntil([&] { return keys.isReleased || !window; }); // assistants on the bus are asked before
    settle();
}

void Screen::type(const QString& text)
{
    for (auto letter : text)
        QTest::sendKeyEvent(QTest::Click, m_window, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    settle();
}

QString Screen::place()
{
    waitUntil([this] {
        waitForFrame();
        auto* item = focused();
        return item && item->isVisible() && item->isEnabled() && !nameOf(item).isEmpty() &&
               roleOf(item) != QAccessible::List; // but for a row of it
    });
    return nameOf(focused());
}

qsizetype Screen::walk()
{
    const auto first = place();
    const auto stop = [this] { // a list is one, at whichever of its rows
        auto* item = focused();
        return roleOf(item) == QAccessible::ListItem ? item->parentItem() : item;
    };
    QList<QPointer<QQuickItem>> stops;
    for (; !stops.contains(stop()) && !testing::Test::HasFailure(); place()) {
        stops.append(stop());
        press(Qt::Key_Tab);
        stops.removeIf(
            [](const auto& each) { return !each || !each->isVisible(); }); // what Tab leads out of, and closes
    }
    EXPECT_EQ(stop(), stops.value(0)) << "from " << first.toStdString() << " round to " << place().toStdString();
    return stops.size();
}

QQuickItem* Screen::tabTo(Role role, const QString& name)
{
    constexpr int longestRound = 100;
    for (int i = 0; i < longestRound; ++i) {
        if (auto* item = focused(); item && roleOf(item) == role && words(name).contains(nameOf(item)))
            return item;
        press(Qt::Key_Tab);
    }
    ADD_FAILURE() << "Tab does not lead to " << name.toStdString() << ". Shown: " << texts().join(" | ").toStdString();
    return nullptr;
}

void Screen::choose(Role role, const QString& name, Qt::Key key)
{
    find(role, name);
    if (tabTo(role, name))
        press(key);
}

void Screen::click(QQuickItem* item)
{
    if (!item)
        return; // whoever looked for it has said so
    const auto role = roleOf(item);
    const auto name = nameOf(item);
    QPointer<QQuickItem> target(item);
    QPointF place, earlier;
    bool rests = waitUntil([&] {
        waitForFrame(); // in which a list may have put another row in its place
        if (!target)
            target = all(role, name).value(0);
        if (!target)
            return false;
        earlier = std::exchange(place, target->mapToScene(QPointF(target->width() / 2, target->height() / 2)));
        return place == earlier;
    });
    if (!rests)
        return;
    QTest::mouseMove(m_window, place.toPoint());
    QTest::mouseClick(m_window, Qt::LeftButton, Qt::NoModifier, place.toPoint());
    settle();
}

void Screen::activate(QQuickItem* item)
{
    auto* actions = QAccessible::queryAccessibleInterface(item)->actionInterface();
    ASSERT_TRUE(actions);
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
}

Qt::DropAction Screen::drag(QQuickItem* over, const QList<QUrl>& files, Qt::DropAction proposed)
{
    bring<QDragEnterEvent>(m_window, over, files, proposed);
    const auto action = bring<QDragMoveEvent>(m_window, over, files, proposed);
    settle();
    return action;
}

Qt::DropAction Screen::drop(QQuickItem* over, const QList<QUrl>& files, Qt::DropAction proposed)
{
    drag(over, files, proposed);
    const auto action = bring<QDropEvent>(m_window, over, files, proposed);
    settle();
    return action;
}

} // namespace palvera
