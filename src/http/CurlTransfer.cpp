#include "http/CurlTransfer.h"

#include "async/Failure.h"
#include "http/CurlFailure.h"
#include "http/CurlTls.h"
#include "http/EarlyAnswer.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"

#include <QObject>

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <sys/socket.h>

#include <cassert>
#include <cstring>

namespace palvera {

using namespace std::chrono_literals;

namespace asio = boost::asio;
using Kind = TransportError::Kind;

namespace {

constexpr qsizetype longestRefusal = 64 << 10;
constexpr qsizetype longestUnread = 16 << 10;
/// What a connection gets over by itself in no time: after a longer one TCP waits for as long again.
constexpr std::chrono::seconds shortOutage{1};
/// As often as progress is shown. libcurl tells of bytes that leave only, and a full queue first drains by a third.
constexpr std::chrono::milliseconds countEvery{200};
constexpr qint64 mostSlice = 10 << 20; // that libcurl takes
/// A limit that is changed or taken away is seen to within so long.
constexpr std::chrono::milliseconds longestHold{200};

std::chrono::milliseconds totalLimit(const HttpRequest& request, const HttpSessionOptions& options)
{
    return request.totalTimeout.count() > 0 ? request.totalTimeout : options.totalTimeout;
}

/// Whether it does no harm when the server gets it twice.
bool isRepeatable(const HttpRequest& request)
{
    return request.method == "GET" || request.method == "HEAD";
}

bool hasBody(const HttpRequest& request)
{
    return request.source || !request.body.isEmpty() || request.method == "PUT" || request.method == "POST";
}

TransportError outOfTime(RequestWatch::Verdict verdict, std::chrono::milliseconds limit)
{
    auto seconds = QString::number(std::chrono::duration<double>(limit).count());
    if (verdict == RequestWatch::Verdict::idle)
        return {Kind::idle, QObject::tr("No answer within %1 seconds.").arg(seconds)};
    return {Kind::timedOut, QObject::tr("The request took longer than %1 seconds.").arg(seconds)};
}

} // namespace

CurlTransfer::CurlTransfer(HttpRequest request, const HttpAddress& address, std::shared_ptr<CookieJar> jar,
                           CurlHandles& handles, CurlMulti& multi)
    : m_request(std::move(request)),
      m_encrypted(address.encrypted),
      m_totalLimit(totalLimit(m_request, handles.options())),
      m_handles(handles),
      m_multi(multi),
      m_wake(multi.strand()),
      m_watch(m_request.idleTimeout, m_totalLimit, now()),
      m_toSend(m_request.source ? handles.options().sendLimit : nullptr),
      m_toReceive(m_request.sink ? handles.options().receiveLimit : nullptr),
      m_easy(handles.take(std::move(jar)), GiveBack{&handles})
{
    setAddress(address);
    setMethod();
    setHeaders();
    setCallbacks();
    setRepetition();
    m_multi.add(m_easy.get());
}

CurlTransfer::~CurlTransfer()
{
    m_multi.remove(m_easy.get(), m_result ? CurlMulti::Leave::open : CurlMulti::Leave::reset);
}

void CurlTransfer::setAddress(const HttpAddress& address)
{
    set(CURLOPT_URL, m_request.url.constData());
    set(CURLOPT_PROXY, address.loopback ? "" : nullptr); // none, or what the environment says
}

void CurlTransfer::setMethod()
{
    set(CURLOPT_HTTPGET, 1L); // whatever the handle's request before this one was
    set(CURLOPT_CUSTOMREQUEST, m_request.method.constData());
    if (m_request.method == "HEAD")
        set(CURLOPT_NOBODY, 1L);
    else if (hasBody(m_request))
        setBody();
}

void CurlTransfer::setHeaders()
{
    for (const auto& [name, value] : m_request.headers)
        addHeader(value.isEmpty() ? name + ';' : name + ": " + value);
    addHeader("Expect:"); // waiting for a 100 costs a round trip for every part
    set(CURLOPT_HTTPHEADER, m_headers.get());
    set(CURLOPT_ACCEPT_ENCODING, m_request.asksForCompression ? "" : nullptr); // "": all that libcurl knows
}

void CurlTransfer::addHeader(const QByteArray& line)
{
    auto* longer = curl_slist_append(m_headers.get(), line.constData());
    if (!longer)
        throw std::bad_alloc();
    std::ignore = m_headers.release(); // the list's head, unless this is the first line
    m_headers.reset(longer);
}

void CurlTransfer::setBody()
{
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_INFILESIZE_LARGE, curl_off_t(bodySize()));
    set(CURLOPT_READFUNCTION, &CurlTransfer::readBody);
    set(CURLOPT_READDATA, this);
}

