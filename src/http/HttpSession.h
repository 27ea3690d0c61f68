#pragma once

#include "http/HttpClient.h"

#include <QString>

namespace palvera {

class CookieStore;
class HttpSessionCore;
class NetworkPath;
class RateLimit;

/// What a session is given once and uses for every request.
struct HttpSessionOptions {
    enum class Protocol {
        newest, ///< HTTP/2 where an encrypted server offers it
        http11, ///< one request at a time on a connection: 1.5 to 2 times faster for bulk
    };

    int maxConnectionsPerHost = 6; ///< further requests wait for their turn, which does not count as inactivity
    std::shared_ptr<CookieStore> sharedCookies = {}; ///< null: no cookies are kept or sent
    Protocol protocol = Protocol::newest;
    qint64 uploadSlice = 64 << 10;  ///< most bytes that one write hands to the network
    qint64 receiveSlice = 64 << 10; ///< most bytes that one read takes from it
    int tlsReadAhead = 0;           ///< the same where it is encrypted; 0: a record of 16 KiB takes two reads
    /// Asked of the kernel by name for connections to other machines and to this one; empty, or refused by the kernel:
    /// the kernel's own choice. On loopback, "bbr" costs a fifth more time than "cubic".
    QByteArray congestionControl = {};
    QByteArray loopbackCongestionControl = {};
    std::chrono::milliseconds totalTimeout{0}; ///< for requests that set none; 0 is for ever
    /// By what the time-outs of a transfer are counted; it is asked every second at least, oftener where they are
    /// shorter than four seconds. Empty: the machine's own clock.
    std::function<std::chrono::steady_clock::time_point()> now = {};
    bool verifyPeer = true;
    /// A file of certificate authorities to trust. Empty: what CURL_CA_BUNDLE or SSL_CERT_FILE names, else the
    /// system's.
    QString authorities = {};
    std::shared_ptr<NetworkPath> networkPath = {}; ///< null: the machine's own
    /// For bodies that come from a source and for those that go into a sink. Null: none.
    std::shared_ptr<RateLimit> sendLimit = {};
    std::shared_ptr<RateLimit> receiveLimit = {};

    /// For moving bulk to and from storage, over far and lossy lines too.
    static HttpSessionOptions storage();
};

/// Requests over connections of its own, kept alive between requests, on libcurl. Everything runs on one strand of the
/// executor that it is given, which must outlive the session and every request. For bulk, give it one of
/// NetworkThreads' executors: see there.
///
/// - The address is sent byte for byte; no redirect is followed; answers are decompressed only where the request asks.
/// - Bytes draining from the kernel's send queue count as activity and are reported through `onSent`.
/// - With no usable network path, a request to another machine waits for one up to its idle time-out.
/// - A connection whose own address the machine has lost, or that was without a network for more than a second, is
///   given up as soon as there is one again, and its request fails.
/// - While a rate limit holds a request up, its time-outs stand still.
/// - An answer that comes before the whole body was sent is the answer.
/// - Proxies come from the environment (http_proxy, https_proxy, no_proxy), never for loopback.
/// - A server that dropped a kept-alive connection gets a GET or HEAD again on another one. What changes something is
///   sent once and fails; it is not sent on a connection that nobody used for some seconds, which may be dropped.
class HttpSession final : public HttpClient {
public:
    explicit HttpSession(const Executor& executor, HttpSessionOptions options = {});
    /// Cuts off whatever is in flight; those requests end as cancelled.
    ~HttpSession() override;
    HttpSession(const HttpSession&) = delete;
    HttpSession& operator=(const HttpSession&) = delete;

    /// Takes the cookies as they are at the call, not as of when the request begins.
    Task<HttpResponse> send(HttpRequest request) override;

    /// Where `onSent` and the body's source are called.
    Executor strand() const;

private:
    std::shared_ptr<HttpSessionCore> m_core; // outlives this object while a request is ending
};

} // namespace palvera
