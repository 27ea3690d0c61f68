#include "localplatform/softkey/SoftKey.h"

#include <QCborArray>
#include <QCborValue>
#include <QtEndian>

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

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
constexpr qsizetype blockSize = 16;

using Key = std::shared_ptr<EVP_PKEY>;

const unsigned char* in(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}
unsigned char* out(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

QByteArray random(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    RAND_bytes(out(bytes), int(size));
    return bytes;
}

Key makeKey()
{
    return {EVP_EC_gen("P-256"), &EVP_PKEY_free};
}

QByteArray sha256(const QByteArray& data)
{
    QByteArray hash(32, Qt::Uninitialized);
    EVP_Digest(data.constData(), std::size_t(data.size()), out(hash), nullptr, EVP_sha256(), nullptr);
    return hash;
}

QByteArray hmac(const QByteArray& key, const QByteArray& data)
{
    QByteArray code(32, Qt::Uninitialized);
    HMAC(EVP_sha256(), key.constData(), int(key.size()), in(data), std::size_t(data.size()), out(code), nullptr);
    return code;
}

/// The key that protocol 2 derives for ciphers (6.5.7).
QByteArray cipherKey(const QByteArray& secret)
{
    const QByteArray salt(32, '\0'), info = "CTAP2 AES key";
    return hmac(hmac(salt, secret), info + '\x01'); // HKDF (RFC 5869) with one block of output
}

/// AES-256 in CBC without padding; the first block is the initialisation vector.
QByteArray encrypted(const QByteArray& key, const QByteArray& plain)
{
    auto result = random(blockSize) + plain;
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    EVP_EncryptInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, in(key), in(result));
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    int written = 0;
    EVP_EncryptUpdate(context.get(), out(result) + blockSize, &written, in(plain), int(plain.size()));
    return result;
}

QByteArray decrypted(const QByteArray& key, const QByteArray& cipher)
{
    if (cipher.size() < 2 * blockSize || cipher.size() % blockSize != 0)
        return {};
    QByteArray plain(cipher.size() - blockSize, Qt::Uninitialized);
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    EVP_DecryptInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, in(key), in(cipher));
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    int written = 0;
    EVP_DecryptUpdate(context.get(), out(plain), &written, in(cipher) + blockSize, int(plain.size()));
    return plain;
}

/// As COSE has it (RFC 9053, 7.1).
QCborMap coseKey(EVP_PKEY* key)
{
    QByteArray point(65, Qt::Uninitialized); // 4, x, y
    std::size_t size = 0;
    EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, out(point), std::size_t(point.size()), &size);
    return {{1, 2}, {3, -25}, {-1, 1}, {-2, point.mid(1, 32)}, {-3, point.mid(33)}};
}

/// What both sides of a key agreement share: the x coordinate.
QByteArray sharedSecret(EVP_PKEY* own, const QCborMap& theirs)
{
    const auto point = "\x04" + theirs[-2].toByteArray() + theirs[-3].toByteArray();
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> peer(EVP_PKEY_new(), &EVP_PKEY_free);
    EVP_PKEY_copy_parameters(peer.get(), own);
    EVP_PKEY_set1_encoded_public_key(peer.get(), in(point), std::size_t(point.size()));
    const std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> context(EVP_PKEY_CTX_new(own, nullptr),
                                                                              &EVP_PKEY_CTX_free);
    QByteArray x(32, Qt::Uninitialized);
    std::size_t size = std::size_t(x.size());
    EVP_PKEY_derive_init(context.get());
    EVP_PKEY_derive_set_peer(context.get(), peer.get());
    EVP_PKEY_derive(context.get(), out(x), &size);
    return x;
}

QByteArray signature(EVP_PKEY* key, const QByteArray& data)
{
    QByteArray made(80, Qt::Uninitialized); // DER of two numbers of 32 bytes
    std::size_t size = std::size_t(made.size());
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, key);
    EVP_DigestSign(context.get(), out(made), &size, in(data), std::size_t(data.size()));
    return made.left(qsizetype(size));
}

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
