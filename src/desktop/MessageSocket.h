#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class QLocalServer;
class QLocalSocket;

namespace palvera {

/// A socket in the file system at which programs of the same user leave short messages. Main thread.
class MessageSocket {
public:
    static constexpr qint64 longestMessage = 64 << 10; ///< bytes

    /// Listens at `path`, of at most 107 bytes, in place of whoever did before, until it is destroyed. `onMessage` is
    /// called with each message, from the event loop, and may destroy this. A message that is too long, or does not end
    /// within five seconds, is dropped.
    MessageSocket(const QString& path, std::function<void(const QByteArray&)> onMessage);
    ~MessageSocket();
    MessageSocket(const MessageSocket&) = delete;
    MessageSocket& operator=(const MessageSocket&) = delete;

    /// Leaves `message` with whoever listens at `path`. False when it is too long, nobody listens, or nothing of it
    /// could be left within two seconds, for which it blocks. Needs no application object.
    static bool send(const QString& path, const QByteArray& message);

private:
    using OnMessage = std::function<void(const QByteArray&)>;
    void serve(QLocalSocket* peer);

    const std::shared_ptr<const OnMessage> m_onMessage;
    QLocalServer* const m_server; // goes by itself, after this
};

} // namespace palvera
