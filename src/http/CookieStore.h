#pragma once

#include "http/CookieJar.h"

#include <QString>

#include <memory>
#include <optional>

namespace palvera {

/// The cookies of all runs: a jar of this one's, and the file that outlasts it. Any thread; may block on the disk.
///
/// Cookies with an expiry, HttpOnly ones included, are kept in a file that only the user may read; session cookies go
/// with the store. Programs that use one file see each other's changes from their next request on, and the file is
/// always whole.
class CookieStore {
public:
    /// Loads what can be made sense of; a missing, damaged or foreign file is never a failure. An empty path keeps
    /// cookies in memory only.
    explicit CookieStore(QString file = {});

    /// For a request that begins now, with what another program has changed in the file since.
    std::shared_ptr<CookieJar> jar();
    /// Forgets every cookie of every host, in memory and in the file. What has the jar from before keeps it to itself.
    void clear();
    /// Takes care of what an answer has set in the jar: lets go of what a domain has beyond 64 cookies, and brings the
    /// file up to date. A jar from before a `clear` is nobody's concern.
    void save();
    /// Why the file does not hold what the jar does, as of the latest change, for the user; empty when it does. Does
    /// not wait for the disk.
    QString problem() const;

private:
    /// Which file it was, and in which state: device, inode, size and time of the last change in nanoseconds.
    using Identity = std::array<qint64, 4>;

    Identity fileIdentity() const;
    void merge();
    QByteArray read();
    void setProblem(const QString& problem);

    const QString m_file;
    std::mutex m_mutex; // guards what follows
    std::shared_ptr<CookieJar> m_jar = std::make_shared<CookieJar>();
    QByteArrayList m_common; // what jar and file agreed on last
    Identity m_seen{};       // of the file at that time
    mutable std::mutex m_problemMutex;
    QString m_problem; // guarded by m_problemMutex
};

} // namespace palvera
