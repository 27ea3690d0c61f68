#pragma once

#include "async/CancelFlag.h"
#include "async/Clock.h"
#include "async/TaskGroup.h"
#include "http/HttpClient.h"
#include "transfer/Board.h"
#include "transfer/PartBody.h"
#include "transfer/SendWatcher.h"
#include "transfer/URLPool.h"

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace palvera {

/// A random factor for back-off waits, drawn evenly from 0.8 to 1.2. Any thread.
using Spread = std::function<double()>;

/// Sends parts of one upload to storage, each with its own retries. One lane owns it and its session; its operations
/// run on the lane's executor.
class PartSender {
public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        HttpClient& session;
        URLPool& pool;
        Board& board; ///< says when an attempt may begin, and hears why one failed
        Clock& clock;
        Spread spread;
        std::shared_ptr<CancelFlag> flag;
    };

    explicit PartSender(Environment environment) : m_environment(std::move(environment)) {}

    /// Sends `body` as `part` (from 1) and returns the entity tag that storage gave it, without quotes.
    ///
    /// Makes eight attempts, each at a freshly signed address and after a longer wait. Throws APIError with what the
    /// last one failed with; a file that cannot be read and an upload that the platform forgot fail at once with their
    /// own failures. A stop or a cancellation cuts off what is in flight.
    Task<QString> send(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher);

private:
    struct Missed {
        std::optional<QString> failure; ///< nothing where the last one stays as it was
        QString reason;                 ///< the same as a sentence on what is the matter just now
        bool hasBroken = false;         ///< the connection has, before the part was confirmed
    };
    /// The part's entity tag, or what went wrong.
    using Attempt = std::expected<QString, Missed>;

    Task<Attempt> attempt(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher);
    Task<Outcome<HttpResponse>> put(QByteArray address, PartBody& body, std::shared_ptr<SendWatcher> watcher);
    static Attempt judge(const HttpResponse& answer);
    static Attempt missed(const QString& failure);
    Task<void> untilMayBegin();
    void endIfStopped() const;

    const Environment m_environment;
};

} // namespace palvera
