#include "HttpFixture.h"

#include "files/LockFile.h"
#include "http/CookieFile.h"
#include "http/CookieStore.h"

#include <QDir>
#include <QFileInfo>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct CookieStoreTest : HttpFixture {
    QTemporaryDir folder;
    const QString path = folder.filePath("data/cookies");
    LoopbackServer server{answering([](const LoopbackServer::Request& request) {
        const auto setting = request.header("X-Set");
        return answer("200 OK", request.header("Cookie"), setting.isEmpty() ? "" : "Set-Cookie: " + setting + "\r\n");
    })};

    std::shared_ptr<CookieStore> open() { return std::make_shared<CookieStore>(path); }
    /// What a request with `store` sends as its Cookie header, in order of the names.
    QByteArray sentWith(std::shared_ptr<CookieStore> store)
    {
        auto cookies = send({.url = server.url("/")}, {.sharedCookies = std::move(store)}).body.split(' ');
        std::ranges::sort(cookies);
        return cookies.join(' ').replace(';', "");
    }
    /// Has the server set a cookie: `setting` is the value of a Set-Cookie header.
    void receive(std::shared_ptr<CookieStore> store, const QByteArray& setting)
    {
        send({.url = server.url("/"), .headers = {{"X-Set", setting}}}, {.sharedCookies = std::move(store)});
    }
};

TEST_F(CookieStoreTest, keepsCookiesForItsSessionsAndThoseWithAnExpiryForTheNextRun)
{
    receive(open(), "kept=1; Max-Age=3600; HttpOnly");
    auto store = open();
    receive(store, "session=2");
    receive(store, "too=3; Max-Age=3600");
    EXPECT_EQ(sentWith(store), "kept=1 session=2 too=3");
    EXPECT_EQ(sentWith(open()), "kept=1 too=3");
    EXPECT_EQ(sentWith(std::make_shared<CookieStore>()), "");
    HttpSession without(executor());
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(send(without, {.url = server.url("/"), .headers = {{"X-Set", "sid=4"}}}).body, "");
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    receive(open(), "kept=1; Max-Age=0"); // the server takes it back
    EXPECT_EQ(sentWith(open()), "too=3");
    for (int signIn = 0; signIn < 2; ++signIn) { // the second is kept like the first
        store->clear();
        EXPECT_EQ(sentWith(store), "");
        EXPECT_FALSE(QFile::exists(path));
        receive(store, "again=1; Max-Age=3600");
        EXPECT_EQ(sentWith(open()), "again=1");
    }
}

