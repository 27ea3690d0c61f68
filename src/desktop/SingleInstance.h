#pragma once

#include <QLockFile>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QLocalServer;
class QLocalSocket;

namespace palvera {

/// Sees to it that the program runs once for a user and a data folder: a later start hands over what it has to say to
/// the first one and goes. Main thread.
class SingleInstance {
public:
    static constexpr qint64 longestMessage = 64 << 10; ///< bytes

    /// `dataFolder` is one folder however its path is spelled, links apart. `runtimeFolder` holds the lock and the
    /// socket; the user's own unless given.
    explicit SingleInstance(const QString& dataFolder, const QString& runtimeFolder = {});
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether nobody was here before. Without a place for the lock everybody is the first.
    bool isFirst() const { return m_isFirst; }
    /// Hands `message` over to the first one. False when it is too long or that could not be done within two seconds.
    bool send(const QByteArray& message) const;

    /// For the first one: called with each message, from the event loop. One that is too long, or does not end within
    /// five seconds, is dropped.
    std::function<void(const QByteArray&)> onMessage;

private:
    void listen();
    void serve(QLocalSocket* peer);

    QString m_socket;
    std::optional<QLockFile> m_lock;
    bool m_isFirst = true;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace palvera
