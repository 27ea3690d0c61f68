#include "localplatform/softkey/Cryptography.h"

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <memory>

namespace palvera::local {

namespace {

constexpr qsizetype blockSize = 16;

const unsigned char* in(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}
unsigned char* out(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

} // namespace

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

QByteArray cipherKey(const QByteArray& secret)
{
    const QByteArray salt(32, '\0'), info = "CTAP2 AES key";
    return hmac(hmac(salt, secret), info + '\x01'); // HKDF (RFC 5869) with one block of output
}

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

QCborMap coseKey(EVP_PKEY* key)
{
    QByteArray point(65, Qt::Uninitialized); // 4, x, y
    std::size_t size = 0;
    EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, out(point), std::size_t(point.size()), &size);
    return {{1, 2}, {3, -25}, {-1, 1}, {-2, point.mid(1, 32)}, {-3, point.mid(33)}};
}

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

} // namespace palvera::local
