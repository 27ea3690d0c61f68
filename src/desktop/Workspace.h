#pragma once

#include "async/Task.h"
#include "desktop/SleepInhibitor.h"

#include <QObject>
#include <QString>

namespace palvera {

class Succession;

/// What the desktop tells of the user, and what it does with the program as a whole. Main thread.
class Workspace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Starts the program anew, from the build that is current by then; ends when the new process is there and waits
    /// for this one to go. Throws Failure.
    virtual Task<void> openApplication() = 0;
    /// Ends the program, whatever its windows would say to that.
    virtual void terminate() = 0;

Q_SIGNALS:
    /// The user has come to the program from another.
    void becameActive();
    /// A window of the program has the keyboard.
    void windowBecameKey();
    /// The machine was asleep.
    void woke();
};

/// The real one, within a QGuiApplication.
class DesktopWorkspace final : public Workspace {
    Q_OBJECT

public:
    /// `launcher` starts the program. `succession` outlives it.
    DesktopWorkspace(Succession& succession, QString launcher, QObject* parent = nullptr);

    Task<void> openApplication() override;
    void terminate() override;

private:
    Succession& m_succession;
    const QString m_launcher;
    const WakeWatch m_wake;
};

} // namespace palvera
