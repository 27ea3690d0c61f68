#pragma once

#include <QAccessible>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace palvera {

/// A window without a display, used as a person uses one who sees the names of things and has a keyboard and a mouse.
///
/// Every warning of QML, and whatever else Qt warns of, is a failure of the test that met it; so is an event that keeps
/// the main thread busy for longer than WatchedApplication allows.
class Screen {
public:
    using Role = QAccessible::Role;

    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Shows a window whose content is `qml`, with the controls and `imports` imported, and waits until it has the
    /// keyboard.
    void showContent(const QString& qml, const QString& imports = {});
    /// Takes up a window that something else has made.
    void use(QQuickWindow* window);
    /// Lets go of the window, which is about to be destroyed.
    void leave() { m_window = nullptr; }
    QQuickWindow& window() { return *m_window; }

    /// Turns the event loop until `holds`; a test failure after `limit`. Waits for nothing longer than it must.
    bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds limit = std::chrono::seconds(20));
    void waitForText(const QString& text);
    void waitForFocus(const QString& name);
    /// Waits until everything has been laid out and drawn once more.
    void waitForFrame();
    /// Turns the event loop until nothing is left to do at once.
    void settle();

    /// The visible items of that role, or of all, whose accessible name is `name` or anything if it is null, from the
    /// top.
    QList<QQuickItem*> all(std::optional<Role> role, const QString& name = {}) const;
    QStringList names(std::optional<Role> role) const;
    /// The first of these, for which it waits; a test failure, and null, when there is none in time.
    QQuickItem* find(Role role, const QString& name);
    bool shows(Role role, const QString& name) const { return !all(role, name).isEmpty(); }
    /// Whether some visible text contains `text`.
    bool reads(const QString& text) const;
    /// All visible texts, for a failing test to print.
    QStringList texts() const;
    static QString nameOf(QObject* object);
    static Role roleOf(QObject* object);

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Into what has the keyboard.
    void type(const QString& text);
    /// Tabs until the item of that role and name has the keyboard; a test failure if none has after a whole round.
    QQuickItem* tabTo(Role role, const QString& name);
    /// Tabs to it and presses `key`.
    void choose(Role role, const QString& name, Qt::Key key = Qt::Key_Return);
    QQuickItem* focused() const { return m_window->activeFocusItem(); }
    /// The name of what has the keyboard, once that is something that one sees and that has one.
    QString place();
    /// Tabs all the way round to where the keyboard is, which must have a place at every step. How many there are.
    qsizetype walk();
    /// With the mouse, once the item has come to rest; or another of its role and name, if it goes away before that.
    void click(QQuickItem* item);
    void click(Role role, const QString& name) { click(find(role, name)); }
    /// As an assistive program does.
    static void activate(QQuickItem* item);
    /// Brings files from elsewhere over the item, of which the other program offers copies, or proposes that they move.
    /// What would become of them.
    Qt::DropAction drag(QQuickItem* over, const QList<QUrl>& files, Qt::DropAction proposed = Qt::CopyAction);
    /// Lets them go there. Ignored when nothing took them.
    Qt::DropAction drop(QQuickItem* over, const QList<QUrl>& files, Qt::DropAction proposed = Qt::CopyAction);

    QStringList takeWarnings();

    /// What may be shown in the place of a text that is looked for, where the program speaks another language.
    std::function<QStringList(const QString&)> words = [](const QString& text) { return QStringList(text); };

private:
    QQmlApplicationEngine m_engine;
    std::unique_ptr<QQuickWindow> m_ownWindow;
    QQuickWindow* m_window = nullptr;
};

} // namespace palvera
