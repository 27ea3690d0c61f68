#include "http/CookieStore.h"

#include "files/AtomicFile.h"
#include "files/FileError.h"
#include "files/Folders.h"
#include "files/SmallFile.h"
#include "http/CookieFile.h"
#include "http/CurlLibrary.h"

#include <QFile>
#include <QFileInfo>

#include <QHash>

#include <curl/curl.h>

#include <new>

namespace palvera {

namespace {

constexpr qint64 largestFile = 4 << 20;
/// The platform sets a handful. Each request takes all of its host's along, so more would make every one longer.
constexpr int mostOfOneDomain = 64;

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

CookieStore::CookieStore(QString file) : m_file(std::move(file)), m_share(newShare())
{
    static_assert(lockCount >= CURL_LOCK_DATA_LAST);
    curl_lock_function lockFunction = [](CURL*, curl_lock_data what, curl_lock_access, void* self) {
        static_cast<CookieStore*>(self)->m_locks[what].lock();
    };
    curl_unlock_function unlockFunction = [](CURL*, curl_lock_data what, void* self) {
        static_cast<CookieStore*>(self)->m_locks[what].unlock();
    };
    curl_share_setopt(m_share, CURLSHOPT_USERDATA, this);
    curl_share_setopt(m_share, CURLSHOPT_LOCKFUNC, lockFunction);
    curl_share_setopt(m_share, CURLSHOPT_UNLOCKFUNC, unlockFunction);
    for (auto what : {CURL_LOCK_DATA_COOKIE, CURL_LOCK_DATA_DNS, CURL_LOCK_DATA_SSL_SESSION})
        curl_share_setopt(m_share, CURLSHOPT_SHARE, what);
    load();
}

CookieStore::~CookieStore()
{
    curl_share_cleanup(m_share);
}

void CookieStore::load()
{
    if (m_file.isEmpty())
        return;
    sweepStaging(QFileInfo(m_file).absolutePath(), std::chrono::system_clock::now());
    m_written = readSmallFile(m_file, largestFile).value_or(QByteArray());
    auto easy = openCookies(m_share);
    for (const auto& cookie : readCookies(m_written, std::chrono::system_clock::now()))
        curl_easy_setopt(easy.get(), CURLOPT_COOKIELIST, cookie.constData());
}

QByteArrayList CookieStore::all() const
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

/// What a domain sets beyond its share is given up, the latest first.
void CookieStore::keepBounds()
{
    QHash<QByteArray, int> counts;
    EasyPointer easy;
    for (const auto& line : all()) {
        auto fields = line.split('\t');
        if (++counts[fields[0]] <= mostOfOneDomain)
            continue;
        fields[4] = "1"; // its expiry, long past: libcurl lets go of it
        easy = easy ? std::move(easy) : openCookies(m_share);
        curl_easy_setopt(easy.get(), CURLOPT_COOKIELIST, fields.join('\t').constData());
    }
}

void CookieStore::clear()
{
    std::lock_guard guard(m_fileLock);
    curl_easy_setopt(openCookies(m_share).get(), CURLOPT_COOKIELIST, "ALL");
    m_written.clear();
    if (!m_file.isEmpty())
        QFile::remove(m_file);
}

void CookieStore::save()
{
    keepBounds();
    if (m_file.isEmpty())
        return;
    std::lock_guard guard(m_fileLock);
    auto contents = writeCookies(readCookies(all().join('\n'), std::chrono::system_clock::now()));
    if (contents == m_written)
        return;
    auto folder = QFileInfo(m_file).absolutePath();
    makePrivateFolder(folder);
    try {
        writeFileAtomically(m_file, contents, folder, FileAccess::ownerOnly);
        m_written = contents;
    } catch (const FileError&) {
        // In memory they serve this run, and the next save tries again.
    }
}

} // namespace palvera
