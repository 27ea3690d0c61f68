#pragma once

#include "async/Clock.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace palvera {

// How one start of the program takes the place of another: the old process starts the new one with a token in its
// environment and waits for its word; the new one, once it has come as far as a display, sends the token over the old
// one's socket and waits for its lock. A program that cannot be started, dies or hangs leaves the old one as it is.

/// What a process that is to take another one's place was given. Main thread.
struct Successor {
    QByteArray token;

    /// Takes the token out of the environment, so that no child inherits it. Nothing for a start of any other kind.
    static std::optional<Successor> take();
    /// What to tell the one that runs.
    QByteArray message() const;
};

/// The side of the process that is to be followed. Main thread.
class Succession {
public:
    /// Starts that program on its own, with the token in its environment, and gives its process id; throws Failure.
    using Starter = std::function<qint64(const QString& program, const QByteArray& token)>;
    /// `clock` outlives it. `starter` and `isAlive` are the system's, unless given.
    explicit Succession(Clock& clock, Starter starter = {}, std::function<bool(qint64)> isAlive = {});

    /// Starts `program` and ends when it has given its word. Throws Failure when it could not be started, ended, or was
    /// silent for twenty seconds, and then ends it. One at a time.
    Task<void> begin(QString program);
    /// Whether `message` is a successor's, asked for or not.
    bool take(const QByteArray& message);

private:
    Clock& m_clock;
    const Starter m_start;
    const std::function<bool(qint64)> m_isAlive;
    QByteArray m_token; // empty while nobody is waited for
    bool m_isHere = false;
};

} // namespace palvera
