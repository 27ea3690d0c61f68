#include "http/CurlHandles.h"

#include "http/CurlTls.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace palvera {

namespace {

/// The file of authorities to trust, or nothing for libcurl's own. The library itself reads neither variable.
QByteArray authoritiesFile(const HttpSessionOptions& options)
{
    if (!options.authorities.isEmpty())
        return options.authorities.toLocal8Bit();
    auto bundle = qgetenv("CURL_CA_BUNDLE");
    return bundle.isEmpty() ? qgetenv("SSL_CERT_FILE") : bundle;
}

bool isLoopback(const sockaddr& address)
{
    if (address.sa_family == AF_INET) {
        in_addr host = reinterpret_cast<const sockaddr_in&>(address).sin_addr;
        return (ntohl(host.s_addr) >> 24) == IN_LOOPBACKNET;
    }
    return address.sa_family == AF_INET6 &&
           IN6_IS_ADDR_LOOPBACK(&reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
}

curl_socket_t openSocket(void* options, curlsocktype, curl_sockaddr* address)
{
    // Close-on-exec: a browser or installer that the program starts must not hold its connections open.
    int socket = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    const auto& asked = *static_cast<const HttpSessionOptions*>(options);
    const auto& name = isLoopback(address->addr) ? asked.loopbackCongestionControl : asked.congestionControl;
    if (socket >= 0 && !name.isEmpty())
        ::setsockopt(socket, IPPROTO_TCP, TCP_CONGESTION, name.constData(), socklen_t(name.size())); // or keeps its own
    return socket;
}

} // namespace

CurlHandles::~CurlHandles()
{
    for (auto* easy : m_spare)
        curl_easy_cleanup(easy);
}

CURL* CurlHandles::take(std::shared_ptr<CookieJar> jar)
{
    if (m_spare.empty())
        m_spare.push_back(make());
    auto* easy = m_spare.back();
    if (jar && m_jars[easy] != jar) {
        setOption(easy, CURLOPT_SHARE, jar->share());
        setOption(easy, CURLOPT_COOKIEFILE, ""); // turns the cookie engine on
        m_jars[easy] = std::move(jar);
    }
    m_spare.pop_back();
    return easy;
}

CURL* CurlHandles::make() const
{
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy(curl_easy_init(), &curl_easy_cleanup);
    if (!easy)
        throw std::bad_alloc();
    setConnection(easy.get());
    setTrust(easy.get());
    return easy.release();
}

void CurlHandles::setConnection(CURL* easy) const
{
    using Protocol = HttpSessionOptions::Protocol;
    setOption(easy, CURLOPT_HTTP_VERSION,
              long(m_options.protocol == Protocol::http11 ? CURL_HTTP_VERSION_1_1 : CURL_HTTP_VERSION_2TLS));
    setOption(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    setOption(easy, CURLOPT_PATH_AS_IS, 1L);
    setOption(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    setOption(easy, CURLOPT_NOPROGRESS, 0L);
    setOption(easy, CURLOPT_NOSIGNAL, 1L);
    setOption(easy, CURLOPT_QUICK_EXIT, 1L); // a cancelled look-up of a name is left to end by itself
    setOption(easy, CURLOPT_UPLOAD_BUFFERSIZE, long(m_options.uploadSlice));
    setOption(easy, CURLOPT_BUFFERSIZE, long(m_options.receiveSlice));
    setOption(easy, CURLOPT_OPENSOCKETFUNCTION, &openSocket);
    setOption(easy, CURLOPT_OPENSOCKETDATA, const_cast<HttpSessionOptions*>(&m_options));
}

void CurlHandles::setTrust(CURL* easy) const
{
    setOption(easy, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    // In the order of browsers. OpenSSL would begin with 256 bits, which cost four tenths more processor time for a
    // byte.
    setOption(easy, CURLOPT_TLS13_CIPHERS,
              "TLS_AES_128_GCM_SHA256:TLS_AES_256_GCM_SHA384:TLS_CHACHA20_POLY1305_SHA256");
    if (auto file = authoritiesFile(m_options); !file.isEmpty())
        setOption(easy, CURLOPT_CAINFO, file.constData());
    if (m_options.verifyPeer) {
        setOption(easy, CURLOPT_SSL_CTX_FUNCTION, &refuseCommonNames);
    } else {
        setOption(easy, CURLOPT_SSL_VERIFYPEER, 0L);
        setOption(easy, CURLOPT_SSL_VERIFYHOST, 0L);
    }
}

} // namespace palvera
