#pragma once

#include "async/Task.h"

#include <QByteArray>
#include <QList>

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <utility>

namespace palvera {

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

/// The value of the first header of that name (case does not matter), or a null array.
QByteArray headerOf(const HttpHeaders& headers, QByteArrayView name);

/// A request body that is produced while it is sent, so that it never has to be in memory before the first byte leaves.
class BodySource {
public:
    virtual ~BodySource() = default;

    /// Bytes in all; the same at every call.
    virtual qint64 size() const = 0;
    /// Copies the body's bytes from `offset` into `into` and returns how many: at least one, and at most `into.size()`.
    /// Called on the session's strand and may block on a disk. What it throws ends the request and reaches the caller
    /// of `send` unchanged.
    virtual std::size_t read(qint64 offset, std::span<char> into) = 0;
};

/// Where the body of an answer goes while it arrives.
class BodySink {
public:
    virtual ~BodySink() = default;

    /// Most bytes that it takes. A longer body fails as too large.
    virtual qint64 room() const = 0;
    /// Takes the bytes that follow those taken before. Called on the session's strand; a disk that it waits for holds
    /// up what else the thread of that strand does. What it throws ends the request and reaches the caller of `send`
    /// unchanged.
    virtual void take(std::span<const char> bytes) = 0;
};

struct HttpResponse;

/// One request. Plain data; `source` and `sink`, where set, must outlive the request.
struct HttpRequest {
    QByteArray method = "GET";
    QByteArray url;                                ///< already encoded; sent byte for byte
    HttpHeaders headers = {};                      ///< beside those that HTTP itself needs
    QByteArray body = {};                          ///< ignored when `source` is set
    BodySource* source = nullptr;                  ///< a body produced on demand
    std::chrono::milliseconds idleTimeout{60'000}; ///< no byte either way for so long; 0 is for ever
    std::chrono::milliseconds totalTimeout{0};     ///< the whole request; 0 is for ever
    /// Most bytes of an answer's body, after decoding. Of a body with a status outside 200 to 299, which is words about
    /// what went wrong, 64 KiB are kept and the rest is not waited for.
    qint64 answerLimit = 64LL << 20;
    bool asksForCompression = false; ///< in the encodings that libcurl knows; the answer's body is decoded
    /// Called on the session's strand with the body bytes handed to the network so far, and how many of them the other
    /// machine has acknowledged, whenever the first count grows or bytes already handed over have drained.
    std::function<void(qint64 sent, qint64 acknowledged)> onSent = {};
    /// Called on the session's strand, again and again, while a rate limit of the session holds the body up.
    std::function<void()> onHeld = {};
    BodySink* sink = nullptr; ///< for the body of a 2xx answer, instead of `HttpResponse::body`
    /// Asked on the session's strand before the first byte of a body is taken, with status and headers. False ends the
    /// request at once with these; the connection is given up, since the rest of the body is still on it.
    std::function<bool(const HttpResponse& head)> wantsBody = {};
};

/// An answer. Any status is an answer.
struct HttpResponse {
    int status = 0;
    HttpHeaders headers = {};
    QByteArray body = {};
    qint64 length = 0; ///< bytes of the body that arrived, in `body` or in the request's sink

    bool isSuccess() const { return status >= 200 && status <= 299; }
    QByteArray header(QByteArrayView name) const { return headerOf(headers, name); }
};

/// Sends requests. The engines see HTTP only through this, so tests put a network in memory behind it.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Sends `request` and waits for the whole answer. Throws TransportError, or what `source` threw. From any
    /// executor; resumes the caller on its own. Cancelling cuts the request off at once and leaves nothing in flight.
    virtual Task<HttpResponse> send(HttpRequest request) = 0;
};

/// Makes a client with connections of its own, for one lane.
using HttpClientFactory = std::function<std::unique_ptr<HttpClient>()>;

} // namespace palvera
