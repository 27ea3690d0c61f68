#pragma once

#include "async/Failure.h"
#include "async/Task.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

#include <utility>

#include <string.h>

namespace palvera {

/// What the user enters to open a security key: wiped when it goes.
class Pin {
public:
    /// `text` must be nobody else's, too.
    explicit Pin(QByteArray&& text) : m_text(std::move(text)) {}
    Pin(Pin&& other) noexcept : m_text(std::exchange(other.m_text, {})) {}
    Pin& operator=(Pin&&) = delete;
    ~Pin() { ::explicit_bzero(m_text.data(), std::size_t(m_text.size())); }

    const char* text() const { return m_text.constData(); }

private:
    QByteArray m_text;
};

/// What is to be signed, and with which passkey. All of it as bytes, not as base64.
struct PasskeyRequest {
    QByteArray clientData; ///< JSON, of which the hash is signed
    QByteArray relyingParty;
    QList<QByteArray> allowed; ///< credentials that may answer; none: whichever is there for the relying party
};
struct PasskeyAnswer {
    QByteArray credential;
    QByteArray authenticatorData;
    QByteArray signature;
    QByteArray user; ///< may be empty
};

/// What the user is asked to do.
struct PasskeyPrompt {
    enum class Kind {
        none,    ///< nothing to do
        insert,  ///< no key is there; it goes on once one is
        which,   ///< several keys blink: the one that is touched is meant
        pin,     ///< to be entered by PasskeyService::enterPin
        touch,   ///< the key
        account, ///< to be chosen by PasskeyService::choose
    };

    Kind kind = Kind::none;
    int triesLeft = 0;      ///< of the PIN, before the key locks; negative where the key does not say
    bool isWrong = false;   ///< the PIN that was entered last
    QStringList names = {}; ///< of the accounts, as the key has them

    bool operator==(const PasskeyPrompt&) const = default;
};

/// Why no passkey answered, in words for the user.
class PasskeyFailure : public Failure {
public:
    using Failure::Failure;
};
/// The user did not want to.
class PasskeyCancelled : public PasskeyFailure {
public:
    PasskeyCancelled() : PasskeyFailure(QString()) {}
};

/// What signs with passkeys, and asks the user for what it needs. Main thread.
class PasskeyService : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether something was there that holds passkeys when `look` looked last.
    virtual bool isPresent() const = 0;
    /// Looks without blocking, and from here on whenever something is plugged in or taken out.
    virtual void look() = 0;
    /// Throws PasskeyFailure. One at a time. Cancelling puts the question away, and ends once the key has heard of it.
    virtual Task<PasskeyAnswer> assertion(PasskeyRequest request) = 0;

    virtual const PasskeyPrompt& prompt() const = 0;
    virtual void enterPin(Pin pin) = 0;
    /// The account with that index.
    virtual void choose(int account) = 0;
    /// As the user wishes.
    virtual void cancel() = 0;

Q_SIGNALS:
    void presentChanged();
    void promptChanged();
};

} // namespace palvera
