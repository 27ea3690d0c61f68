// palvera-bare-storage: the least that storage can be on loopback, for measuring clients against.
//
//   palvera-bare-storage [--port 8080] [--certificate file.pem --key file.pem] [--block FILE --size BYTES]
//
// Prints its address and runs until it is ended. One blocking thread serves one connection. Every PUT or POST is read,
// forgotten and answered with 200 and an ETag. Every GET is answered with what its Range names of one object: FILE over
// and over, up to --size; a HEAD tells its size. FILE is small, so an object of any size comes from memory that is not
// also its copy.

#include <CLI/CLI.hpp>

#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <strings.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using TlsContext = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;
using Tls = std::unique_ptr<SSL, decltype(&SSL_free)>;

/// What downloads bring: a file's bytes, repeated until there are `size` of them. Lives as long as the program.
struct Object {
    int file = -1;
    const char* bytes = nullptr;
    std::size_t period = 0;
    std::size_t size = 0;
};

/// Both inclusive.
struct Range {
    std::size_t first = 0;
    std::size_t last = 0;
};

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

    bool write(const Object& object, Range range)
    {
        while (range.first <= range.last) {
            auto at = range.first % object.period;
            auto sent = writeSome(object, at, std::min(range.last - range.first + 1, object.period - at));
            if (sent <= 0)
                return false;
            range.first += std::size_t(sent);
        }
        return true;
    }

private:
    ssize_t writeSome(const Object& object, std::size_t at, std::size_t count)
    {
        auto offset = off_t(at);
        return m_tls ? SSL_write(m_tls, object.bytes + at, int(std::min(count, std::size_t(1) << 20)))
                     : ::sendfile(m_socket, object.file, &offset, count);
    }

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

/// What "bytes=FIRST-LAST" or "bytes=FIRST-" names, else the whole object.
Range rangeOf(std::string_view text, std::size_t size)
{
    Range range{.first = 0, .last = size - 1};
    constexpr std::string_view unit = "bytes=";
    if (!text.starts_with(unit))
        return range;
    const auto* end = text.data() + text.size();
    auto first = std::from_chars(text.data() + unit.size(), end, range.first);
    if (first.ptr != end)
        std::from_chars(first.ptr + 1, end, range.last);
    range.last = std::min(range.last, size - 1);
    return range;
}

bool give(Connection& connection, std::string_view head, const Object& object)
{
    auto named = header(head, "Range");
    auto range = rangeOf(named, object.size);
    if (range.first > range.last)
        return connection.write("HTTP/1.1 416 Range Not Satisfiable\r\nContent-Length: 0\r\n\r\n");
    std::string answer = named.empty()
                             ? "HTTP/1.1 200 OK\r\n"
                             : "HTTP/1.1 206 Partial Content\r\nContent-Range: bytes " + std::to_string(range.first) +
                                   '-' + std::to_string(range.last) + '/' + std::to_string(object.size) + "\r\n";
    answer += "Accept-Ranges: bytes\r\nETag: \"" + std::to_string(object.size) +
              "\"\r\nContent-Length: " + std::to_string(range.last - range.first + 1) + "\r\n\r\n";
    return connection.write(answer) && (head.starts_with("HEAD ") || connection.write(object, range));
}

/// Serves one request; `ahead` holds what was received beyond the one before. False when the client has gone.
bool serveRequest(Connection& connection, std::string& ahead, const Object& object)
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
    if ((head.starts_with("GET ") || head.starts_with("HEAD ")) && object.size > 0)
        return give(connection, head, object);
    auto tag = head.starts_with("P") ? "ETag: \"" + length + "\"\r\n" : std::string();
    return connection.write("HTTP/1.1 200 OK\r\n" + tag + "Content-Length: 0\r\n\r\n");
}

void serve(int socket, SSL_CTX* context, const Object& object)
{
    int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    Tls tls(context ? SSL_new(context) : nullptr, &SSL_free);
    if (tls)
        SSL_set_fd(tls.get(), socket);
    if (!tls || SSL_accept(tls.get()) == 1) {
        Connection connection(socket, tls.get());
        std::string ahead;
        while (serveRequest(connection, ahead, object)) {
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

Object openObject(const std::string& block, std::size_t size)
{
    if (block.empty())
        return {};
    int file = ::open(block.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status{};
    if (file < 0 || ::fstat(file, &status) != 0 || status.st_size == 0)
        throw std::runtime_error("the block cannot be read");
    auto period = std::size_t(status.st_size);
    void* bytes = ::mmap(nullptr, period, PROT_READ, MAP_SHARED, file, 0);
    if (bytes == MAP_FAILED)
        throw std::runtime_error("the block cannot be mapped");
    return {.file = file, .bytes = static_cast<const char*>(bytes), .period = period, .size = size};
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
    CLI::App app("Takes uploads on loopback, forgets them, and gives one object");
    int port = 0;
    std::size_t size = 0;
    std::string certificate, key, block;
    app.add_option("--port", port, "Port to listen on; any free one by default");
    auto* certificateOption = app.add_option("--certificate", certificate, "PEM file; encrypted when given");
    app.add_option("--key", key, "PEM file of its key")->needs(certificateOption);
    auto* sizeOption = app.add_option("--size", size, "Bytes of the object that every GET is answered from");
    app.add_option("--block", block, "File that the object repeats")->needs(sizeOption);
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    try {
        auto context = makeContext(certificate, key);
        const auto object = openObject(block, size);
        int listener = listenOn(port);
        std::printf("%s://127.0.0.1:%d\n", context ? "https" : "http", portOf(listener));
        std::fflush(stdout);
        for (;;) {
            int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            if (socket >= 0)
                std::thread(serve, socket, context.get(), std::cref(object)).detach();
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "palvera-bare-storage: %s\n", failure.what());
        return 1;
    }
}
