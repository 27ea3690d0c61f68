#pragma once

#include <QString>

#include <exception>
#include <string>

namespace palvera {

/// A failure with a text that may be shown to the user as it is. Never holds an address, a cookie or a password.
class Failure : public std::exception {
public:
    explicit Failure(const QString& text) : m_text(text), m_utf8(text.toStdString()) {}

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_utf8.c_str(); }

private:
    QString m_text;
    std::string m_utf8;
};

/// The network or the peer failed below HTTP. An HTTP status, whatever it is, is an answer and never one of these.
class TransportError : public Failure {
public:
    enum class Kind {
        noNetwork, ///< no usable network path came up within the request's time-out
        connect,   ///< the host is unknown or nobody listens there
        tls,       ///< no trusted encrypted connection
        idle,      ///< no byte moved either way for the request's idle time-out
        timedOut,  ///< the request as a whole took longer than it may
        broken,    ///< the connection was cut or the answer was not HTTP
        tooLarge,  ///< the answer's body passed the request's limit
    };

    TransportError(Kind kind, const QString& text) : Failure(text), m_kind(kind) {}

    Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

/// The file system refused.
class FileError : public Failure {
public:
    using Failure::Failure;
};

/// Throws what a cancelled wait throws.
[[noreturn]] void throwCancelled();

/// Whether `failure` is a cancellation. A null pointer is not.
bool isCancellation(const std::exception_ptr& failure);

/// What to show for `failure`: the text of a Failure, else what the exception says of itself.
QString describe(const std::exception_ptr& failure);

} // namespace palvera
