#pragma once

#include <QByteArray>
#include <QString>

namespace palvera::local {

/// The page in the browser on which a web sign-in picks who signs in; `email`, where given, is offered first.
QByteArray webSignInPage(const QString& provider, const QString& email);

/// The address that ends a web sign-in in the application.
QByteArray grantCallback(const QString& grant);
QByteArray errorCallback(const QByteArray& error);

} // namespace palvera::local
