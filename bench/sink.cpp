// palvera-sink: takes HTTP/1.1 uploads on loopback and forgets them as fast as it can, for measuring clients against.
//
//   palvera-sink [--port 8080] [--certificate file.pem --key file.pem]
//
// Prints its address and runs until it is ended. One blocking thread serves one connection. Every PUT or POST is
// answered with 200 and an ETag, everything else with an empty 200.

#include <CLI/CLI.hpp>

#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using TlsContext = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;
using Tls = std::unique_ptr<SSL, decltype(&SSL_free)>;

class Connection {
public:
    Connection(int socket, SSL* tls) : m_socket(socket), m_tls(tls) {}

    bool readMore(std::string& into)
    {
        auto count =
            m_tls ? SSL_read(m_tls, m_buffer.data(), 16 << 10) : ::recv(m_socket, m_buffer.data(), 16 << 10, 0);
        if (count > 0)
            into.append(m_buffer.data(), std::size_t(count));
        return count > 0;
    }

    bool discard(std::size_t count)
    {
        while (count > 0) {
            auto got = discardSome(count);
            if (got <= 0)
                return false;
            count -= std::size_t(got);
        }
        return true;
    }

    bool write(std::string_view text)
    {
        auto size = ssize_t(text.size());
        auto sent = m_tls ? SSL_write(m_tls, text.data(), int(size)) : ::send(m_socket, text.data(), text.size(), 0);
        return sent == size;
    }

private:
    ssize_t discardSome(std::size_t count)
    {
        if (m_tls)
            return SSL_read(m_tls, m_buffer.data(), int(std::min(count, m_buffer.size())));
        return ::recv(m_socket, nullptr, std::min(count, std::size_t(4) << 20), MSG_TRUNC); // dropped without a copy
    }

    int m_socket;
    SSL* m_tls;
    std::vector<char> m_buffer = std::vector<char>(256 << 10);
};

std::string_view header(std::string_view head, std::string_view name)
{
    for (auto start = head.find("\r\n"); start != std::string_view::npos; start = head.find("\r\n", start + 2)) {
        auto line = head.substr(start + 2, head.find("\r\n", start + 2) - start - 2);
        if (line.size() > name.size() && line[name.size()] == ':' &&
            ::strncasecmp(line.data(), name.data(), name.size()) == 0)
            return line.substr(line.find_first_not_of(' ', name.size() + 1));
    }
    return {};
}

/// Serves one request; `ahead` holds what was received beyond the one before. False when the client has gone.
bool serveRequest(Connection& connection, std::string& ahead)
{
    std::size_t end = 0;
    while ((end = ahead.find("\r\n\r\n")) == std::string::npos)
        if (!connection.readMore(ahead))
            return false;
    auto head = ahead.substr(0, end + 2);
    ahead.erase(0, end + 4);
    auto length = std::string(header(head, "Content-Length"));
    std::size_t left = length.empty() ? 0 : std::stoull(length);
    if (!header(head, "Expect").empty() && !connection.write("HTTP/1.1 100 Continue\r\n\r\n"))
        return false;
    auto early = std::min(left, ahead.size());
    ahead.erase(0, early);
    if (!connection.discard(left - early))
        return false;
    auto tag = head.starts_with("P") ? "ETag: \"" + length + "\"\r\n" : std::string();
    return connection.write("HTTP/1.1 200 OK\r\n" + tag + "Content-Length: 0\r\n\r\n");
}

void serve(int socket, SSL_CTX* context)
{
    int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    Tls tls(context ? SSL_new(context) : nullptr, &SSL_free);
    if (tls)
        SSL_set_fd(tls.get(), socket);
    if (!tls || SSL_accept(tls.get()) == 1) {
        Connection connection(socket, tls.get());
        std::string ahead;
        while (serveRequest(connection, ahead)) {
        }
    }
    ::close(socket);
}

TlsContext makeContext(const std::string& certificate, const std::string& key)
{
    TlsContext context(certificate.empty() ? nullptr : SSL_CTX_new(TLS_server_method()), &SSL_CTX_free);
    if (context && (SSL_CTX_use_certificate_chain_file(context.get(), certificate.c_str()) != 1 ||
                    SSL_CTX_use_PrivateKey_file(context.get(), key.c_str(), SSL_FILETYPE_PEM) != 1))
        throw std::runtime_error("the certificate or its key cannot be used");
    return context;
}

int listenOn(int port)
{
    int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int on = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(uint16_t(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || ::listen(listener, 128) != 0)
        throw std::runtime_error("the port cannot be listened on");
    return listener;
}

int portOf(int listener)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Takes uploads on loopback and forgets them");
    int port = 0;
    std::string certificate, key;
    app.add_option("--port", port, "Port to listen on; any free one by default");
    auto* certificateOption = app.add_option("--certificate", certificate, "PEM file; encrypted when given");
    app.add_option("--key", key, "PEM file of its key")->needs(certificateOption);
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    try {
        auto context = makeContext(certificate, key);
        int listener = listenOn(port);
        std::printf("%s://127.0.0.1:%d\n", context ? "https" : "http", portOf(listener));
        std::fflush(stdout);
        for (;;) {
            int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            if (socket >= 0)
                std::thread(serve, socket, context.get()).detach();
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "palvera-sink: %s\n", failure.what());
        return 1;
    }
}
