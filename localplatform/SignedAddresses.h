#pragma once

#include "async/Clock.h"

#include <QByteArray>
#include <QString>

#include <variant>

namespace palvera::local {

/// The place of one part in storage.
struct PartPlace {
    qint64 serial = 0; ///< of the upload
    int part = 0;      ///< counts from 1
};

/// An object in storage.
struct ObjectPlace {
    QString key;
};

using StoragePlace = std::variant<PartPlace, ObjectPlace>;

/// The signed target (path and query) of one part's upload, or of one object's download.
///
/// The signature covers the method and the target byte for byte, and both path and query hold what a client that takes
/// addresses apart would respell: lower-case escapes, escapes of unreserved characters, plus signs and dots.
QByteArray partTarget(const PartPlace& place, const QString& filename, Clock::WallTime expires);
QByteArray objectTarget(const ObjectPlace& place, Clock::WallTime expires);

/// What `target` names, whoever signed it; a violation (404) when it names nothing.
StoragePlace placeOf(QByteArrayView target);

/// Refuses (403) unless `target` was signed for `method` and is still good at `now`. A signature that does not fit is
/// counted as a violation, an old one is not.
void verifyTarget(QByteArrayView method, QByteArrayView target, Clock::WallTime now);

} // namespace palvera::local
