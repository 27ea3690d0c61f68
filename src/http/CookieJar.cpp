#include "http/CookieJar.h"

#include "http/CurlLibrary.h"

#include <curl/curl.h>

#include <memory>
#include <new>

namespace palvera {

namespace {

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using EasyPointer = std::unique_ptr<CURL, EasyDeleter>;

/// A handle through which the share's cookies can be read and changed.
EasyPointer openCookies(void* share)
{
    EasyPointer easy(curl_easy_init());
    if (!easy)
        throw std::bad_alloc();
    curl_easy_setopt(easy.get(), CURLOPT_SHARE, share);
    curl_easy_setopt(easy.get(), CURLOPT_COOKIEFILE, ""); // turns the cookie engine on
    return easy;
}

CURLSH* newShare()
{
    startCurl();
    CURLSH* share = curl_share_init();
    if (!share)
        throw std::bad_alloc();
    return share;
}

} // namespace

CookieJar::CookieJar() : m_share(newShare())
{
    static_assert(lockCount >= CURL_LOCK_DATA_LAST);
    curl_lock_function lockFunction = [](CURL*, curl_lock_data what, curl_lock_access, void* self) {
        static_cast<CookieJar*>(self)->m_locks[what].lock();
    };
    curl_unlock_function unlockFunction = [](CURL*, curl_lock_data what, void* self) {
        static_cast<CookieJar*>(self)->m_locks[what].unlock();
    };
    curl_share_setopt(m_share, CURLSHOPT_USERDATA, this);
    curl_share_setopt(m_share, CURLSHOPT_LOCKFUNC, lockFunction);
    curl_share_setopt(m_share, CURLSHOPT_UNLOCKFUNC, unlockFunction);
    for (auto what : {CURL_LOCK_DATA_COOKIE, CURL_LOCK_DATA_DNS, CURL_LOCK_DATA_SSL_SESSION})
        curl_share_setopt(m_share, CURLSHOPT_SHARE, what);
}

CookieJar::~CookieJar()
{
    curl_share_cleanup(m_share);
}

QByteArrayList CookieJar::all() const
{
    auto easy = openCookies(m_share);
    curl_slist* first = nullptr;
    curl_easy_getinfo(easy.get(), CURLINFO_COOKIELIST, &first);
    QByteArrayList lines;
    for (auto* line = first; line; line = line->next)
        lines.append(line->data);
    curl_slist_free_all(first);
    return lines;
}

void CookieJar::put(const QByteArrayList& cookies)
{
    if (cookies.isEmpty())
        return;
    auto easy = openCookies(m_share);
    for (const auto& cookie : cookies)
        curl_easy_setopt(easy.get(), CURLOPT_COOKIELIST, cookie.constData());
}

void CookieJar::remove(const QByteArrayList& cookies)
{
    constexpr qsizetype expiry = 4;
    QByteArrayList expired;
    for (const auto& cookie : cookies) {
        auto fields = cookie.split('\t');
        fields[expiry] = "1"; // long past: libcurl lets go of it
        expired.append(fields.join('\t'));
    }
    put(expired);
}

} // namespace palvera
