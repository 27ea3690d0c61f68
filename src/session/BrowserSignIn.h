#pragma once

#include "async/Clock.h"
#include "async/Event.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace palvera {

/// Signs in on the platform's pages in the user's own browser, which comes back with an address of the scheme
/// `palvera`.
///
/// The address that the browser begins at is the platform's, with no room for a secret of ours that would come back. So
/// a callback counts only while one is waited for, and once: nobody else's is ever used. Lives on one serial executor,
/// such as the main thread's.
class BrowserSignIn : public QObject {
    Q_OBJECT

public:
    /// What it works with. Everything referred to outlives it.
    struct Environment {
        Clock& clock;
        /// Has the user's browser show an address. False when there is none; true says little, since what opens
        /// addresses may find no browser either.
        std::function<bool(const QByteArray& address)> show;
        /// For as long as what it gives lives, callbacks that reach another program of the user come to `take`.
        std::function<std::shared_ptr<void>()> listen = [] { return nullptr; };
    };
    static constexpr auto longestWait = std::chrono::minutes(15);
    /// For which a callback that comes after the end is known for what it is.
    static constexpr auto memory = std::chrono::minutes(10);

    explicit BrowserSignIn(Environment environment, QObject* parent = nullptr);

    /// Opens the page at `address` and gives the address that the platform sends the browser to in the end. Throws
    /// SignInDoorError when no browser opens, the user cancels or nothing comes in time. One at a time. Cancelling ends
    /// it; the page stays open.
    Task<QString> signIn(QByteArray address);

    bool isWaiting() const { return m_attempt != nullptr; }
    /// At which the browser began, while it is waited for; else empty.
    QByteArray address() const;
    /// Shows the page once more.
    void showAgain();
    /// As the user wishes, who need not be told.
    void cancel();

    enum class Taken {
        used,
        again,   ///< one has come already
        late,    ///< what it belongs to was cancelled, or had waited for long enough
        unasked, ///< none was waited for
    };
    /// A browser came back, by whatever way. Unless it is `used`, nothing becomes of it.
    Taken take(const QString& callback);

Q_SIGNALS:
    void waitingChanged();

private:
    struct Attempt;
    class Waiting;
    struct End {
        Taken next; ///< what another callback is
        Clock::Moment at;
    };
    std::shared_ptr<Attempt> end(Taken next);

    const Environment m_environment;
    std::shared_ptr<Attempt> m_attempt; // until it ends, in one way of many
    std::optional<End> m_last;
};

} // namespace palvera
