// The limit that an upload is measured against: eight threads, each with one socket, that read a file and write it to
// storage. No HTTP library, no retries, no progress; what it costs is what the kernel (and TLS) costs.
//
// raw_sender FILE PART_BYTES ADDRESSES: sends part N of FILE to the N-th address of the file ADDRESSES, one a line.

#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t sliceSize = 1 << 20;
constexpr int senders = 8;

[[noreturn]] void die(const std::string& what)
{
    std::fprintf(stderr, "raw_sender: %s\n", what.c_str());
    std::exit(1);
}

struct Address {
    bool tls = false;
    int port = 0;
    std::string target;
};

Address parse(const std::string& url)
{
    auto host = url.find("://") + 3;
    auto path = url.find('/', host);
    auto colon = url.find(':', host);
    if (path == std::string::npos || colon > path)
        die("not an address with a port: " + url);
    return {.tls = url.starts_with("https"), .port = std::stoi(url.substr(colon + 1)), .target = url.substr(path)};
}

class Connection {
public:
    explicit Connection(const Address& address)
    {
        m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        int one = 1;
        ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        sockaddr_in peer{};
        peer.sin_family = AF_INET;
        peer.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        peer.sin_port = htons(std::uint16_t(address.port));
        if (::connect(m_socket, reinterpret_cast<sockaddr*>(&peer), sizeof peer) != 0)
            die("cannot connect");
        if (!address.tls)
            return;
        m_context = SSL_CTX_new(TLS_client_method());
        m_tls = SSL_new(m_context);
        SSL_set_fd(m_tls, m_socket);
        if (SSL_connect(m_tls) != 1)
            die("no TLS connection");
    }
    ~Connection()
    {
        SSL_free(m_tls);
        SSL_CTX_free(m_context);
        ::close(m_socket);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

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
    /// Reads one answer; those of storage to a part have no body.
    void expectSuccess()
    {
        std::string head;
        char buffer[4096];
        while (head.find("\r\n\r\n") == std::string::npos) {
            auto count = m_tls ? SSL_read(m_tls, buffer, sizeof buffer) : ::recv(m_socket, buffer, sizeof buffer, 0);
            if (count <= 0)
                die("no answer");
            head.append(buffer, std::size_t(count));
        }
        if (!head.starts_with("HTTP/1.1 200"))
            die("refused: " + head);
    }

private:
    int m_socket = -1;
    SSL_CTX* m_context = nullptr;
    SSL* m_tls = nullptr;
};

void sendParts(int file, off_t size, off_t partSize, const std::vector<std::string>& urls,
               std::atomic<std::size_t>& next)
{
    std::vector<char> slice(sliceSize);
    Connection connection(parse(urls.front()));
    for (std::size_t part = next++; part < urls.size(); part = next++) {
        off_t begin = off_t(part) * partSize;
        off_t end = std::min(size, begin + partSize);
        std::string head = "PUT " + parse(urls[part]).target +
                           " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: " + std::to_string(end - begin) +
                           "\r\n\r\n";
        connection.write(head.data(), head.size());
        for (off_t at = begin; at < end;) {
            auto count = ::pread(file, slice.data(), std::min(slice.size(), std::size_t(end - at)), at);
            if (count <= 0)
                die("cannot read");
            connection.write(slice.data(), std::size_t(count));
            at += count;
        }
        connection.expectSuccess();
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        die("usage: raw_sender FILE PART_BYTES ADDRESSES");
    int file = ::open(arguments[1], O_RDONLY | O_CLOEXEC);
    struct stat status{};
    if (file < 0 || ::fstat(file, &status) != 0)
        die("cannot open the file");
    std::vector<std::string> urls;
    std::ifstream list(arguments[3]);
    for (std::string line; std::getline(list, line);)
        urls.push_back(line);
    if (urls.empty())
        die("no addresses");
    std::atomic<std::size_t> next{0};
    std::vector<std::jthread> threads;
    for (int i = 0; i < senders; ++i)
        threads.emplace_back([&] { sendParts(file, status.st_size, std::atol(arguments[2]), urls, next); });
}
