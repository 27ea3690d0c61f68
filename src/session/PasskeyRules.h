#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

/// Bytes as base64url (RFC 4648, 5) without padding.
QString toBase64Url(const QByteArray& bytes);
/// The bytes that `text` stands for, in either alphabet, padded or not; nothing when it stands for none.
std::optional<QByteArray> fromBase64Url(const QString& text);

/// For which relying party a service at `host` may have a passkey sign: a security key signs for whichever it is told,
/// so a wrong or hostile service could have the user signed in elsewhere. It must be the host itself, or a domain that
/// the host is in, of two labels at least; or "localhost" for a service on this machine. Both in lower case.
bool mayAskFor(const QString& relyingParty, const QString& host, bool isLoopback);

/// The client data of an assertion (WebAuthn Level 2, 5.8.1) as a browser writes it. `challenge` is base64url, and
/// `relyingParty` a host name.
QByteArray clientDataFor(const QString& challenge, const QString& relyingParty);

} // namespace palvera
