#pragma once

#include "http/CookieJar.h"
#include "http/HttpSession.h"

#include <curl/curl.h>

#include <new>
#include <unordered_map>
#include <vector>

namespace palvera {

/// Sets an option of libcurl's that cannot fail but for want of memory.
inline void setOption(CURL* easy, CURLoption option, auto value)
{
    if (curl_easy_setopt(easy, option, value) == CURLE_OUT_OF_MEMORY)
        throw std::bad_alloc();
}

/// libcurl's easy handles of one session, with the options that all of its requests share. Session's strand only.
///
/// Handles serve again and are never reset: a reset throws the upload buffer away, and fresh memory for every part
/// costs a tenth of the time of sending it; besides, libcurl 7.88 leaks when the cookie engine is in use.
class CurlHandles {
public:
    explicit CurlHandles(HttpSessionOptions options) : m_options(std::move(options)) {}
    ~CurlHandles();
    CurlHandles(const CurlHandles&) = delete;
    CurlHandles& operator=(const CurlHandles&) = delete;

    const HttpSessionOptions& options() const { return m_options; }

    /// A handle whose address, method, headers and data pointers may be those of an earlier request, with the cookies
    /// of `jar`, if any: a session's requests either all have one or none does.
    CURL* take(std::shared_ptr<CookieJar> jar);
    void giveBack(CURL* easy) { m_spare.push_back(easy); }

private:
    CURL* make() const;
    void setConnection(CURL* easy) const;
    void setTrust(CURL* easy) const;

    const HttpSessionOptions m_options;
    std::unordered_map<CURL*, std::shared_ptr<CookieJar>> m_jars; // that the handles refer to
    std::vector<CURL*> m_spare;
};

} // namespace palvera
