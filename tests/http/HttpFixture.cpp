#include "HttpFixture.h"

#include <dlfcn.h>
#include <netdb.h>

namespace palvera {

HttpResponse HttpFixture::send(HttpRequest request, HttpSessionOptions options)
{
    HttpSession session(executor(), std::move(options));
    return send(session, std::move(request));
}

void HttpFixture::expectFailure(HttpRequest request, TransportError::Kind kind, const QString& text,
                                HttpSessionOptions options)
{
    try {
        ADD_FAILURE() << "answered " << send(std::move(request), std::move(options)).status;
    } catch (const TransportError& error) {
        EXPECT_EQ(error.kind(), kind);
        EXPECT_EQ(error.text(), text);
    }
}

QByteArray patternedBody(qint64 size)
{
    QByteArray body(size, Qt::Uninitialized);
    quint32 state = 12'345;
    for (auto& byte : body)
        byte = char((state = state * 1'664'525 + 1'013'904'223) >> 24);
    return body;
}

} // namespace palvera

/// Stands in front of the C library's own, for every library of the program.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result)
{
    const auto asked = QByteArrayView(name ? name : "");
    if (asked == "slow.test") {
        palvera::slowNameAsked.open();
        palvera::slowNameLetGo.wait();
    }
    if (asked.endsWith(".test"))
        return EAI_NONAME;
    static auto* real = reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(name, service, hints, result);
}
