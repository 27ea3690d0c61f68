#include "localplatform/Server.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/redirect_error.hpp>

namespace palvera::local {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

std::unique_ptr<asio::ssl::context> loadTls(const ServerOptions& options)
{
    if (options.certificate.isEmpty())
        return nullptr;
    auto context = std::make_unique<asio::ssl::context>(asio::ssl::context::tls_server);
    context->use_certificate_chain_file(options.certificate.toStdString());
    context->use_private_key_file(options.key.toStdString(), asio::ssl::context::pem);
    return context;
}

QByteArray addressOf(const char* scheme, const tcp::acceptor& acceptor)
{
    const auto local = acceptor.local_endpoint();
    return QByteArray(scheme) + "://" + local.address().to_string().c_str() + ":" + QByteArray::number(local.port());
}

} // namespace

Server::Server(Platform& platform, ServerOptions options)
    : m_platform(platform),
      m_options(std::move(options)),
      m_tls(loadTls(m_options)),
      m_serviceTerms{.beforeRequest = m_options.beforeRequest},
      m_storageTerms{.port = ConversationTerms::Port::storage,
                     .tls = m_tls.get(),
                     .beforeRequest = m_options.beforeRequest,
                     .bytesPerSecond = m_options.bytesPerSecond},
      m_pool(m_options.threads),
      m_serviceAcceptor(listen(m_options.servicePort)),
      m_storageAcceptor(listen(m_options.storagePort))
{
    m_platform.setStorageAddress(storageAddress());
    start(asio::make_strand(m_pool.get_executor()), acceptAll(m_serviceAcceptor, m_serviceTerms));
    start(asio::make_strand(m_pool.get_executor()), acceptAll(m_storageAcceptor, m_storageTerms));
}

Server::~Server()
{
    {
        std::lock_guard guard(m_lock);
        m_stopping = true;
        for (auto& running : m_running)
            asio::post(running->strand, [running] { running->stop.emit(asio::cancellation_type::terminal); });
    }
    m_pool.join();
}

QByteArray Server::serviceAddress() const
{
    return addressOf("http", m_serviceAcceptor);
}

QByteArray Server::storageAddress() const
{
    return addressOf(m_tls ? "https" : "http", m_storageAcceptor);
}

Server::Acceptor Server::listen(unsigned short port)
{
    return {m_pool.get_executor(), tcp::endpoint(asio::ip::make_address_v4(m_options.address), port)};
}

void Server::start(const Strand& strand, Task<void> operation)
{
    auto running = std::make_shared<Running>(strand);
    std::lock_guard guard(m_lock);
    if (m_stopping)
        return;
    auto place = m_running.insert(m_running.end(), running);
    auto over = [this, place](const std::exception_ptr&) {
        std::lock_guard ended(m_lock);
        m_running.erase(place);
    };
    // Posted, so that it neither ends under the lock nor starts after the word to stop, which is posted too.
    asio::post(strand, [running, over, operation = std::move(operation)]() mutable {
        asio::co_spawn(running->strand, std::move(operation), asio::bind_cancellation_slot(running->stop.slot(), over));
    });
}

Task<void> Server::acceptAll(Acceptor& acceptor, const ConversationTerms& terms)
{
    for (;;) {
        boost::system::error_code problem;
        auto strand = asio::make_strand(m_pool.get_executor());
        auto socket = co_await acceptor.async_accept(strand, asio::redirect_error(asio::use_awaitable, problem));
        if (!problem)
            start(strand, talk(std::move(socket), terms));
        else if (problem == asio::error::operation_aborted)
            co_return;
    }
}

Task<void> Server::talk(Connection::Socket socket, const ConversationTerms& terms)
{
    Conversation conversation(std::move(socket), m_platform, terms);
    co_await conversation.run();
}

} // namespace palvera::local
