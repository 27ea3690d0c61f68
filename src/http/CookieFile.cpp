#include "http/CookieFile.h"

namespace palvera {

namespace {

constexpr qsizetype longestLine = 8192; // libcurl takes cookies of up to 4 KiB and domains and paths beside them
constexpr QByteArrayView httpOnly = "#HttpOnly_";

bool isFlag(const QByteArray& field)
{
    return field == "TRUE" || field == "FALSE";
}

bool isKeptCookie(const QByteArray& line, qint64 nowSeconds)
{
    if (line.size() > longestLine || line.contains('\0') || (line.startsWith('#') && !line.startsWith(httpOnly)))
        return false;
    auto fields = line.split('\t'); // domain, for subdomains too, path, encrypted only, expiry, name, value
    if (fields.size() != 7 || fields[0].isEmpty() || !isFlag(fields[1]) || !fields[2].startsWith('/') ||
        !isFlag(fields[3]) || fields[5].isEmpty())
        return false;
    bool isNumber = false;
    qint64 expiry = fields[4].toLongLong(&isNumber); // 0 for a session cookie
    return isNumber && expiry > nowSeconds;
}

} // namespace

QByteArrayList readCookies(const QByteArray& contents, std::chrono::system_clock::time_point now)
{
    qint64 nowSeconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch()).count();
    QByteArrayList kept;
    for (auto& line : contents.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (isKeptCookie(line, nowSeconds))
            kept.append(line);
    }
    return kept;
}

QByteArray writeCookies(const QByteArrayList& cookies)
{
    return cookies.isEmpty() ? QByteArray() : cookies.join('\n') + '\n';
}

} // namespace palvera
