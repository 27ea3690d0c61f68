#pragma once

#include "async/CancelFlag.h"
#include "async/Event.h"

#include <QHash>
#include <QUuid>

#include <memory>
#include <optional>

namespace palvera {

/// What is kept of a transfer while its task runs: the switches by which it is steered. Main thread; the flags, any.
class LiveTransfer {
public:
    LiveTransfer(Executor main, std::optional<QString> journalKey, qint64 number);

    const std::optional<QString>& journalKey() const { return m_journalKey; }
    /// In the order in which they began.
    qint64 number() const { return m_number; }

    /// Ends it for good.
    void stop();
    bool isStopped() const { return m_flag->isStopped(); }
    const std::shared_ptr<CancelFlag>& flag() const { return m_flag; }

    /// Ends the attempt under way and keeps the next one from beginning, until `goOn`. Of a download, what is in flight
    /// of a chunk goes with it: whoever pauses wants the line now.
    void pause();
    void goOn();
    bool isPaused() const { return m_isPaused && !isStopped(); }
    /// Ends while it is not paused.
    Task<void> whilePaused();

    /// Stopped with the attempt that begins next, or is under way: when that is paused, and with `flag`. Another one
    /// after each pause.
    const std::shared_ptr<CancelFlag>& run() const { return m_run; }
    /// Ends what goes on after `run` is stopped: the chunks in flight, and telling the platform.
    const std::shared_ptr<CancelFlag>& cutFlag() const { return m_cut; }
    void cut() { m_cut->stop(); }

    /// Stops it such that it can be gone on with.
    void suspend();
    bool isSuspended() const { return m_isSuspended; }

    /// Ends after `delay`, or at once when it is stopped, paused, or told to `hurry`.
    Task<void> sleep(Task<void> delay);
    void hurry();

private:
    const Executor m_main;
    const std::optional<QString> m_journalKey;
    const qint64 m_number;
    const std::shared_ptr<CancelFlag> m_flag = std::make_shared<CancelFlag>();
    std::shared_ptr<CancelFlag> m_run = std::make_shared<CancelFlag>();
    std::shared_ptr<CancelFlag> m_cut = std::make_shared<CancelFlag>();
    std::shared_ptr<Event> m_wait; // of whoever sleeps
    std::shared_ptr<Event> m_changed;
    bool m_isPaused = false;
    bool m_isSuspended = false;
};

/// The transfers whose tasks run. Main thread.
class LiveTransfers {
public:
    explicit LiveTransfers(Executor main) : m_main(std::move(main)) {}

    std::shared_ptr<LiveTransfer> add(const QUuid& id, std::optional<QString> journalKey);
    /// Null when no task runs for that item.
    std::shared_ptr<LiveTransfer> find(const QUuid& id) const { return m_all.value(id); }
    void remove(const QUuid& id) { m_all.remove(id); }

    /// Whether an upload with that key is stopped and still being given up, or its item, says `isInFlight`, in flight.
    bool isBusy(const QString& journalKey, const std::function<bool(const QUuid&)>& isInFlight) const;
    /// Whether an upload with that key that began before `id` has been stopped and is still being given up.
    bool isBeingGivenUp(const QString& journalKey, const QUuid& id) const;
    /// Whether the item was stopped and its task is not over yet.
    bool isBeingStopped(const QUuid& id) const;

    /// Suspends all, and cuts the downloads, those that were stopped before included.
    void suspendAll();
    void cutAll();

private:
    const Executor m_main;
    QHash<QUuid, std::shared_ptr<LiveTransfer>> m_all;
    qint64 m_begun = 0; // so far
};

} // namespace palvera
