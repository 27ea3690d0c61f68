#pragma once

#include <QByteArray>
#include <QCborMap>
#include <QString>

#include <fido.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

struct evp_pkey_st;

namespace palvera::local {

/// A passkey that a software key holds.
struct SoftPasskey {
    QByteArray id;
    QByteArray relyingParty;
    QByteArray user = {};
    QString name = {};
    bool isDiscoverable = false;
    std::shared_ptr<evp_pkey_st> key = {}; ///< of the curve P-256

    /// With a key and an id of its own.
    static SoftPasskey make(const QByteArray& relyingParty, const QString& name, bool isDiscoverable);
};

/// A security key of software: a FIDO2 authenticator (CTAP 2.1, PIN protocol 2, ES256) behind the transport functions
/// of libfido2, which talks to it as to any key. Any thread.
class SoftKey {
public:
    struct Options {
        QByteArray pin = {};      ///< none: the key verifies nobody
        bool knowsFinger = false; ///< verifies its user by itself, at a touch
        bool isTouched = true;    ///< at once; else at `touch`
        bool isFido2 = true;      ///< else one of the older kind
        std::vector<SoftPasskey> passkeys = {};
    };

    explicit SoftKey(Options options);

    void touch();
    void setTouched(bool isTouched);
    void setPlugged(bool isPlugged);
    bool isPlugged() const;
    int triesLeft() const;
    int cancellations() const; ///< that it was told of
    /// How often somebody would have waited for it for ever, had it said nothing.
    int endlessWaits() const;

    /// Puts those of `keys` that are plugged in on `list`, which has room for them; gives how many. They outlive
    /// whoever uses the list.
    static std::size_t fill(fido_dev_info_t* list, const std::vector<SoftKey*>& keys);

private:
    static int transmit(fido_dev_t* device, unsigned char command, const unsigned char* data, std::size_t size);
    static int receive(fido_dev_t* device, unsigned char command, unsigned char* data, std::size_t room, int ms);

    // All that follows is under m_lock.
    QByteArray answer(const QByteArray& request);
    QByteArray info() const;
    QByteArray clientPin(const QCborMap& request);
    QByteArray assertion(const QCborMap& request);
    QByteArray sign(const SoftPasskey& passkey, std::size_t total);

    const Options m_options;
    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_isTouched;
    bool m_isPlugged = true;
    int m_triesLeft;
    QByteArray m_nonce;
    QByteArray m_request; // that waits for its answer
    bool m_isCancelled = false;
    int m_cancellations = 0;
    int m_endlessWaits = 0;
    std::shared_ptr<evp_pkey_st> m_agreement; // with whom a PIN is entered
    QByteArray m_token;                       // whoever has it has entered the PIN
    std::vector<const SoftPasskey*> m_others; // that may answer as well as the first
    QByteArray m_hash;                        // of the client data
    bool m_isVerified = false;
    quint32 m_signatures = 0;
};

} // namespace palvera::local
