#pragma once

#include "http/CurlHandles.h"
#include "http/CurlMulti.h"
#include "http/HttpAddress.h"
#include "http/RateLimit.h"
#include "http/RequestWatch.h"

#include <exception>
#include <optional>

namespace palvera {

class NetworkPath;

/// One request as libcurl carries it out: the easy handle with its options, the callbacks that feed the body and
/// collect the answer, and what has moved so far. Session's strand only.
class CurlTransfer final : public CurlMulti::Client {
public:
    /// Starts the transfer; nothing of it happens within the call. `handles` and `multi` must outlive it.
    CurlTransfer(HttpRequest request, const HttpAddress& address, std::shared_ptr<CookieJar> jar, CurlHandles& handles,
                 CurlMulti& multi);
    /// Cuts the transfer off unless it has ended.
    ~CurlTransfer() override;
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// Waits until libcurl has ended the transfer. Throws TransportError once it is out of time, or a cancellation.
    Task<void> untilEnded();
    /// The answer, once ended. Throws what the body's source threw, or TransportError.
    HttpResponse takeAnswer();
    /// Ends the wait as cancelled.
    void abandon();
    /// An interface or an address has come or gone: ends the wait with a lost connection where the connection's own
    /// address is gone, or a network is back after an outage that the connection would take long to get over.
    void networkChanged(const NetworkPath& path);

private:
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };
    struct GiveBack {
        void operator()(CURL* easy) const { handles->giveBack(easy); }
        CurlHandles* handles;
    };

    void ended(CURLcode result) noexcept override;
    void started() noexcept override;
    void leaves(curl_socket_t socket) noexcept override;
    void unwatchable() noexcept override;
    qint64 received() const noexcept override { return m_handedOver; }

    void setAddress(const HttpAddress& address);
    void setHeaders();
    void addHeader(const QByteArray& line);
    void setMethod();
    void setBody();
    void setCallbacks();
    void setRepetition();
    void set(CURLoption option, auto value) { setOption(m_easy.get(), option, value); }

    static std::size_t readBody(char* into, std::size_t size, std::size_t count, void* self);
    static std::size_t takeHeader(char* line, std::size_t size, std::size_t count, void* self);
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* self);
    static int beforeSending(void* self, char*, char*, int, int);
    static int takeProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);

    bool isBodyWanted();
    bool keep(std::span<const char> bytes);
    bool keepInAnswer(std::span<const char> bytes);
    RequestWatch::Moment now() const;
    bool hasEnded() const { return m_result || m_failure; }
    void look();
    void hold();
    void noteHeld();
    void noteDraining();
    bool countAcknowledged();
    void reportSent();
    bool isRefusedHalfWay() const;
    int status() const;
    qint64 bodySize() const;

    HttpRequest m_request;
    const bool m_encrypted;
    const std::chrono::milliseconds m_totalLimit;
    const CurlHandles& m_handles;
    CurlMulti& m_multi;
    StrandTimer m_wake;
    RequestWatch m_watch;
    RateLimit::Turn m_toSend;
    RateLimit::Turn m_toReceive;
    std::optional<RequestWatch::Moment> m_heldSince;    // by one of these; until the last look
    std::unique_ptr<curl_slist, ListDeleter> m_headers; // libcurl reads them through the handle
    std::unique_ptr<CURL, GiveBack> m_easy;

    HttpResponse m_answer;
    QByteArray m_unread; // what stood in the receive queue when the connection broke in the middle of the body
    qint64 m_offset = 0; // of the body, where libcurl reads next
    qint64 m_sent = 0;
    qint64 m_acknowledged = 0; // of these, as last counted
    qint64 m_received = 0;
    qint64 m_handedOver = 0; // of the answer by libcurl, headers too
    int m_queuedInKernel = 0;
    std::optional<RequestWatch::Moment> m_withoutNetwork; // since then
    bool m_started = false;
    bool m_wasSent = false; // once, or begun to be
    bool m_abandoned = false;
    bool m_tooLarge = false;
    bool m_unwanted = false;      // the body: the request ends with the headers
    std::exception_ptr m_failure; // thrown inside a callback, which libcurl's frames must not see
    std::optional<CURLcode> m_result;
};

} // namespace palvera
