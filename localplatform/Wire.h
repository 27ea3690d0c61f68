#pragma once

#include "http/HttpClient.h"

#include <QJsonObject>
#include <QString>

namespace palvera::local {

/// The head of a request as it stood on the wire.
struct RequestHead {
    QByteArray method;
    QByteArray target; ///< path and query, byte for byte
    HttpHeaders headers = {};
};

/// An answer without its Content-Length, which the transport adds.
struct Reply {
    int status = 200;
    HttpHeaders headers = {};
    QByteArray body = {};
};

/// Thrown by whoever turns a request down; becomes the answer.
struct Refusal {
    int status = 400;
    QString error;   ///< the machine's reason
    QString message; ///< for people
    bool violation = false;
};

/// Turns a proper request down.
[[noreturn]] void refuse(int status, const QString& error, const QString& message);
/// Turns down what no proper client sends: status 400, and it is counted.
[[noreturn]] void violate(const QString& what);

Reply jsonReply(const QJsonObject& object, int status = 200);
Reply htmlReply(const QByteArray& html, int status = 200);
Reply refusalReply(const Refusal& refusal);
/// What a Cookie header says under `name`; null when nothing.
QString cookieValue(const QByteArray& cookies, const QByteArray& name);
/// Something that nobody guesses, which begins with what it is for.
QString token(const char* kind);
/// How storage words a refusal.
Reply storageRefusal(int status, const QByteArray& code, const QByteArray& message);

} // namespace palvera::local
