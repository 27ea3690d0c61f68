#pragma once

#include "installer/Worker.h"

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <deque>
#include <functional>

namespace palvera::installer {

/// One task and whoever waits for it.
struct Job {
    Task task;
    QDBusUnixFileDescriptor image; // none but to prepare
    /// Called once, on the main thread: empty when it went well, else what the user reads.
    std::function<void(const QString& error)> done;
};

/// Does one job after another, each in a process of its own: one that hangs in a read can be ended, a decompressor that
/// crashes is a text for the user, and limits hold for it alone. Main thread.
class Jobs : public QObject {
public:
    explicit Jobs(const Settings& settings);
    /// Ends the worker. Who waits is told nothing.
    ~Jobs() override;

    void add(Job job);

private:
    void startNext();
    void start(QProcess& worker);
    void finish(const QString& error);
    void endTrial() const;
    QString errorOf(int status, QProcess::ExitStatus exit) const;

    const QStringList m_forWorker;
    std::deque<Job> m_waiting;    // the first is under way when there is a worker
    QProcess* m_worker = nullptr; // a child of this; one that has ended is deleted later
    QByteArray m_output;
    QTimer m_limit;
    bool m_isLate = false;
};

} // namespace palvera::installer
