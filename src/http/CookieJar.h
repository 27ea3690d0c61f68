#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <array>
#include <mutex>

namespace palvera {

/// Cookies that requests share, with their looked-up names and TLS sessions. Any thread.
class CookieJar {
public:
    CookieJar();
    ~CookieJar();
    CookieJar(const CookieJar&) = delete;
    CookieJar& operator=(const CookieJar&) = delete;

    /// All cookies, session cookies included, one line each as libcurl writes them; see readCookies.
    QByteArrayList all() const;
    /// Puts cookies in, in the same form; each takes the place of the one of its name, domain and path.
    void put(const QByteArrayList& cookies);
    /// Lets go of those cookies.
    void remove(const QByteArrayList& cookies);

    /// libcurl's CURLSH.
    void* share() const { return m_share; }

private:
    static constexpr std::size_t lockCount = 8; // CURL_LOCK_DATA_LAST

    void* m_share;
    std::array<std::mutex, lockCount> m_locks; // libcurl's, one for each kind of data it shares
};

} // namespace palvera
