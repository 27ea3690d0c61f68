#pragma once

#include "transfers/Item.h"

#include <QHash>
#include <QObject>

namespace palvera {

class Transfers;

/// What becomes of transfers, for users who do not see them move: quarters, standstills and ends. Of more than three in
/// flight no quarters: there would be no end of them.
///
/// Lives on the main thread.
class Announcements : public QObject {
    Q_OBJECT

public:
    /// `transfers` outlives it.
    explicit Announcements(const Transfers& transfers, QObject* parent = nullptr);

    /// What has been said of one.
    struct Heard {
        int quarters = 0;
        bool isStill = false;
        bool isOver = false;

        bool operator==(const Heard&) const = default;
    };
    /// What an item that has come to be as it is has to have been said of it.
    static Heard due(const Item& item);
    /// What is to be said of `item` after `heard`; empty when nothing is.
    static QString textFor(const Item& item, const Heard& heard, bool withQuarters);

Q_SIGNALS:
    void announced(const QString& text);

private:
    void look(const QUuid& id);

    const Transfers& m_transfers;
    QHash<QUuid, Heard> m_heard;
};

} // namespace palvera
