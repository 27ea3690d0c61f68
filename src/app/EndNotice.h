#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

#include <functional>
#include <optional>

namespace palvera {

class Notices;
class Transfers;

/// Tells the user that the last transfer has ended, if they look elsewhere. Main thread.
class EndNotice : public QObject {
public:
    /// `isWatched` says whether a window of the program is active. All outlive this.
    EndNotice(Transfers& transfers, Notices& notices, std::function<bool()> isWatched);

    struct Ends {
        int done = 0;
        int failed = 0;
    };
    struct Text {
        QString title;
        QString text;

        bool operator==(const Text&) const = default;
    };
    /// What to say of transfers that ended so, of which the last is called `name`; nothing where the user stopped all.
    static std::optional<Text> textFor(const Ends& ends, const QString& name);

private:
    void look();

    Transfers& m_transfers;
    Notices& m_notices;
    const std::function<bool()> m_isWatched;
    QList<QUuid> m_moved; // since there was nothing in flight
};

} // namespace palvera
