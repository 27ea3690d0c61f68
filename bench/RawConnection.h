#pragma once

#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace palvera::bench {

[[noreturn]] inline void die(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

/// Of a storage address: what a request without an HTTP library needs.
struct Address {
    bool tls = false;
    std::string host; ///< an IPv4 address
    int port = 0;
    std::string target;
};

inline Address parseAddress(const std::string& url)
{
    auto host = url.find("://") + 3;
    auto path = url.find('/', host);
    auto colon = url.find(':', host);
    if (path == std::string::npos || colon > path)
        die("not an address with a port: " + url);
    return {.tls = url.starts_with("https"),
            .host = url.substr(host, colon - host),
            .port = std::stoi(url.substr(colon + 1)),
            .target = url.substr(path)};
}

/// One blocking connection to storage, encrypted or not. Whatever fails ends the program.
class RawConnection {
public:
    explicit RawConnection(const Address& address)
    {
        m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        int one = 1;
        ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        sockaddr_in peer{};
        peer.sin_family = AF_INET;
        ::inet_pton(AF_INET, address.host.c_str(), &peer.sin_addr);
        peer.sin_port = htons(std::uint16_t(address.port));
        if (::connect(m_socket, reinterpret_cast<sockaddr*>(&peer), sizeof peer) != 0)
            die("cannot connect");
        if (!address.tls)
            return;
        m_context = SSL_CTX_new(TLS_client_method());
        SSL_CTX_set_ciphersuites(m_context, "TLS_AES_128_GCM_SHA256");
        m_tls = SSL_new(m_context);
        SSL_set_fd(m_tls, m_socket);
        auto* stream = SSL_get_rbio(m_tls);
        auto* buffer = BIO_new(BIO_f_buffer()); // several records with one read
        BIO_set_read_buffer_size(buffer, 128 << 10);
        BIO_up_ref(stream);
        SSL_set0_rbio(m_tls, BIO_push(buffer, stream));
        if (SSL_connect(m_tls) != 1)
            die("no TLS connection");
    }
    ~RawConnection()
    {
        SSL_free(m_tls);
        SSL_CTX_free(m_context);
        ::close(m_socket);
    }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    void write(const char* bytes, std::size_t count)
    {
        while (count > 0) {
            auto sent = m_tls ? SSL_write(m_tls, bytes, int(count)) : ::send(m_socket, bytes, count, MSG_NOSIGNAL);
            if (sent <= 0)
                die("cannot write");
            bytes += sent;
            count -= std::size_t(sent);
        }
    }

    /// At least one byte.
    std::size_t read(char* into, std::size_t room)
    {
        auto count = m_tls ? SSL_read(m_tls, into, int(room)) : ::recv(m_socket, into, room, 0);
        if (count <= 0)
            die("the answer ended early");
        return std::size_t(count);
    }

    /// Reads the head of an answer, which must have `status`. Gives what has come of the body with it.
    std::string readHead(const std::string& status)
    {
        std::string head;
        char buffer[4096];
        auto end = std::string::npos;
        while ((end = head.find("\r\n\r\n")) == std::string::npos)
            head.append(buffer, read(buffer, sizeof buffer));
        if (!head.starts_with("HTTP/1.1 " + status))
            die("refused: " + head.substr(0, end));
        return head.substr(end + 4);
    }

private:
    int m_socket = -1;
    SSL_CTX* m_context = nullptr;
    SSL* m_tls = nullptr;
};

} // namespace palvera::bench
