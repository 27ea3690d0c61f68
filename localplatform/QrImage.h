#pragma once

#include <QString>

namespace palvera::local {

/// A small picture that looks like the QR code of `secret`, as a data: address of a PNG. No app reads it: the account
/// that shows it takes a fixed code.
QString qrImage(const QByteArray& secret);

} // namespace palvera::local
