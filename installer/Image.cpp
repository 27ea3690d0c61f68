#include "installer/Image.h"

#include "installer/Refused.h"
#include "installer/Tree.h"

#include <QtEndian>

#include <openssl/evp.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace palvera::installer {

namespace {

constexpr QByteArrayView magic("PVIMAGE1");
constexpr QByteArrayView signedPrefix("palvera image 1\n");
constexpr qsizetype lengthAt = 8, signatureAt = 12, signatureSize = 64, headerSize = signatureAt + signatureSize;
constexpr qint64 pieceSize = 1 << 20;
constexpr qsizetype hashSize = 32;

using HashContext = std::unique_ptr<EVP_MD_CTX, decltype([](EVP_MD_CTX* each) { EVP_MD_CTX_free(each); })>;
using Key = std::unique_ptr<EVP_PKEY, decltype([](EVP_PKEY* each) { EVP_PKEY_free(each); })>;

const unsigned char* bytesOf(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

QByteArray readAt(const FileDescriptor& file, qint64 from, qint64 count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    for (qint64 done = 0; done < count;) {
        const auto got =
            ::pread(file.number(), bytes.data() + done, static_cast<std::size_t>(count - done), from + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) // the file has been cut since its size was asked for, or cannot be read
            throw Refused{got == 0 ? Refusal::incomplete : Refusal::damaged};
        done += got;
    }
    return bytes;
}

bool isSigned(const QByteArray& message, const QByteArray& signature, const PublicKey& raw)
{
    const Key key(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytesOf(raw), static_cast<std::size_t>(raw.size())));
    const HashContext context(EVP_MD_CTX_new());
    return key && context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytesOf(signature), static_cast<std::size_t>(signature.size()),
                            bytesOf(message), static_cast<std::size_t>(message.size())) == 1;
}

/// The size of a regular file. A pipe, a socket or a device could keep its reader waiting for ever.
qint64 sizeOf(const FileDescriptor& file)
{
    struct stat found;
    if (::fstat(file.number(), &found) != 0 || !S_ISREG(found.st_mode))
        throw Refused{Refusal::damaged};
    return found.st_size;
}

} // namespace

Image::Image(const FileDescriptor& file, const QList<PublicKey>& keys) : m_file(file)
{
    const auto whole = sizeOf(file);
    if (whole < headerSize)
        throw Refused{Refusal::damaged};
    const auto header = readAt(file, 0, headerSize);
    const auto length = qint64{qFromLittleEndian<quint32>(header.constData() + lengthAt)};
    if (!header.startsWith(magic) || length > longestManifest)
        throw Refused{Refusal::damaged};
    m_payloadFrom = headerSize + length;
    if (whole < m_payloadFrom)
        throw Refused{Refusal::incomplete};
    const auto text = readAt(file, headerSize, length);
    const auto message = signedPrefix.toByteArray() + text;
    const auto signature = header.sliced(signatureAt, signatureSize);
    if (std::ranges::none_of(keys, [&](const PublicKey& key) { return isSigned(message, signature, key); }))
        throw Refused{Refusal::notSigned};
    m_manifest = readManifest(text);
    if (whole != m_payloadFrom + m_manifest.size)
        throw Refused{whole < m_payloadFrom + m_manifest.size ? Refusal::incomplete : Refusal::damaged};
}

void Image::copyPayloadTo(const FileDescriptor& out) const
{
    const HashContext context(EVP_MD_CTX_new());
    bool isHashed = context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
    for (qint64 done = 0; done < m_manifest.size;) {
        const auto piece = readAt(m_file, m_payloadFrom + done, std::min(pieceSize, m_manifest.size - done));
        isHashed =
            isHashed && EVP_DigestUpdate(context.get(), piece.constData(), static_cast<std::size_t>(piece.size())) == 1;
        writeAll(out, piece);
        done += piece.size();
    }
    QByteArray digest(hashSize, '\0');
    isHashed =
        isHashed && EVP_DigestFinal_ex(context.get(), reinterpret_cast<unsigned char*>(digest.data()), nullptr) == 1;
    if (!isHashed || digest != m_manifest.sha256)
        throw Refused{Refusal::damaged};
}

} // namespace palvera::installer
