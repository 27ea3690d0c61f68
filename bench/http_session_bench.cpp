// palvera-http-bench: what uploading parts costs through the program's own session, through threads that block in
// libcurl, and through bare sockets. Run it against palvera-bare-storage:
//
//   palvera-http-bench https://127.0.0.1:8443 --clients session,easy,raw --lanes 8 --part 64 --total 2048 --rounds 5
//
// The clients alternate, each run in a process of its own; the table shows medians. Every part is read from a file in
// the page cache into the lane's buffer, slice by slice as the client asks for bytes, as the upload engine does it.

#include "http/HttpSession.h"
#include "http/NetworkThreads.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/thread_pool.hpp>

#include <CLI/CLI.hpp>

#include <QUrl>

#include <curl/curl.h>
#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <thread>

namespace {

using namespace palvera;
namespace asio = boost::asio;

struct Plan {
    std::string url;
    std::vector<std::string> clients{"session", "easy", "raw"};
    int lanes = 8;
    qint64 part = 64; // MiB until normalised
    qint64 total = 2048;
    qint64 slice = 512; // KiB until normalised
    qint64 uploadSlice = 512;
    std::string congestion;
    int rounds = 5;
    bool wholePart = false; // read the part whole before its first byte is sent
    int file = -1;

    void normalise()
    {
        part <<= 20;
        total <<= 20;
        slice <<= 10;
        uploadSlice <<= 10;
    }
};

std::atomic<qint64> partsLeft;

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "palvera-http-bench: %s\n", what);
    std::_Exit(1);
}

/// One lane's body: a buffer for a part, filled from the file slice by slice.
class LaneBody final : public BodySource {
public:
    explicit LaneBody(const Plan& plan) : m_plan(plan), m_buffer(std::size_t(plan.part)) {}

    void rewind() { m_filled = 0; }
    qint64 size() const override { return m_plan.part; }
    std::size_t read(qint64 offset, std::span<char> into) override
    {
        auto available = view(offset, qint64(into.size()));
        std::memcpy(into.data(), available.data(), available.size());
        return available.size();
    }
    /// At least one and at most `most` bytes from `offset`.
    std::span<const char> view(qint64 offset, qint64 most)
    {
        while (m_filled <= offset || (m_plan.wholePart && m_filled < m_plan.part))
            fill();
        return {m_buffer.data() + offset, std::size_t(std::min(most, m_filled - offset))};
    }

private:
    void fill()
    {
        auto count = std::min(m_plan.slice, m_plan.part - m_filled);
        if (::pread(m_plan.file, m_buffer.data() + m_filled, std::size_t(count), m_filled) != count)
            fail("the file cannot be read");
        m_filled += count;
    }

    const Plan& m_plan;
    std::vector<char> m_buffer;
    qint64 m_filled = 0;
};

Task<void> sessionLane(HttpSession& session, const Plan& plan)
{
    LaneBody body(plan);
    while (--partsLeft >= 0) {
        body.rewind();
        HttpRequest request{.method = "PUT", .url = QByteArray::fromStdString(plan.url + "/part"), .source = &body};
        request.onSent = [](qint64, qint64) {};
        auto response = co_await session.send(std::move(request));
        if (response.status != 200)
            fail("storage refused a part");
    }
}

HttpSessionOptions sessionOptions(const Plan& plan)
{
    auto options = HttpSessionOptions::storage();
    options.verifyPeer = false;
    options.uploadSlice = plan.uploadSlice;
    if (!plan.congestion.empty())
        options.loopbackCongestionControl = QByteArray::fromStdString(plan.congestion);
    return options;
}

void runLanes(const Plan& plan, const std::function<Executor()>& sessionExecutor)
{
    asio::thread_pool pool{std::size_t(plan.lanes)};
    std::vector<std::unique_ptr<HttpSession>> sessions;
    for (int i = 0; i < plan.lanes; ++i) {
        sessions.push_back(std::make_unique<HttpSession>(sessionExecutor(), sessionOptions(plan)));
        asio::co_spawn(asio::make_strand(pool), sessionLane(*sessions.back(), plan), [](std::exception_ptr failure) {
            if (failure)
                fail("a request failed");
        });
    }
    pool.join();
}

