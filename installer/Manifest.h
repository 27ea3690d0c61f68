#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera::installer {

constexpr qint64 longestManifest = 64 << 10; // bytes

/// What an image says of itself, signed by the publisher.
struct Manifest {
    QString product;
    QString system;
    QString version;
    qint64 build = 0;
    qint64 size = 0;         // of the payload, bytes
    QByteArray sha256;       // of the payload, 32 bytes
    qint64 unpackedSize = 0; // of all files together, bytes
    qint64 files = 0;        // entries of any kind
    QByteArray text;         // as signed
};

/// Reads a manifest strictly: every field there, of its type and within its range. Further fields are let through, so
/// that an older installer takes what a younger publisher says in addition. Throws Refused.
Manifest readManifest(const QByteArray& text);

/// The number of a build: digits without a leading zero, above 0. So a build has one name only, in a folder's as well.
std::optional<qint64> buildNumber(QByteArrayView text);

} // namespace palvera::installer
