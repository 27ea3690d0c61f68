#pragma once

#include "http/HttpClient.h"
#include "http/TransportError.h"

namespace palvera {

/// `response`, whose body is whole, as a session would hand it to whoever made `request`.
inline HttpResponse delivered(const HttpRequest& request, HttpResponse response)
{
    if (response.body.isEmpty())
        return response;
    if (request.wantsBody) {
        HttpResponse head{.status = response.status, .headers = response.headers};
        if (!request.wantsBody(head))
            return head;
    }
    response.length = response.body.size();
    if (!request.sink || !response.isSuccess())
        return response;
    if (response.length > request.sink->room())
        throw TransportError(TransportError::Kind::tooLarge, QStringLiteral("The server's answer is too large."));
    constexpr qsizetype packet = 300;
    for (qsizetype at = 0; at < response.body.size(); at += packet) {
        const auto bytes = response.body.mid(at, packet);
        request.sink->take({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    }
    response.body.clear();
    return response;
}

} // namespace palvera