/// Each lane's session on a thread of its own, as the upload engine does it.
void runSession(const Plan& plan)
{
    NetworkThreads threads{std::size_t(plan.lanes)};
    runLanes(plan, [&] { return threads.next(); });
}

/// All sessions on the threads of one pool.
void runPooledSession(const Plan& plan)
{
    asio::thread_pool pool{std::size_t(plan.lanes)};
    runLanes(plan, [&] { return pool.get_executor(); });
}

struct EasyBody {
    LaneBody& body;
    qint64 offset = 0;
};

std::size_t readEasy(char* into, std::size_t size, std::size_t count, void* user)
{
    auto& from = *static_cast<EasyBody*>(user);
    if (from.offset == from.body.size())
        return 0;
    auto got = from.body.read(from.offset, {into, size * count});
    from.offset += qint64(got);
    return got;
}

void easyLane(const Plan& plan)
{
    LaneBody body(plan);
    CURL* easy = curl_easy_init();
    auto* headers = curl_slist_append(nullptr, "Expect:");
    while (--partsLeft >= 0) {
        body.rewind();
        EasyBody from{.body = body};
        curl_easy_setopt(easy, CURLOPT_URL, (plan.url + "/part").c_str());
        curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 0L);
        curl_easy_setopt(easy, CURLOPT_UPLOAD_BUFFERSIZE, long(plan.uploadSlice));
        curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
        curl_easy_setopt(easy, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(easy, CURLOPT_INFILESIZE_LARGE, curl_off_t(plan.part));
        curl_easy_setopt(easy, CURLOPT_READFUNCTION, &readEasy);
        curl_easy_setopt(easy, CURLOPT_READDATA, &from);
        if (curl_easy_perform(easy) != CURLE_OK)
            fail("a request failed");
    }
    curl_easy_cleanup(easy);
    curl_slist_free_all(headers);
}

/// A connection without any library but OpenSSL.
class RawConnection {
public:
    explicit RawConnection(const Plan& plan)
    {
        QUrl url(QString::fromStdString(plan.url));
        m_socket = ::socket(AF_INET, SOCK_STREAM, 0);
        int on = 1;
        ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(quint16(url.port()));
        if (::connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            fail("no storage there");
        if (url.scheme() != "https")
            return;
        m_context = SSL_CTX_new(TLS_client_method());
        m_tls = SSL_new(m_context);
        SSL_set_fd(m_tls, m_socket);
        if (SSL_connect(m_tls) != 1)
            fail("no encrypted connection");
    }
    ~RawConnection()
    {
        SSL_free(m_tls);
        SSL_CTX_free(m_context);
        ::close(m_socket);
    }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    void write(std::span<const char> bytes)
    {
        while (!bytes.empty()) {
            auto sent = m_tls ? SSL_write(m_tls, bytes.data(), int(bytes.size()))
                              : ::send(m_socket, bytes.data(), bytes.size(), 0);
            if (sent <= 0)
                fail("a write failed");
            bytes = bytes.subspan(std::size_t(sent));
        }
    }
    void readAnswer()
    {
        std::string answer;
        char bytes[4096];
        while (!answer.ends_with("\r\n\r\n")) {
            auto got = m_tls ? SSL_read(m_tls, bytes, sizeof bytes) : ::recv(m_socket, bytes, sizeof bytes, 0);
            if (got <= 0)
                fail("no answer");
            answer.append(bytes, std::size_t(got));
        }
    }

private:
    int m_socket;
    SSL_CTX* m_context = nullptr;
    SSL* m_tls = nullptr;
};

void rawLane(const Plan& plan)
{
    LaneBody body(plan);
    RawConnection connection(plan);
    const auto head =
        "PUT /part HTTP/1.1\r\nHost: storage\r\nContent-Length: " + std::to_string(plan.part) + "\r\n\r\n";
    while (--partsLeft >= 0) {
        body.rewind();
        connection.write({head.data(), head.size()});
        for (qint64 offset = 0; offset < plan.part;) {
            auto slice = body.view(offset, plan.uploadSlice);
            connection.write(slice);
            offset += qint64(slice.size());
        }
        connection.readAnswer();
    }
}

void runThreads(const Plan& plan, void (*lane)(const Plan&))
{
    std::vector<std::thread> threads;
    for (int i = 0; i < plan.lanes; ++i)
        threads.emplace_back(lane, std::cref(plan));
    for (auto& thread : threads)
        thread.join();
}

void runClient(const Plan& plan, const std::string& client)
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
    partsLeft = plan.total / plan.part;
    if (client == "session")
        runSession(plan);
    else if (client == "pool")
        runPooledSession(plan);
    else if (client == "easy")
        runThreads(plan, &easyLane);
    else if (client == "raw")
        runThreads(plan, &rawLane);
    else
        fail("the clients are session, pool, easy and raw");
}

