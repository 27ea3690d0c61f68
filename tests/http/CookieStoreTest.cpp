#include "HttpFixture.h"

#include "http/CookieFile.h"
#include "http/CookieStore.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <thread>

namespace palvera {

namespace {

using Connection = LoopbackServer::Connection;
using testing::ElementsAre;
using testing::IsEmpty;

class CookieStoreTest : public HttpFixture {
protected:
    /// What a request with `store` sends as its Cookie header.
    QByteArray sentWith(std::shared_ptr<CookieStore> store)
    {
        return send({.url = m_server.url("/")}, {.sharedCookies = std::move(store)}).body;
    }
    /// Has the server set cookies: `setting` is the value of a Set-Cookie header.
    void receive(std::shared_ptr<CookieStore> store, const QByteArray& setting)
    {
        send({.url = m_server.url("/"), .headers = {{"X-Set", setting}}}, {.sharedCookies = std::move(store)});
    }
    std::shared_ptr<CookieStore> open() { return std::make_shared<CookieStore>(m_file); }
    QByteArray fileContents()
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(QStringLiteral("data/cookies"));
    LoopbackServer m_server{[](Connection& connection) {
        for (auto head = connection.readHead(); !head.isEmpty(); head = connection.readHead()) {
            auto setting = headerOf(head, "X-Set");
            auto headers = setting.isEmpty() ? QByteArray() : "Set-Cookie: " + setting + "\r\n";
            connection.write(answer("200 OK", headerOf(head, "Cookie"), headers));
        }
    }};
};

TEST_F(CookieStoreTest, sharesCookiesAmongItsSessionsOnly)
{
    auto store = std::make_shared<CookieStore>();
    receive(store, "sid=abc; Path=/; HttpOnly");
    EXPECT_EQ(sentWith(store), "sid=abc");
    EXPECT_EQ(sentWith(std::make_shared<CookieStore>()), "");
    EXPECT_EQ(sentWith(nullptr), "");
}

TEST_F(CookieStoreTest, keepsCookiesWithAnExpiryForTheNextRun)
{
    receive(open(), "kept=1; Max-Age=3600; HttpOnly");
    {
        auto store = open();
        receive(store, "session=2");
        receive(store, "too=3; Max-Age=3600");
        EXPECT_EQ(sentWith(store).split(';').size(), 3);
    }
    auto sent = sentWith(open()).split(';');
    std::ranges::for_each(sent, [](auto& cookie) { cookie = cookie.trimmed(); });
    EXPECT_THAT(sent, testing::UnorderedElementsAre("kept=1", "too=3"));
    EXPECT_EQ(QFileInfo(m_file).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(CookieStoreTest, forgetsWhatTheServerTakesBack)
{
    receive(open(), "kept=1; Max-Age=3600");
    receive(open(), "kept=1; Max-Age=0");
    EXPECT_EQ(sentWith(open()), "");
}

TEST_F(CookieStoreTest, clearsMemoryAndFile)
{
    auto store = open();
    receive(store, "kept=1; Max-Age=3600; HttpOnly");
    receive(store, "session=2");
    store->clear();
    EXPECT_EQ(sentWith(store), "");
    EXPECT_FALSE(QFile::exists(m_file));
    EXPECT_EQ(sentWith(open()), "");
    receive(store, "kept=1; Max-Age=3600; HttpOnly"); // signing in again is kept again
    EXPECT_EQ(sentWith(open()), "kept=1");
}

TEST_F(CookieStoreTest, readsWhatItCanOfAnyFile)
{
    const auto now = std::chrono::system_clock::time_point(std::chrono::seconds(1'000));
    const QByteArray good = "#HttpOnly_127.0.0.1\tFALSE\t/\tFALSE\t1001\tsid\tabc";
    EXPECT_THAT(readCookies("# comment\n\n" + good + "\r\n" + good, now), ElementsAre(good, good));
    EXPECT_EQ(readCookies(writeCookies({good, good}), now).size(), 2);
    for (QByteArray bad : {"127.0.0.1\tFALSE\t/\tFALSE\t1000\texpired\tx", "127.0.0.1\tFALSE\t/\tFALSE\t0\tsession\tx",
                           "127.0.0.1\tFALSE\t/\tFALSE\tsoon\tn\tx", "127.0.0.1\tFALSE\t/\tFALSE\t2000\tn",
                           "127.0.0.1\tMAYBE\t/\tFALSE\t2000\tn\tx", "\tFALSE\t/\tFALSE\t2000\tn\tx",
                           "127.0.0.1\tFALSE\t/\tFALSE\t2000\t\tx", "127.0.0.1\tFALSE\tpath\tFALSE\t2000\tn\tx"})
        EXPECT_THAT(readCookies(bad, now), IsEmpty()) << bad.constData();
    EXPECT_THAT(readCookies(QByteArray(5000, '\0') + QByteArray(100'000, 'x'), now), IsEmpty());
}

TEST_F(CookieStoreTest, opensADamagedFileAndReplacesIt)
{
    receive(open(), "kept=1; Max-Age=3600");
    auto contents = fileContents();
    QFile file(m_file);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\xff\x00\tgarbage\n{\"a\":1}\n", 19) + contents + contents.first(contents.size() / 2));
    file.close();
    auto store = open();
    EXPECT_EQ(sentWith(store), "kept=1");
    receive(store, "kept=2; Max-Age=3600");
    EXPECT_EQ(readCookies(fileContents(), std::chrono::system_clock::now()).size(), 1);
    EXPECT_EQ(fileContents().count('\n'), 1);
}

TEST_F(CookieStoreTest, lastsWithoutAFileItCanWrite)
{
    CookieStore blocked(m_folder.path()); // a folder stands where the file should
    auto store = std::make_shared<CookieStore>(m_folder.path());
    receive(store, "kept=1; Max-Age=3600");
    EXPECT_EQ(sentWith(store), "kept=1");
}

TEST_F(CookieStoreTest, keepsTheFileWholeWhenTwoProgramsAndManyThreadsUseIt)
{
    auto first = open(), second = open();
    std::atomic<bool> done = false;
    std::atomic<int> torn = 0;
    std::thread reader([&] {
        while (!done) {
            auto contents = fileContents();
            auto lines = contents.count('\n');
            torn += readCookies(contents, std::chrono::system_clock::now()).size() != lines || lines > 4;
        }
    });
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&, i] {
            const auto& store = i % 2 ? first : second;
            auto name = "c" + QByteArray::number(i);
            for (int n = 0; n < 8; ++n)
                receive(store, name + "=" + QByteArray(2000, char('a' + n)) + "; Max-Age=3600");
        });
    }
    for (auto& writer : writers)
        writer.join();
    done = true;
    reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(sentWith(open()).count('='), 2); // of whichever program wrote last
}

} // namespace

} // namespace palvera
