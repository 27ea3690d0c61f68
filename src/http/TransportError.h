#pragma once

#include "async/Failure.h"

namespace palvera {

/// The network or the peer failed below HTTP. An HTTP status, whatever it is, is an answer and never one of these.
class TransportError : public Failure {
public:
    enum class Kind {
        noNetwork, ///< no usable network path came up within the request's time-out
        connect,   ///< the host is unknown or nobody listens there
        proxy,     ///< a proxy does not let this client through
        tls,       ///< no encrypted connection came about
        untrusted, ///< there is nobody at the other end whom this machine trusts, or no encryption where there must be
        idle,      ///< no byte moved either way for the request's idle time-out
        timedOut,  ///< the request as a whole took longer than it may
        broken,    ///< the connection was cut or the answer was not HTTP
        tooLarge,  ///< the answer's body passed the request's limit
    };

    TransportError(Kind kind, const QString& text) : Failure(text), m_kind(kind) {}

    Kind kind() const { return m_kind; }
    /// Whether the same will happen again until somebody changes a setting: waiting and trying again is no use.
    bool isLasting() const { return m_kind == Kind::proxy || m_kind == Kind::untrusted; }

private:
    Kind m_kind;
};

/// Whether `failure` is a TransportError that lasts.
inline bool isLasting(const std::exception_ptr& failure)
{
    const auto error = failureAs<TransportError>(failure);
    return error && error->isLasting();
}

} // namespace palvera
