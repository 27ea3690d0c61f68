#pragma once

#include <QByteArray>
#include <QString>

namespace palvera::local {

/// On which a browser says who signs in; `email`, where given, is offered first.
QByteArray signInPage(const QString& provider, const QString& email);

/// On which a passkey is made for an account.
QByteArray passkeysPage();

/// The last one: says `text` and sends the browser to the application with the query `items`.
QByteArray endPage(const QByteArray& text, const QByteArray& items);

} // namespace palvera::local