void CurlTransfer::setCallbacks()
{
    set(CURLOPT_PRIVATE, static_cast<CurlMulti::Client*>(this));
    set(CURLOPT_HEADERFUNCTION, &CurlTransfer::takeHeader);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &CurlTransfer::takeBody);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_XFERINFOFUNCTION, &CurlTransfer::takeProgress);
    set(CURLOPT_XFERINFODATA, this);
    if (const auto& limit = m_handles.options().receiveLimit) // so that one read is no more than a turn
        set(CURLOPT_BUFFERSIZE,
            long(std::min(limit->turnSize().value_or(mostSlice), m_handles.options().receiveSlice)));
}

/// libcurl sends a request again when a kept-alive connection turns out to be closed, whether or not the server has
/// acted on it before that. So it is stopped at the second time, and given no connection that may well be closed.
void CurlTransfer::setRepetition()
{
    constexpr long secondsAsLibcurl = 118, secondsUnused = 3;
    set(CURLOPT_MAXAGE_CONN, isRepeatable(m_request) ? secondsAsLibcurl : secondsUnused);
    set(CURLOPT_PREREQFUNCTION, &CurlTransfer::beforeSending);
    set(CURLOPT_PREREQDATA, this);
}

int CurlTransfer::beforeSending(void* self, char*, char*, int, int)
{
    auto& transfer = *static_cast<CurlTransfer*>(self);
    const bool isAgain = std::exchange(transfer.m_wasSent, true);
    return isAgain && !isRepeatable(transfer.m_request) ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

qint64 CurlTransfer::bodySize() const
{
    return m_request.source ? m_request.source->size() : m_request.body.size();
}

std::size_t CurlTransfer::readBody(char* into, std::size_t size, std::size_t count, void* self)
{
    auto& transfer = *static_cast<CurlTransfer*>(self);
    if (transfer.m_offset == 0)
        readAfterFailedWrite(transfer.m_easy.get());
    auto room = std::min(qint64(size * count), transfer.bodySize() - transfer.m_offset);
    if (room <= 0)
        return 0;
    room = std::min(room, transfer.m_toSend.allowed(transfer.now()));
    if (room == 0) {
        transfer.hold();
        return CURL_READFUNC_PAUSE;
    }
    auto got = std::size_t(room);
    if (!transfer.m_request.source) {
        std::memcpy(into, transfer.m_request.body.constData() + transfer.m_offset, got);
    } else {
        try {
            got = transfer.m_request.source->read(transfer.m_offset, {into, got});
        } catch (...) {
            transfer.m_failure = std::current_exception();
            return CURL_READFUNC_ABORT;
        }
        assert(got > 0 && got <= std::size_t(room));
    }
    transfer.m_offset += qint64(got);
    transfer.m_toSend.spend(qint64(got));
    return got;
}

std::size_t CurlTransfer::takeHeader(char* line, std::size_t size, std::size_t count, void* self)
{
    auto& transfer = *static_cast<CurlTransfer*>(self);
    transfer.m_watch.moved(transfer.now());
    transfer.m_handedOver += qint64(size * count);
    auto text = QByteArrayView(line, qsizetype(size * count));
    if (text.startsWith("HTTP/")) { // of the final answer, or of an interim one before it
        transfer.m_answer.headers.clear();
        if (auto bytes = transfer.m_handles.options().tlsReadAhead; bytes > 0)
            readAhead(transfer.m_easy.get(), bytes);
    } else if (auto colon = text.indexOf(':'); colon > 0) {
        transfer.m_answer.headers.append(
            {text.first(colon).toByteArray(), text.sliced(colon + 1).trimmed().toByteArray()});
    }
    return size * count;
}

std::size_t CurlTransfer::takeBody(char* bytes, std::size_t size, std::size_t count, void* self)
{
    auto& transfer = *static_cast<CurlTransfer*>(self);
    const std::span<const char> arrived(bytes, size * count);
    if (transfer.m_toReceive.allowed(transfer.now()) == 0) {
        transfer.hold();
        return CURL_WRITEFUNC_PAUSE; // libcurl keeps what has arrived, and brings it again
    }
    transfer.m_toReceive.spend(qint64(arrived.size()));
    transfer.m_handedOver += qint64(arrived.size());
    if (transfer.m_answer.length == 0 && !transfer.isBodyWanted())
        return 0;
    if (!transfer.keep(arrived))
        return 0;
    transfer.m_answer.length += qint64(arrived.size());
    return arrived.size();
}

bool CurlTransfer::isBodyWanted()
{
    m_answer.status = status();
    if (!m_request.wantsBody)
        return true;
    try {
        m_unwanted = !m_request.wantsBody(m_answer);
    } catch (...) {
        m_failure = std::current_exception();
    }
    return !m_unwanted && !m_failure;
}

bool CurlTransfer::keep(std::span<const char> bytes)
{
    if (!m_request.sink || !m_answer.isSuccess())
        return keepInAnswer(bytes);
    m_tooLarge = m_answer.length + qint64(bytes.size()) > m_request.sink->room();
    if (m_tooLarge)
        return false;
    try {
        m_request.sink->take(bytes);
    } catch (...) {
        m_failure = std::current_exception();
    }
    return !m_failure;
}

bool CurlTransfer::keepInAnswer(std::span<const char> bytes)
{
    auto& body = m_answer.body;
    if (!m_answer.isSuccess()) {
        const auto room = longestRefusal - body.size();
        m_unwanted = qsizetype(bytes.size()) > room;
        body.append(bytes.data(), std::min(room, qsizetype(bytes.size())));
        return !m_unwanted;
    }
    curl_off_t announced = 0; // -1 when the server does not say
    curl_easy_getinfo(m_easy.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
    const auto length = std::max(qint64(announced), body.size() + qint64(bytes.size()));
    m_tooLarge = length > m_request.answerLimit;
    if (m_tooLarge)
        return false;
    if (body.isEmpty())
        body.reserve(length);
    body.append(bytes.data(), qsizetype(bytes.size()));
    return true;
}

int CurlTransfer::takeProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent)
{
    auto& transfer = *static_cast<CurlTransfer*>(self);
    if (sent == transfer.m_sent && received == transfer.m_received)
        return 0;
    transfer.m_watch.moved(transfer.now());
    transfer.m_received = received;
    if (std::exchange(transfer.m_sent, sent) < sent) {
        transfer.countAcknowledged();
        transfer.reportSent();
    }
    return transfer.m_failure ? 1 : 0;
}

void CurlTransfer::reportSent()
{
    if (!m_request.onSent)
        return;
    try {
        m_request.onSent(m_sent, m_acknowledged);
    } catch (...) {
        m_failure = std::current_exception();
    }
}

void CurlTransfer::ended(CURLcode result) noexcept
{
    m_result = result;
    m_wake.cancel();
}

void CurlTransfer::started() noexcept
{
    if (!std::exchange(m_started, true))
        m_watch.moved(now());
}

void CurlTransfer::leaves(curl_socket_t socket) noexcept
{
    // Of an encrypted connection that would be the words of whoever can reach the socket.
    if (m_encrypted || m_sent >= bodySize() || status() != 0)
        return;
    m_unread.resize(longestUnread);
    auto count = ::recv(socket, m_unread.data(), longestUnread, MSG_PEEK | MSG_DONTWAIT);
    m_unread.truncate(std::max<qsizetype>(count, 0));
}

void CurlTransfer::unwatchable() noexcept
{
    m_failure = std::make_exception_ptr(TransportError(Kind::broken, QObject::tr("Too many files are open.")));
    m_wake.cancel();
}

void CurlTransfer::abandon()
{
    m_abandoned = true;
    m_wake.cancel();
}

void CurlTransfer::networkChanged(const NetworkPath& path)
{
    if (!path.isUsable()) {
        m_withoutNetwork = m_withoutNetwork.value_or(now());
        return;
    }
    const auto lostAt = std::exchange(m_withoutNetwork, std::nullopt);
    bool wasAway = lostAt && now() - *lostAt > shortOutage;
    bool isStranded =
        !m_multi.hasLocalAddress(m_easy.get(), [&](const sockaddr& address) { return path.hasAddress(address); });
    if (!m_started || hasEnded() || !(wasAway || isStranded))
        return;
    m_failure = std::make_exception_ptr(TransportError(Kind::broken, QObject::tr("The connection was lost.")));
    m_wake.cancel();
}

Task<void> CurlTransfer::untilEnded()
{
    while (!hasEnded()) {
        const auto present = now();
        const bool isCounting = m_request.onSent && m_acknowledged < bodySize();
        auto interval = m_watch.nextLook(present) - present;
        if (isCounting)
            interval = std::min<RequestWatch::Moment::duration>(interval, countEvery);
        if (m_heldSince)
            interval = std::clamp<RequestWatch::Moment::duration>(
                std::max(m_toSend.due(), m_toReceive.due()) - present, 0ms,
                std::min<RequestWatch::Moment::duration>(interval, longestHold));
        m_wake.expires_after(interval);
        boost::system::error_code woken;
        co_await m_wake.async_wait(asio::redirect_error(asio::use_awaitable, woken));
        auto state = co_await asio::this_coro::cancellation_state;
        if (m_abandoned || state.cancelled() != asio::cancellation_type::none)
            throwCancelled();
        if (!hasEnded())
            look();
    }
}

void CurlTransfer::look()
{
    if (!m_started)
        m_watch.moved(now()); // it waits for a connection that another request uses: its turn has not come
    if (m_heldSince)
        noteHeld();
    noteDraining();
    auto verdict = m_watch.verdict(now());
    if (verdict == RequestWatch::Verdict::idle)
        throw outOfTime(verdict, m_request.idleTimeout);
    if (verdict == RequestWatch::Verdict::timedOut)
        throw outOfTime(verdict, m_totalLimit);
}

/// libcurl stops for want of tokens, and so does the watch.
void CurlTransfer::hold()
{
    m_heldSince = now();
    m_wake.cancel(); // to wait until they come
}

void CurlTransfer::noteHeld()
{
    if (m_request.onHeld)
        m_request.onHeld();
    const auto present = now();
    m_watch.held(*std::exchange(m_heldSince, present), present);
    if (m_toSend.allowed(present) == 0 || m_toReceive.allowed(present) == 0)
        return;
    m_heldSince.reset();
    const auto result = curl_easy_pause(m_easy.get(), CURLPAUSE_CONT); // brings what it kept, which may be refused
    if (result != CURLE_OK && !m_result)
        m_result = result;
}

void CurlTransfer::noteDraining()
{
    if (!countAcknowledged())
        return;
    m_watch.moved(now());
    reportSent();
}

/// Says whether something has changed. What the kernel holds is more than the body by headers and encryption, so that
/// the count is never too high.
bool CurlTransfer::countAcknowledged()
{
    const auto queued = m_multi.queuedInKernel(m_easy.get());
    const auto count = queued ? std::max(m_acknowledged, m_sent - *queued) : m_acknowledged;
    const bool hasGrown = std::exchange(m_acknowledged, count) != count;
    return std::exchange(m_queuedInKernel, queued.value_or(0)) != queued.value_or(0) || hasGrown;
}

RequestWatch::Moment CurlTransfer::now() const
{
    const auto& given = m_handles.options().now;
    return given ? given() : RequestWatch::Moment::clock::now();
}

int CurlTransfer::status() const
{
    long status = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status);
    return int(status);
}

/// Whether the answer refuses the body before all of it was sent. Its own body may then have been cut short.
bool CurlTransfer::isRefusedHalfWay() const
{
    return status() >= 400 && m_sent < bodySize();
}

HttpResponse CurlTransfer::takeAnswer()
{
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (m_tooLarge)
        throw TransportError(Kind::tooLarge, QObject::tr("The server's answer is too large."));
    m_answer.status = status();
    if (*m_result == CURLE_OK || m_unwanted || isRefusedHalfWay())
        return std::move(m_answer);
    if (auto refusal = parseRefusal(m_unread))
        return *refusal;
    long fromProxy = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_HTTP_CONNECTCODE, &fromProxy);
    throw proxyRefusal(fromProxy).value_or(transportError(*m_result));
}

} // namespace palvera
