#pragma once

#include <QByteArray>
#include <QCborMap>

#include <memory>

struct evp_pkey_st;

namespace palvera::local {

// What a security key computes with. Points are on the curve P-256.

using Key = std::shared_ptr<evp_pkey_st>;

QByteArray random(qsizetype size);
Key makeKey();
QByteArray sha256(const QByteArray& data);
QByteArray hmac(const QByteArray& key, const QByteArray& data);
/// The key that PIN protocol 2 derives for ciphers (CTAP 2.1, 6.5.7).
QByteArray cipherKey(const QByteArray& secret);
/// AES-256 in CBC without padding; the first block is the initialisation vector.
QByteArray encrypted(const QByteArray& key, const QByteArray& plain);
/// Empty when that is not so long as a cipher of whole blocks.
QByteArray decrypted(const QByteArray& key, const QByteArray& cipher);
/// As COSE has it (RFC 9053, 7.1).
QCborMap coseKey(evp_pkey_st* key);
/// What both sides of a key agreement share: the x coordinate.
QByteArray sharedSecret(evp_pkey_st* own, const QCborMap& theirs);
/// ECDSA with SHA-256, in DER.
QByteArray signature(evp_pkey_st* key, const QByteArray& data);

} // namespace palvera::local
