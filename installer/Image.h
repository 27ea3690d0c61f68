#pragma once

#include "installer/Manifest.h"

#include "files/FileDescriptor.h"

#include <QList>

namespace palvera::installer {

/// An Ed25519 public key, 32 bytes.
using PublicKey = QByteArray;

/// The file that an update comes in:
///
///     0     8   "PVIMAGE1"
///     8     4   M, little endian: bytes of the manifest, at most 64 KiB
///     12    64  Ed25519 signature of "palvera image 1\n" and the manifest
///     76    M   the manifest
///     76+M  …   the payload, a tar compressed by zstd, to the end of the file
///
/// The signature is of the small manifest because Ed25519 wants its whole message in memory; the manifest's hash binds
/// the payload. Whoever handed the file over may write to it at any time: only what was copied is proven.
class Image {
public:
    /// Reads and proves the manifest of the image open as `file`, which must outlive this and is read by position,
    /// since its offset is another process's to move. Throws Refused.
    Image(const FileDescriptor& file, const QList<PublicKey>& keys);

    const Manifest& manifest() const { return m_manifest; }
    /// Copies the payload to `out`, which is empty, and proves that copy. Throws Refused.
    void copyPayloadTo(const FileDescriptor& out) const;

private:
    const FileDescriptor& m_file;
    Manifest m_manifest;
    qint64 m_payloadFrom = 0;
};

} // namespace palvera::installer
