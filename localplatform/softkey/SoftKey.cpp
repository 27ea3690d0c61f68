#include "localplatform/softkey/SoftKey.h"

#include "localplatform/softkey/Cryptography.h"

#include <QCborArray>
#include <QCborValue>
#include <QtEndian>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>

namespace palvera::local {

namespace {

// CTAP 2.1: 6 (commands), 6.5 (PIN protocols), 8.2 (status codes).

enum class Status : char {
    ok = 0x00,
    invalidCommand = 0x01,
    keepAliveCancel = 0x2d,
    noCredentials = 0x2e,
    notAllowed = 0x30,
    pinInvalid = 0x31,
    pinBlocked = 0x32,
    pinAuthInvalid = 0x33,
    pinNotSet = 0x35,
    tokenRequired = 0x36,
};

enum Command { makeCredential = 1, getAssertion = 2, getInfo = 4, clientPinCommand = 6, getNextAssertion = 8 };
enum PinCommand {
    getRetries = 1,
    getKeyAgreement = 2,
    getToken = 5,
    getTokenByFinger = 6,
    getTokenWithPermissions = 9
};

constexpr int mostTries = 8;

QByteArray failure(Status status)
{
    return QByteArray(1, char(status));
}

/// libfido2 takes a map in canonical order alone: shorter keys first.
QByteArray success(const QCborMap& map)
{
    return failure(Status::ok) + map.toCborValue().toCbor();
}

QCborMap bodyOf(const QByteArray& request)
{
    return QCborValue::fromCbor(request.mid(1)).toMap();
}

bool waitsForTouch(const QByteArray& request)
{
    if (request.isEmpty())
        return false;
    const auto body = bodyOf(request);
    switch (request[0]) {
    case makeCredential: // which libfido2 sends in order to see which key is touched
        return true;
    case getAssertion:
        return body[5].toMap()[QStringLiteral("up")].toBool(true);
    case clientPinCommand:
        return body[2].toInteger() == getTokenByFinger;
    default:
        return false;
    }
}

/// Functions that open a device get nothing but its path.
class Paths {
public:
    std::string pathOf(SoftKey* key)
    {
        std::lock_guard guard(m_lock);
        const auto path = "soft:" + std::to_string(reinterpret_cast<std::uintptr_t>(key));
        m_keys[path] = key;
        return path;
    }
    SoftKey* find(const char* path)
    {
        std::lock_guard guard(m_lock);
        const auto found = m_keys.find(path);
        return found == m_keys.end() ? nullptr : found->second;
    }

private:
    std::mutex m_lock;
    std::map<std::string, SoftKey*, std::less<>> m_keys;
};
Paths paths;

void* openKey(const char* path)
{
    auto* key = paths.find(path);
    return key && key->isPlugged() ? key : nullptr;
}

} // namespace

SoftPasskey SoftPasskey::make(const QByteArray& relyingParty, const QString& name, bool isDiscoverable)
{
    return {.id = random(32),
            .relyingParty = relyingParty,
            .user = name.toUtf8(),
            .name = name,
            .isDiscoverable = isDiscoverable,
            .key = makeKey()};
}

SoftKey::SoftKey(Options options)
    : m_options(std::move(options)),
      m_isTouched(m_options.isTouched),
      m_triesLeft(mostTries),
      m_agreement(makeKey()),
      m_token(random(32))
{}

void SoftKey::touch()
{
    setTouched(true);
}

void SoftKey::setTouched(bool isTouched)
{
    std::lock_guard guard(m_lock);
    m_isTouched = isTouched;
    m_changed.notify_all();
}

void SoftKey::setPlugged(bool isPlugged)
{
    std::lock_guard guard(m_lock);
    m_isPlugged = isPlugged;
    m_changed.notify_all();
}

bool SoftKey::isPlugged() const
{
    std::lock_guard guard(m_lock);
    return m_isPlugged;
}

int SoftKey::triesLeft() const
{
    std::lock_guard guard(m_lock);
    return m_triesLeft;
}

int SoftKey::cancellations() const
{
    std::lock_guard guard(m_lock);
    return m_cancellations;
}

int SoftKey::endlessWaits() const
{
    std::lock_guard guard(m_lock);
    return m_endlessWaits;
}

std::size_t SoftKey::fill(fido_dev_info_t* list, const std::vector<SoftKey*>& keys)
{
    // The functions below the transport are never called, but must be there.
    static const fido_dev_io_t io{.open = openKey,
                                  .close = [](void*) {},
                                  .read = [](void*, unsigned char*, std::size_t, int) { return -1; },
                                  .write = [](void*, const unsigned char*, std::size_t) { return -1; }};
    static const fido_dev_transport_t transport{.rx = receive, .tx = transmit};
    std::size_t count = 0;
    for (auto* key : keys)
        if (key->isPlugged())
            fido_dev_info_set(list, count++, paths.pathOf(key).c_str(), "Palvera", "Software key", &io, &transport);
    return count;
}

int SoftKey::transmit(fido_dev_t* device, unsigned char command, const unsigned char* data, std::size_t size)
{
    auto& key = *static_cast<SoftKey*>(fido_dev_io_handle(device));
    std::lock_guard guard(key.m_lock);
    if (!key.m_isPlugged)
        return -1;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    if (command == CTAP_CMD_INIT) {
        key.m_nonce = bytes;
    } else if (command == CTAP_CMD_CBOR) {
        key.m_request = bytes;
        key.m_isCancelled = false;
    } else if (command == CTAP_CMD_CANCEL) { // heard while a request waits, and at no other time
        ++key.m_cancellations;
        key.m_isCancelled = !key.m_request.isEmpty();
        key.m_changed.notify_all();
    }
    return 0;
}

int SoftKey::receive(fido_dev_t* device, unsigned char command, unsigned char* data, std::size_t room, int ms)
{
    auto& key = *static_cast<SoftKey*>(fido_dev_io_handle(device));
    std::unique_lock guard(key.m_lock);
    if (ms < 0)
        ++key.m_endlessWaits;
    QByteArray answer;
    if (command == CTAP_CMD_INIT) {
        constexpr char talksCbor = 0x04, noOlderMessages = 0x08;
        const char capabilities = key.m_options.isFido2 ? talksCbor | noOlderMessages : 0;
        const char rest[] = {0, 0, 0, 1, 2, 1, 0, 0, capabilities}; // the channel, versions, capabilities
        answer = key.m_nonce + QByteArray(rest, sizeof rest);
    } else {
        if (waitsForTouch(key.m_request)) {
            const auto isOver = [&key] { return key.m_isTouched || key.m_isCancelled || !key.m_isPlugged; };
            if (ms < 0)
                key.m_changed.wait(guard, isOver);
            else if (!key.m_changed.wait_for(guard, std::chrono::milliseconds(ms), isOver))
                return -1; // the request goes on waiting
        }
        answer = key.m_isCancelled ? failure(Status::keepAliveCancel) : key.answer(key.m_request);
        key.m_request.clear();
        key.m_isCancelled = false;
    }
    if (!key.m_isPlugged || std::size_t(answer.size()) > room)
        return -1;
    std::memcpy(data, answer.constData(), std::size_t(answer.size()));
    return int(answer.size());
}

QByteArray SoftKey::answer(const QByteArray& request)
{
    switch (request.isEmpty() ? 0 : request[0]) {
    case makeCredential:
        return failure(m_options.pin.isEmpty() ? Status::pinNotSet : Status::pinInvalid);
    case getAssertion:
        return assertion(bodyOf(request));
    case getInfo:
        return info();
    case clientPinCommand:
        return clientPin(bodyOf(request));
    case getNextAssertion: {
        if (m_others.empty())
            return failure(Status::notAllowed);
        const auto* next = m_others.front();
        m_others.erase(m_others.begin());
        return sign(*next, 0);
    }
    default:
        return failure(Status::invalidCommand);
    }
}

QByteArray SoftKey::info() const
{
    QCborMap options{{QStringLiteral("rk"), true}, {QStringLiteral("up"), true}};
    if (m_options.knowsFinger)
        options[QStringLiteral("uv")] = true;
    options[QStringLiteral("clientPin")] = !m_options.pin.isEmpty();
    options[QStringLiteral("pinUvAuthToken")] = true;
    return success({{1, QCborArray{QStringLiteral("FIDO_2_0"), QStringLiteral("FIDO_2_1")}},
                    {3, QByteArray(16, 'p')}, // its model
                    {4, options},
                    {5, 1200}, // the longest message, in bytes
                    {6, QCborArray{2}},
                    {9, QCborArray{QStringLiteral("usb")}},
                    {10, QCborArray{QCborMap{{QStringLiteral("alg"), -7},
                                             {QStringLiteral("type"), QStringLiteral("public-key")}}}}});
}

QByteArray SoftKey::clientPin(const QCborMap& request)
{
    const auto command = request[2].toInteger();
    if (command == getRetries)
        return success({{3, m_triesLeft}});
    if (command == getKeyAgreement)
        return success({{1, coseKey(m_agreement.get())}});
    if (command != getToken && command != getTokenByFinger && command != getTokenWithPermissions)
        return failure(Status::invalidCommand);
    const auto key = cipherKey(sharedSecret(m_agreement.get(), request[3].toMap()));
    if (command != getTokenByFinger) {
        if (m_triesLeft == 0)
            return failure(Status::pinBlocked);
        if (decrypted(key, request[6].toByteArray()) != sha256(m_options.pin).left(16)) {
            m_agreement = makeKey();
            return failure(--m_triesLeft == 0 ? Status::pinBlocked : Status::pinInvalid);
        }
        m_triesLeft = mostTries;
    }
    return success({{2, encrypted(key, m_token)}});
}

QByteArray SoftKey::assertion(const QCborMap& request)
{
    const auto relyingParty = request[1].toString().toUtf8();
    m_hash = request[2].toByteArray();
    m_isVerified = request.contains(6);
    if (m_isVerified && request[6].toByteArray() != hmac(m_token, m_hash))
        return failure(Status::pinAuthInvalid);
    if (!m_isVerified && request[5].toMap()[QStringLiteral("uv")].toBool())
        return failure(Status::tokenRequired);
    m_others.clear();
    const auto allowed = request[3].toArray();
    const auto isAllowed = [&](const SoftPasskey& passkey) {
        return allowed.isEmpty() ? passkey.isDiscoverable : std::ranges::any_of(allowed, [&](const QCborValue& each) {
            return each.toMap()[QStringLiteral("id")].toByteArray() == passkey.id;
        });
    };
    for (const auto& passkey : m_options.passkeys)
        if (passkey.relyingParty == relyingParty && isAllowed(passkey))
            m_others.push_back(&passkey);
    if (m_others.empty())
        return failure(Status::noCredentials);
    if (!allowed.isEmpty())
        m_others.resize(1);
    const auto total = m_others.size();
    const auto* first = m_others.front();
    m_others.erase(m_others.begin());
    return sign(*first, total);
}

QByteArray SoftKey::sign(const SoftPasskey& passkey, std::size_t total)
{
    constexpr char userPresent = 0x01, userVerified = 0x04;
    QByteArray counter(4, '\0');
    qToBigEndian(++m_signatures, counter.data());
    const auto data =
        sha256(passkey.relyingParty) + QByteArray(1, char(userPresent | (m_isVerified ? userVerified : 0))) + counter;
    QCborMap map{
        {1, QCborMap{{QStringLiteral("id"), passkey.id}, {QStringLiteral("type"), QStringLiteral("public-key")}}},
        {2, data},
        {3, signature(passkey.key.get(), data + m_hash)}};
    if (passkey.isDiscoverable) {
        QCborMap user{{QStringLiteral("id"), passkey.user}};
        if (m_isVerified && !passkey.name.isEmpty()) // which nobody else is to learn
            user[QStringLiteral("name")] = passkey.name;
        map[4] = user;
    }
    if (total > 1)
        map[5] = qint64(total);
    return success(map);
}

} // namespace palvera::local
