#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace palvera {

class TrayObject;

/// A symbol in the desktop's tray, with a menu of two lines: StatusNotifierItem 1 and com.canonical.dbusmenu 3, over
/// the session bus. Where nobody shows such symbols, there is none. Main thread; never blocks.
class TrayItem : public QObject {
    Q_OBJECT

public:
    struct Texts {
        QString icon; ///< by its name in the desktop's theme
        QString title;
        QString show;
        QString quit;
    };
    struct Actions {
        std::function<void()> show;
        std::function<void()> quit;
    };

    /// The actions are called from the event loop. `busAddress` is the session bus unless given.
    TrayItem(const Texts& texts, Actions actions, const QString& busAddress = {}, QObject* parent = nullptr);
    ~TrayItem() override;

    /// Whether a tray of the desktop shows it just now.
    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void shownChanged();
    /// Whether it is shown has been found out once.
    void settled();

private Q_SLOTS:
    void offer();
    void lookForHost();
    void lose();

private:
    void setShown(bool shown);

    const QString m_connection;
    std::unique_ptr<TrayObject> m_object;
    QDBusServiceWatcher* m_watcher = nullptr;
    bool m_isShown = false;
};

} // namespace palvera
