#include "Require.h"

#include "http/CookieFile.h"
#include "http/CookieStore.h"
#include "support/Files.h"

#include <QTemporaryDir>

// The file of cookies, which a crash, another version or somebody else may have left in any state, while this program
// has a sign-in of its own to keep.
void palvera::check(const QByteArray& input)
{
    const auto now = std::chrono::system_clock::now();
    const auto cookies = readCookies(input, now);
    require(readCookies(writeCookies(cookies), now) == cookies, "what is kept is read back");

    static const QTemporaryDir folder;
    static const QByteArrayList own{"#HttpOnly_service.test\tFALSE\t/\tFALSE\t4000000000\tpv_session\town"};
    const auto path = folder.filePath("cookies");
    writeFile(path, input);
    CookieStore store(path);
    store.jar()->put(own);
    store.save();
    require(store.problem().isEmpty(), "any file is replaced");
    require(CookieStore(path).jar()->all().contains(own.first()), "the sign-in is kept");
}
