#pragma once

#include "async/TaskScope.h"
#include "session/BrowserSignIn.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// A sign-in that goes on in the user's browser, as the sign-in screen shows it. Main thread.
class BrowserView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(BrowserModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(bool waiting READ isWaiting NOTIFY changed)
    Q_PROPERTY(bool userBack READ isUserBack NOTIFY changed)

public:
    /// All of it outlives it.
    BrowserView(BrowserSignIn& signIn, Clock& clock, TaskScope& tasks, QObject* parent = nullptr);

    /// The browser is waited for, and everything else waits with it.
    bool isWaiting() const { return m_signIn.isWaiting(); }
    /// The user has come back from there, but the browser has not.
    bool isUserBack() const { return m_isUserBack; }
    /// Whether it was waited for since `begin`.
    bool wasUsed() const { return m_wasUsed; }

    void begin() { m_wasUsed = false; }
    /// The user has come back to the program.
    void becomeActive();
    /// Shows the page once more.
    Q_INVOKABLE void openAgain();
    /// Puts the address of the page on the clipboard.
    Q_INVOKABLE void copyAddress() const;
    /// Gives up without a word.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void changed();

private:
    void follow();
    Task<void> wonder(int trip);

    BrowserSignIn& m_signIn;
    Clock& m_clock;
    TaskScope& m_tasks;
    bool m_wasUsed = false;
    bool m_isUserBack = false;
    int m_trips = 0; // there and back
};

} // namespace palvera
