#include "HttpFixture.h"

#include <dlfcn.h>
#include <netdb.h>

/// Stands in front of the C library's own, for every library of the program.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result)
{
    const auto asked = QByteArrayView(name ? name : "");
    if (asked == "slow.test") {
        palvera::slowNameAsked.release();
        palvera::slowNameLetGo.try_acquire_for(std::chrono::seconds(10));
    }
    if (asked.endsWith(".test"))
        return EAI_NONAME;
    static auto* real = reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(name, service, hints, result);
}
