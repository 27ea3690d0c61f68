#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <array>
#include <memory>
#include <mutex>

namespace palvera {

/// The cookies that sessions share, with their looked-up names and TLS sessions. Any thread.
///
/// Cookies with an expiry, HttpOnly ones included, are kept in a file that only the user may read; session cookies go
/// with the store. Two programs may use one file: the one that saved last wins, and the file is always whole.
class CookieStore {
public:
    /// Loads what can be made sense of; a missing, damaged or foreign file is never a failure. An empty path keeps
    /// cookies in memory only.
    explicit CookieStore(QString file = {});
    ~CookieStore();
    CookieStore(const CookieStore&) = delete;
    CookieStore& operator=(const CookieStore&) = delete;

    /// Forgets every cookie of every host, in memory and in the file.
    void clear();
    /// Lets go of what a domain has set beyond 64 cookies, and writes the file when it would differ from what was last
    /// written. Cookies that cannot be written stay in memory: the user then signs in again at the next start.
    void save();

    /// libcurl's CURLSH.
    void* share() const { return m_share; }

private:
    void load();
    void keepBounds();
    QByteArrayList all() const;

    static constexpr std::size_t lockCount = 8; // CURL_LOCK_DATA_LAST

    const QString m_file;
    void* m_share;
    std::array<std::mutex, lockCount> m_locks; // libcurl's, one for each kind of data it shares
    std::mutex m_fileLock;
    QByteArray m_written; // what the file holds as far as this store knows; guarded by m_fileLock
};

} // namespace palvera
