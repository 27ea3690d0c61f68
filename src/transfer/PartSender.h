#pragma once

#include "async/CancelFlag.h"
#include "async/Clock.h"
#include "async/TaskGroup.h"
#include "http/HttpClient.h"
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
    PartSender(HttpClient& session, URLPool& pool, Clock& clock, Spread spread, std::shared_ptr<CancelFlag> flag);

    /// Sends `body` as `part` (from 1) and returns the entity tag that storage gave it, without quotes.
    ///
    /// Makes eight attempts, each at a freshly signed address and after a longer wait. Throws APIError with what the
    /// last one failed with; a file that cannot be read fails at once with its own failure. A stop or a cancellation
    /// cuts off what is in flight.
    Task<QString> send(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher);

private:
    /// The part's entity tag, or what went wrong; nothing where that leaves the last failure as it was.
    using Attempt = std::expected<QString, std::optional<QString>>;

    Task<Attempt> attempt(int part, PartBody& body, std::shared_ptr<SendWatcher> watcher);
    Task<Outcome<HttpResponse>> put(QByteArray address, PartBody& body, std::shared_ptr<SendWatcher> watcher);
    static Attempt judge(const HttpResponse& answer);
    void endIfStopped() const;

    HttpClient& m_session;
    URLPool& m_pool;
    Clock& m_clock;
    const Spread m_spread;
    const std::shared_ptr<CancelFlag> m_flag;
};

} // namespace palvera
