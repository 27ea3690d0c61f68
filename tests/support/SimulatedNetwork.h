#pragma once

#include "localplatform/Platform.h"

#include "async/Clock.h"
#include "http/HttpClient.h"

namespace palvera {

/// How the simulated network is. Applies to what happens from the moment it is changed.
struct NetworkConditions {
    std::chrono::nanoseconds latency{1'000'000};       ///< from a request's last byte to its answer
    double bytesPerSecond = 0;                         ///< of each connection, on the way up; 0 takes no time
    bool listening = true;                             ///< false: every connection is refused
    std::function<void(HttpResponse&)> atStorage = {}; ///< changes what storage answers, or throws what fails instead
};

/// One request that a client made.
struct SeenRequest {
    QByteArray method;
    QByteArray target;
    local::Operation operation = local::Operation::unknown;
    std::optional<int> part; ///< of a PUT, from 1
    QByteArray body;         ///< of a service call
    Clock::Moment at;        ///< when it was made
    Clock::Moment ended;     ///< when it ended, answered or not
    bool inFlight = true;
};

/// HTTP clients of a local platform without sockets, for service calls and uploads: time passes on `clock` alone, so
/// that a run in virtual time is the same every time. Keeps cookies of the service, as a browser's session would. One
/// thread, the clock's; outlives its clients.
class SimulatedNetwork {
public:
    SimulatedNetwork(local::Platform& platform, Clock& clock, NetworkConditions conditions = {})
        : conditions(conditions), m_platform(platform), m_clock(clock)
    {}

    NetworkConditions conditions;

    std::unique_ptr<HttpClient> client();

    /// Signs a sample account in without a request.
    void signIn(const QString& email = QStringLiteral("ada@northlight.example"));

    /// Every request so far, in the order in which they were made.
    const std::vector<SeenRequest>& seen() const { return m_seen; }
    std::vector<SeenRequest> seen(local::Operation operation) const;

private:
    class Exchange;

    void keepCookies(const HttpHeaders& headers);

    local::Platform& m_platform;
    Clock& m_clock;
    std::vector<SeenRequest> m_seen;
    std::map<QByteArray, QByteArray> m_cookies;
};

} // namespace palvera
