#include "localplatform/Conversation.h"

#include <QJsonDocument>

namespace palvera::local {

namespace {

constexpr std::size_t sliceSize = 1 << 20;
constexpr qint64 callLimit = 16 << 20; // bytes of a service call's body

} // namespace

Conversation::Conversation(Connection::Socket socket, Platform& platform, const ConversationTerms& terms)
    : m_connection(std::move(socket), terms.tls), m_platform(platform), m_terms(terms)
{}

Task<void> Conversation::run()
{
    try {
        co_await m_connection.handshake();
        co_await serve();
        m_connection.close();
    } catch (const std::exception&) { // the client went away, or the server stops
    }
}

Task<void> Conversation::serve()
{
    while (!m_over) {
        auto head = co_await m_connection.readHead();
        if (!head)
            co_return;
        m_head = std::move(*head);
        m_over = !m_connection.keepsAlive();
        co_await serveOne();
    }
}

Task<void> Conversation::serveOne()
{
    if (m_terms.beforeRequest)
        m_terms.beforeRequest();
    if (m_terms.port == ConversationTerms::Port::service && m_head.target == "/local/state") {
        auto state = QJsonDocument(m_platform.state()).toJson();
        co_return co_await m_connection.answer({.headers = {{"Content-Type", "application/json"}}, .body = state});
    }
    if (m_terms.port == ConversationTerms::Port::service && m_head.target == "/local/expire") {
        m_platform.expireSignIns();
        co_return co_await m_connection.answer({.status = 204});
    }
    m_fault = m_platform.meet(m_head);
    if (m_fault.kind == Fault::Kind::refuse || m_fault.kind == Fault::Kind::resetBeforeReading) {
        m_connection.reset();
        m_over = true;
    } else if (m_terms.port == ConversationTerms::Port::service) {
        co_await call();
    } else if (m_head.method == "PUT") {
        co_await put();
    } else {
        co_await get();
    }
}

bool Conversation::isCutShort() const
{
    return m_fault.kind == Fault::Kind::resetMidBody || m_fault.kind == Fault::Kind::stallMidBody;
}

/// Reads as much of the body as the fault lets through and ends the conversation there.
Task<void> Conversation::readFaultyBody()
{
    m_over = true;
    co_await m_connection.skipBody(std::min(m_fault.bytes, m_connection.bodyLength()));
    if (m_fault.kind == Fault::Kind::stallMidBody)
        co_await m_connection.stall();
    m_connection.reset();
}

Task<QByteArray> Conversation::wholeBody()
{
    QByteArray body(m_connection.bodyLength(), '\0');
    for (qsizetype done = 0; done < body.size();) {
        std::span rest(body.data() + done, static_cast<std::size_t>(body.size() - done));
        done += static_cast<qsizetype>(co_await m_connection.readBody(rest));
    }
    co_return body;
}

Task<void> Conversation::call()
{
    if (isCutShort())
        co_return co_await readFaultyBody();
    if (m_connection.bodyLength() > callLimit) {
        m_over = true;
        co_return co_await m_connection.answer({.status = 413});
    }
    auto body = co_await wholeBody();
    if (m_fault.kind == Fault::Kind::stallAfterBody)
        co_await m_connection.stall();
    co_await answer(m_platform.serve(m_head, body, m_fault));
}

Task<void> Conversation::put()
{
    if (isCutShort())
        co_return co_await readFaultyBody();
    auto opening = m_platform.openPart(m_head, m_connection.bodyLength(), m_fault);
    co_await takeBody(opening.receiver.get());
    if (m_fault.kind == Fault::Kind::stallAfterBody)
        co_await m_connection.stall();
    co_await answer(opening.receiver ? opening.receiver->finish(m_fault) : opening.refusal);
}

/// The most that may move; 0 is no limit.
qint64 Conversation::bytesPerSecond() const
{
    return m_fault.bytesPerSecond > 0 ? m_fault.bytesPerSecond : m_terms.bytesPerSecond;
}

/// How much of `left` bytes moves between two looks at the pace.
qint64 Conversation::sliceOf(qint64 left) const
{
    return bytesPerSecond() > 0 ? std::min(left, std::max<qint64>(bytesPerSecond() / 10, 1)) : left;
}

Task<void> Conversation::pace(Moment began, qint64 done)
{
    if (bytesPerSecond() <= 0)
        co_return;
    auto due = began + std::chrono::milliseconds(done * 1000 / bytesPerSecond());
    co_await m_connection.wait(std::chrono::ceil<std::chrono::milliseconds>(due - std::chrono::steady_clock::now()));
}

Task<void> Conversation::takeBody(PartReceiver* receiver)
{
    const auto length = m_connection.bodyLength();
    const auto began = std::chrono::steady_clock::now();
    const bool kept = receiver && receiver->wantsBytes();
    m_slice.resize(kept ? sliceSize : 0);
    for (qint64 done = 0; done < length;) {
        auto slice = sliceOf(length - done);
        if (kept) {
            auto most = std::min(m_slice.size(), static_cast<std::size_t>(slice));
            auto count = co_await m_connection.readBody(std::span(m_slice).first(most));
            receiver->write(std::span<const char>(m_slice).first(count));
            slice = static_cast<qint64>(count);
        } else {
            co_await m_connection.skipBody(slice);
        }
        done += slice;
        co_await pace(began, done);
    }
}

Task<void> Conversation::get()
{
    co_await m_connection.skipBody(m_connection.bodyLength());
    if (m_fault.kind == Fault::Kind::stallAfterBody)
        co_await m_connection.stall();
    if (m_head.method != "GET")
        co_return co_await answer(m_platform.refuseStorage(m_head));
    auto download = m_platform.download(m_head, m_fault);
    if (!download.object || m_fault.kind == Fault::Kind::loseAnswer)
        co_return co_await answer(download.reply);
    co_await m_connection.wait(m_fault.latency);
    co_await m_connection.writeHead(download.reply, download.length);
    co_await send(download);
}

Task<void> Conversation::send(const Download& download)
{
    auto end = isCutShort() ? std::min(m_fault.bytes, download.length) : download.length;
    const auto began = std::chrono::steady_clock::now();
    m_slice.resize(sliceSize);
    for (qint64 done = 0; done < end;) {
        auto slice = std::span(m_slice).first(std::min(m_slice.size(), static_cast<std::size_t>(sliceOf(end - done))));
        download.object->read(download.offset + done, slice);
        co_await m_connection.write(slice);
        done += static_cast<qint64>(slice.size());
        co_await pace(began, done);
    }
    if (m_fault.kind == Fault::Kind::stallMidBody)
        co_await m_connection.stall();
    m_over = m_over || isCutShort();
}

Task<void> Conversation::answer(Reply reply)
{
    co_await m_connection.wait(m_fault.latency);
    if (m_fault.kind == Fault::Kind::loseAnswer) {
        m_over = true;
        m_connection.reset();
        co_return;
    }
    co_await m_connection.answer(reply);
}

} // namespace palvera::local