TEST_F(CookieStoreTest, readsWhatItCanOfAnyFile)
{
    const auto now = std::chrono::system_clock::time_point(1000s);
    const QByteArray good = "#HttpOnly_127.0.0.1\tFALSE\t/\tFALSE\t1001\tsid\tabc";
    EXPECT_THAT(readCookies("# comment\n\n" + good + "\r\n" + good, now), ElementsAre(good, good));
    EXPECT_THAT(readCookies(writeCookies({good, good}), now), ElementsAre(good, good));
    for (QByteArray bad : {"127.0.0.1\tFALSE\t/\tFALSE\t1000\texpired\tx", "127.0.0.1\tFALSE\t/\tFALSE\t0\tsession\tx",
                           "127.0.0.1\tFALSE\t/\tFALSE\tsoon\tn\tx", "127.0.0.1\tFALSE\t/\tFALSE\t2000\tn",
                           "127.0.0.1\tMAYBE\t/\tFALSE\t2000\tn\tx", "\tFALSE\t/\tFALSE\t2000\tn\tx",
                           "127.0.0.1\tFALSE\t/\tFALSE\t2000\t\tx", "127.0.0.1\tFALSE\tpath\tFALSE\t2000\tn\tx"})
        EXPECT_THAT(readCookies(bad, now), IsEmpty()) << bad.constData();
    EXPECT_THAT(readCookies(good + '\0', now), IsEmpty());
    EXPECT_THAT(readCookies(QByteArray(5000, '\0') + QByteArray(100'000, 'x'), now), IsEmpty());
    const QByteArray garbage("\xff\x00\tgarbage\n{\"a\":1}\n", 19);
    EXPECT_THAT(readCookies(garbage + good + '\n' + good.first(good.size() / 2), now), ElementsAre(good));
}

TEST_F(CookieStoreTest, saysWhatWillNotBeThereAtTheNextStart)
{
    QDir(folder.path()).mkpath("blocked/cookies");
    const std::tuple<QString, QByteArray, const char*> cases[] = {
        {path, "sid=1; Max-Age=3600", ""},
        {"", "sid=1", ""},
        {folder.filePath("other/cookies"), "sid=1", "The platform's sign-in ends with the program."},
        {folder.filePath("blocked/cookies"), "sid=1; Max-Age=3600", "“cookies” cannot be written: Is a directory."}};
    for (const auto& [file, setting, problem] : cases) {
        const auto store = std::make_shared<CookieStore>(file);
        receive(store, setting);
        EXPECT_EQ(store->problem(), problem) << file.toStdString();
        EXPECT_EQ(sentWith(store), "sid=1") << "in memory it serves";
        receive(store, "sid=2"); // in its place
        EXPECT_EQ(store->problem() == "", file.isEmpty()) << file.toStdString();
    }
}

TEST_F(CookieStoreTest, programsThatUseOneFileSeeEachOthersChanges)
{
    const auto one = open();
    const auto other = open();
    receive(one, "sid=1; Max-Age=3600; HttpOnly");
    EXPECT_EQ(sentWith(other), "sid=1");
    receive(other, "more=2; Max-Age=3600");
    receive(one, "own=3; Max-Age=3600");
    EXPECT_EQ(sentWith(one), "more=2 own=3 sid=1");
    EXPECT_EQ(sentWith(open()), "more=2 own=3 sid=1");
    receive(other, "sid=2; Max-Age=3600; HttpOnly");
    receive(other, "more=; Max-Age=0");
    EXPECT_EQ(sentWith(one), "own=3 sid=2");
    other->clear();
    EXPECT_EQ(sentWith(one), "");
    receive(one, "sid=4; Max-Age=3600");
    EXPECT_EQ(sentWith(other), "sid=4");
    EXPECT_EQ(QDir(folder.filePath("data")).entryList(QDir::Files), QStringList("cookies")) << "no lock is left";
}

TEST_F(CookieStoreTest, waitsForAProgramThatWritesTheFile)
{
    const auto store = open();
    receive(store, "sid=1; Max-Age=3600");
    const auto contents = readFile(path);
    std::optional other(LockFile::open(path + ".lock"));
    ASSERT_EQ(other->tryLock(), LockFile::Outcome::taken);
    std::jthread writer([&] { receive(store, "more=2; Max-Age=3600"); });
    std::this_thread::sleep_for(50ms); // should it write all the same, it has done so by now
    writeFile(path, contents + QByteArray(contents).replace("sid", "own"));
    other.reset();
    writer.join();
    EXPECT_EQ(sentWith(open()), "more=2 own=1 sid=1");
}

TEST_F(CookieStoreTest, aClearedStoreTakesNothingFromRequestsThatBeganBefore)
{
    const auto store = open();
    receive(store, "sid=old; Max-Age=3600");
    HttpSession session(executor(), {.sharedCookies = store});
    auto before = session.send({.url = server.url("/"), .headers = {{"X-Set", "sid=renewed; Max-Age=3600"}}});
    store->clear();
    receive(store, "new=1; Max-Age=3600");
    EXPECT_EQ(asio::co_spawn(executor(), std::move(before), asio::use_future).get().body, "sid=old");
    EXPECT_EQ(send(session, {.url = server.url("/")}).body, "new=1");
    EXPECT_EQ(sentWith(open()), "new=1");
}

TEST_F(CookieStoreTest, takesNoMoreThanItsShareFromADomain)
{
    auto store = open();
    for (int cookie = 10; cookie < 80; ++cookie)
        receive(store, "c" + QByteArray::number(cookie) + "=1; Max-Age=3600");
    const auto sent = sentWith(store);
    EXPECT_EQ(sent.count('='), 64);
    EXPECT_TRUE(sent.startsWith("c10=1 c11=1")) << "what came first stays";
    EXPECT_EQ(readFile(path).count('\n'), 64);
}

TEST_F(CookieStoreTest, losesNothingOfTwoProgramsAndManyThreads)
{
    const std::array stores{open(), open()};
    std::vector<std::jthread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&, i] {
            for (char n = 'a'; n < 'i'; ++n)
                receive(stores[std::size_t(i % 2)], QByteArray::number(i) + '=' + QByteArray(2000, n) + "; Max-Age=99");
        });
    }
    writers.clear();
    EXPECT_EQ(sentWith(open()).count('='), 4);
}

} // namespace
} // namespace palvera
