#include "http/CurlFailure.h"

#include <QObject>

namespace palvera {

TransportError transportError(CURLcode result)
{
    using Kind = TransportError::Kind;
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return {Kind::connect, QObject::tr("The server's name was not found.")};
    case CURLE_COULDNT_RESOLVE_PROXY:
        return {Kind::connect, QObject::tr("The proxy's name was not found.")};
    case CURLE_COULDNT_CONNECT:
    case CURLE_INTERFACE_FAILED:
        return {Kind::connect, QObject::tr("Could not connect to the server.")};
    case CURLE_PROXY:
        return {Kind::connect, QObject::tr("The proxy made no connection.")};
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
        return {Kind::untrusted, QObject::tr("The server's certificate is not trusted.")};
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CLIENTCERT:
    case CURLE_USE_SSL_FAILED:
        return {Kind::tls, QObject::tr("No encrypted connection to the server could be made.")};
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
        return {Kind::untrusted, QObject::tr("The trusted certificates could not be read.")};
    case CURLE_OPERATION_TIMEDOUT: // libcurl's own limit on connecting
        return {Kind::connect, QObject::tr("The server did not answer.")};
    case CURLE_UNSUPPORTED_PROTOCOL: // an answer that has no HTTP status
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return {Kind::broken, QObject::tr("The server's answer was not understood.")};
    case CURLE_OUT_OF_MEMORY:
        return {Kind::broken, QObject::tr("There is not enough memory for the request.")};
    default: // libcurl adds results over time; all others mean that the exchange broke off
        return {Kind::broken, QObject::tr("The connection was lost.")};
    }
}

std::optional<TransportError> proxyRefusal(long status)
{
    using Kind = TransportError::Kind;
    constexpr long asksWho = 407, timedOut = 408, tooMany = 429;
    if (status == asksWho)
        return TransportError(Kind::proxy, QObject::tr("The proxy asks for a name and a password."));
    if (status >= 500 || status == timedOut || status == tooMany)
        return TransportError(Kind::connect, QObject::tr("The proxy could not reach the server."));
    if (status >= 400)
        return TransportError(Kind::proxy, QObject::tr("The proxy refused the connection."));
    return {};
}

} // namespace palvera
