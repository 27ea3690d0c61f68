#pragma once

#include "async/Event.h"

#include <QHash>
#include <QSet>
#include <QUuid>

#include <functional>
#include <memory>

namespace palvera {

/// Which transfers of one kind may run: so many at once, the first ones in the user's order, and beyond that those that
/// are started by hand. Main thread.
class TransferQueue {
public:
    /// `placeOf` gives a transfer's place in the user's order.
    TransferQueue(Executor main, int most, std::function<std::ptrdiff_t(const QUuid&)> placeOf);

    /// Who has a slot keeps it, where there are fewer from here on.
    void setMost(int most);
    /// Asks for a slot, unless it has or awaits one. Whether it has one now.
    bool enter(const QUuid& id);
    /// Ends once it has a slot. Throws a cancellation when it is not in the queue, or leaves it.
    Task<void> untilGranted(QUuid id);
    /// Gives a slot to who awaits one, or asks for one, whatever the others do, then and each time that it asks again.
    void startNow(const QUuid& id);
    /// Gives its slot to the next, or awaits none any more.
    void leave(const QUuid& id);
    /// Leaves for good.
    void forget(const QUuid& id);

private:
    struct Entry {
        explicit Entry(const Executor& main) : changed(main) {}
        Event changed;
        bool hasSlot = false;
        bool hasLeft = false;
    };

    void fill();
    int taken() const;

    const Executor m_main;
    int m_most;
    const std::function<std::ptrdiff_t(const QUuid&)> m_placeOf;
    QHash<QUuid, std::shared_ptr<Entry>> m_entries;
    QSet<QUuid> m_urgent; // started by hand
};

} // namespace palvera
