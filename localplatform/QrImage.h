#pragma once

#include <QString>

namespace palvera::local {

/// A small picture that looks like a QR code, as a data: address of a PNG. No app reads it: the account that shows it
/// takes a fixed code.
extern const QString qrImage;

} // namespace palvera::local