struct Figures {
    double seconds, user, system, faults, switches;
};

double secondsOf(const timeval& time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

Figures measure(const Plan& plan, const std::string& client)
{
    auto begun = std::chrono::steady_clock::now();
    auto child = ::fork();
    if (child == 0) {
        runClient(plan, client);
        std::_Exit(0);
    }
    int status = 0;
    rusage used{};
    if (::wait4(child, &status, 0, &used) != child || status != 0)
        fail("a run failed");
    std::chrono::duration<double> took = std::chrono::steady_clock::now() - begun;
    double gib = double(plan.total) / double(1 << 30);
    return {took.count(), secondsOf(used.ru_utime) / gib, secondsOf(used.ru_stime) / gib, double(used.ru_minflt) / gib,
            double(used.ru_nvcsw + used.ru_nivcsw) / gib};
}

double median(const std::vector<Figures>& all, double Figures::* figure)
{
    std::vector<double> values;
    for (const auto& one : all)
        values.push_back(one.*figure);
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void printTable(const Plan& plan, const std::map<std::string, std::vector<Figures>>& results)
{
    std::printf("%-10s %8s %8s %10s %10s %10s %12s %14s\n", "client", "s", "MiB/s", "CPU s/GiB", "user", "system",
                "faults/GiB", "switches/GiB");
    for (const auto& client : plan.clients) {
        const auto& all = results.at(client);
        double seconds = median(all, &Figures::seconds);
        double user = median(all, &Figures::user);
        double system = median(all, &Figures::system);
        std::printf("%-10s %8.2f %8.0f %10.3f %10.3f %10.3f %12.0f %14.0f\n", client.c_str(), seconds,
                    double(plan.total >> 20) / seconds, user + system, user, system, median(all, &Figures::faults),
                    median(all, &Figures::switches));
    }
}

/// A file of one part's bytes that lives in the page cache alone.
int makeFile(qint64 size)
{
    int file = ::memfd_create("part", MFD_CLOEXEC);
    std::vector<char> bytes(1 << 20, 'x');
    for (qint64 done = 0; done < size; done += qint64(bytes.size()))
        if (::write(file, bytes.data(), bytes.size()) != ssize_t(bytes.size()))
            fail("no room for the part");
    return file;
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("What uploading parts costs, client by client");
    Plan plan;
    app.add_option("url", plan.url, "Where palvera-bare-storage listens")->required();
    app.add_option("--clients", plan.clients, "session, pool (sessions that share threads), easy, raw")->delimiter(',');
    app.add_option("--lanes", plan.lanes, "Parts under way at a time");
    app.add_option("--congestion", plan.congestion, "Congestion control of the sessions' connections");
    app.add_option("--part", plan.part, "MiB of a part");
    app.add_option("--total", plan.total, "MiB in all");
    app.add_option("--slice", plan.slice, "KiB read from the file at a time");
    app.add_option("--upload-slice", plan.uploadSlice, "KiB handed to the network at a time");
    app.add_option("--rounds", plan.rounds, "Runs of each client");
    app.add_flag("--whole-part", plan.wholePart, "Read each part whole before sending it");
    CLI11_PARSE(app, argc, argv);
    plan.normalise();
    plan.file = makeFile(plan.part);
    std::signal(SIGPIPE, SIG_IGN);
    std::map<std::string, std::vector<Figures>> results;
    for (int round = 0; round < plan.rounds; ++round)
        for (const auto& client : plan.clients)
            results[client].push_back(measure(plan, client));
    printTable(plan, results);
}
