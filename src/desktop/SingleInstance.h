#pragma once

#include <QLockFile>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace palvera {

class MessageSocket;

/// Sees to it that the program runs once for a user and a data folder: a later start hands over what it has to say to
/// the first one and goes. Main thread.
class SingleInstance {
public:
    /// `dataFolder` is one folder however its path is spelled, links apart. `runtimeFolder` holds the lock and the
    /// socket; the user's own unless given.
    explicit SingleInstance(const QString& dataFolder, const QString& runtimeFolder = {});
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether nobody was here before. Without a place for the lock everybody is the first.
    bool isFirst() const { return m_isFirst; }
    /// For a later one: hands `message` over to the first one; see MessageSocket::send.
    bool send(const QByteArray& message) const;
    /// For a later one that is to take the place of a first one that ends: waits until that one is gone, or for
    /// `limit`, for which it blocks. Whether this is the first one then.
    bool succeed(std::chrono::milliseconds limit);
    /// For the first one, once there is an event loop: has `onMessage` called with each message.
    void listen(std::function<void(const QByteArray&)> onMessage);
    /// For the first one, about to end: takes no message any more, and keeps the lock. Who starts from here on waits.
    void close();

private:
    QString m_path; // of the socket
    std::optional<QLockFile> m_lock;
    bool m_isFirst = true;
    std::unique_ptr<MessageSocket> m_socket;
};

} // namespace palvera
