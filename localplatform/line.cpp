// Joins two programs by a line of their own, in network namespaces that nothing else is in, and spoils it: delay, loss,
// a limit of speed, breaks. One thread moves the packets from one end's device to the other's. Needs the right to make
// network namespaces.

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <deque>
#include <iostream>
#include <optional>
#include <random>
#include <set>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <netinet/ip.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Packet = std::vector<std::uint8_t>;

struct Options {
    double delay = 0;            ///< ms, each way
    double loss = 0;             ///< share of the packets, each way
    double rate = 0;             ///< Mbit/s, each way; 0 is no limit
    double breakEvery = 0;       ///< s; 0 is never
    std::size_t queue = 1 << 20; ///< bytes that wait for their turn, beyond which packets are dropped
    unsigned seed = 1;
};

int check(int result, const char* what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

// --- The two ends

/// A device to which the namespace's packets for the other end go, as whole packets.
int makeDevice()
{
    const int device = check(::open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC), "/dev/net/tun");
    ifreq request{};
    std::strcpy(request.ifr_name, "line");
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    check(::ioctl(device, TUNSETIFF, &request), "the device of the line");
    return device;
}

void setAddress(int number)
{
    const auto command = "ip link set lo up && ip addr add 10.77.0." + std::to_string(number) +
                         "/24 dev line && ip link set line up txqueuelen 4000";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("the line's address could not be set");
}

void send(int socket, int device)
{
    char nothing = 0;
    iovec bytes{&nothing, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof device)> room{};
    msghdr message{.msg_iov = &bytes, .msg_iovlen = 1, .msg_control = room.data(), .msg_controllen = room.size()};
    auto* header = CMSG_FIRSTHDR(&message);
    *header = {.cmsg_len = CMSG_LEN(sizeof device), .cmsg_level = SOL_SOCKET, .cmsg_type = SCM_RIGHTS};
    std::memcpy(CMSG_DATA(header), &device, sizeof device);
    check(int(::sendmsg(socket, &message, 0)), "handing over the device");
}

int receive(int socket)
{
    char nothing = 0;
    iovec bytes{&nothing, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room{};
    msghdr message{.msg_iov = &bytes, .msg_iovlen = 1, .msg_control = room.data(), .msg_controllen = room.size()};
    int device = -1;
    if (::recvmsg(socket, &message, 0) != 1 || !CMSG_FIRSTHDR(&message))
        throw std::runtime_error("one end of the line could not be made");
    std::memcpy(&device, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof device);
    return device;
}

struct End {
    pid_t process;
    int device;
};

/// Starts `command` in a network namespace of its own, as 10.77.0.`number`. It does not outlive this program.
End startEnd(int number, const std::vector<std::string>& command)
{
    std::array<int, 2> pair{};
    check(::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, pair.data()), "socketpair");
    const auto parent = ::getpid();
    const auto process = check(::fork(), "fork");
    if (process == 0) {
        try {
            check(::prctl(PR_SET_PDEATHSIG, SIGTERM), "prctl");
            if (::getppid() != parent)
                ::_exit(1);
            check(::unshare(CLONE_NEWNET), "a network namespace");
            send(pair[1], makeDevice());
            setAddress(number);
            std::vector<char*> words;
            for (const auto& word : command)
                words.push_back(const_cast<char*>(word.c_str()));
            words.push_back(nullptr);
            ::execvp(words[0], words.data());
            throw std::system_error(errno, std::generic_category(), command[0]);
        } catch (const std::exception& failure) {
            std::cerr << "palvera-local-line: " << failure.what() << '\n';
            ::_exit(127);
        }
    }
    ::close(pair[1]);
    const int device = receive(pair[0]);
    ::close(pair[0]);
    return {process, device};
}

// --- The packets

std::uint16_t checksum(std::uint32_t sum, const std::uint8_t* bytes, std::size_t size)
{
    for (std::size_t i = 0; i + 1 < size; i += 2)
        sum += std::uint32_t(bytes[i] << 8 | bytes[i + 1]);
    while (sum >> 16)
        sum = (sum & 0xffff) + (sum >> 16);
    return htons(std::uint16_t(~sum));
}

/// The TCP header of a packet without IP options; null for others.
tcphdr* tcpOf(Packet& packet)
{
    if (packet.size() < sizeof(iphdr) + sizeof(tcphdr) || packet[0] != 0x45 || packet[9] != IPPROTO_TCP)
        return nullptr;
    return reinterpret_cast<tcphdr*>(packet.data() + sizeof(iphdr));
}

/// What ends the connection of `packet` at once for its sender.
Packet resetFor(const Packet& packet)
{
    Packet reset(sizeof(iphdr) + sizeof(tcphdr));
    auto* ip = reinterpret_cast<iphdr*>(reset.data());
    const auto* from = reinterpret_cast<const iphdr*>(packet.data());
    *ip = {.ihl = 5,
           .version = 4,
           .tot_len = htons(std::uint16_t(reset.size())),
           .ttl = 64,
           .protocol = IPPROTO_TCP,
           .saddr = from->daddr,
           .daddr = from->saddr};
    ip->check = checksum(0, reset.data(), sizeof(iphdr));
    const auto* asked = reinterpret_cast<const tcphdr*>(packet.data() + sizeof(iphdr));
    auto* tcp = reinterpret_cast<tcphdr*>(reset.data() + sizeof(iphdr));
    tcp->source = asked->dest;
    tcp->dest = asked->source;
    tcp->seq = asked->ack_seq;
    tcp->doff = 5;
    tcp->rst = 1;
    std::uint32_t pseudo = IPPROTO_TCP + sizeof(tcphdr);
    for (std::size_t i = 12; i < sizeof(iphdr); i += 2) // both addresses
        pseudo += std::uint32_t(reset[i] << 8 | reset[i + 1]);
    tcp->check = checksum(pseudo, reset.data() + sizeof(iphdr), sizeof(tcphdr));
    return reset;
}

/// One direction.
class Way {
public:
    Way(const Options& options, int to, unsigned seed) : m_options(options), m_to(to), m_random(seed) {}

    void take(Packet packet, Clock::time_point now)
    {
        if (std::bernoulli_distribution(m_options.loss)(m_random) || m_waiting + packet.size() > m_options.queue)
            return;
        m_free = std::max(m_free, now);
        if (m_options.rate > 0)
            m_free += std::chrono::nanoseconds(std::int64_t(double(packet.size()) * 8e3 / m_options.rate));
        m_waiting += packet.size();
        m_onTheLine.emplace_back(m_free, std::move(packet));
    }
    void deliver(Clock::time_point now)
    {
        for (; !m_onTheLine.empty() && arrival() <= now; m_onTheLine.pop_front()) {
            const auto& packet = m_onTheLine.front().second;
            m_waiting -= packet.size();
            [[maybe_unused]] auto written = ::write(m_to, packet.data(), packet.size()); // a full device drops it
        }
    }
    std::optional<Clock::time_point> next() const
    {
        return m_onTheLine.empty() ? std::nullopt : std::optional(arrival());
    }

private:
    Clock::time_point arrival() const
    {
        return m_onTheLine.front().first + std::chrono::microseconds(std::int64_t(m_options.delay * 1000));
    }

    const Options& m_options;
    const int m_to;
    std::minstd_rand m_random;
    std::deque<std::pair<Clock::time_point, Packet>> m_onTheLine; // each with when it has left
    std::size_t m_waiting = 0;
    Clock::time_point m_free{};
};

/// Moves packets until the client's program ends, and gives its exit status.
class Line {
public:
    Line(const Options& options, const End& server, const End& client)
        : m_options(options),
          m_server(server),
          m_client(client),
          m_up(options, server.device, options.seed),
          m_down(options, client.device, options.seed + 1)
    {}

    int run()
    {
        int status = 0;
        while (::waitpid(m_client.process, &status, WNOHANG) == 0) {
            std::array<pollfd, 2> devices{pollfd{m_server.device, POLLIN, 0}, pollfd{m_client.device, POLLIN, 0}};
            const auto wait = untilNext(Clock::now());
            ::ppoll(devices.data(), devices.size(), &wait, nullptr);
            const auto now = Clock::now();
            breakWhenDue(now);
            read(m_client.device, now);
            read(m_server.device, now);
            m_up.deliver(now);
            m_down.deliver(now);
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    timespec untilNext(Clock::time_point now) const
    {
        auto next = now + std::chrono::milliseconds(20); // after which it looks whether the client's program has ended
        for (const auto* way : {&m_up, &m_down})
            if (auto due = way->next())
                next = std::min(next, *due);
        return {.tv_sec = 0, .tv_nsec = std::max<long>(0, long((next - now).count()))};
    }
    /// All connections that there are end, as when a gateway has lost its memory.
    void breakWhenDue(Clock::time_point now)
    {
        if (m_options.breakEvery == 0 || now < m_lastBreak + std::chrono::duration<double>(m_options.breakEvery))
            return;
        m_lastBreak = now;
        m_broken.insert(m_living.begin(), m_living.end());
        m_living.clear();
    }
    void read(int from, Clock::time_point now)
    {
        const bool isUp = from == m_client.device;
        for (int count = 0; count < 64; ++count) { // then it is the other direction's turn
            Packet packet(2048);
            const auto size = ::read(from, packet.data(), packet.size());
            if (size <= 0)
                return;
            packet.resize(std::size_t(size));
            if (auto* tcp = tcpOf(packet)) {
                const auto port = isUp ? tcp->source : tcp->dest; // which tells the client's connections apart
                if (isUp && tcp->syn)
                    m_broken.erase(port);
                if (m_broken.contains(port)) {
                    const auto reset = resetFor(packet);
                    if (!tcp->rst) [[maybe_unused]]
                        auto written = ::write(from, reset.data(), reset.size());
                    continue;
                }
                m_living.insert(port);
            }
            (isUp ? m_up : m_down).take(std::move(packet), now);
        }
    }

    const Options& m_options;
    const End m_server, m_client;
    Way m_up, m_down;
    std::set<std::uint16_t> m_living, m_broken; // ports of the client
    Clock::time_point m_lastBreak = Clock::now();
};

int run(const Options& options, const std::vector<std::string>& words)
{
    const auto middle = std::ranges::find(words, "--and");
    if (middle == words.begin() || words.end() - middle < 2)
        throw std::runtime_error("name the two programs, with --and between them");
    const End server = startEnd(1, {words.begin(), middle});
    const End client = startEnd(2, {std::next(middle), words.end()});
    const int status = Line(options, server, client).run();
    ::kill(server.process, SIGTERM);
    ::waitpid(server.process, nullptr, 0);
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    std::vector<std::string> words;
    CLI::App app("A bad line between two programs: SERVER... --and CLIENT..., 10.77.0.1 and 10.77.0.2");
    app.add_option("--delay", options.delay, "Milliseconds that a packet takes, each way");
    app.add_option("--loss", options.loss, "Share of the packets that are lost, such as 0.001, each way");
    app.add_option("--rate", options.rate, "Megabits in a second, each way");
    app.add_option("--queue", options.queue, "Bytes that may wait, beyond which packets are lost")
        ->capture_default_str();
    app.add_option("--break-every", options.breakEvery, "Seconds after which all connections are cut, again and again");
    app.add_option("--seed", options.seed, "Of the losses")->capture_default_str();
    app.prefix_command();
    CLI11_PARSE(app, argc, argv);
    words = app.remaining();
    try {
        return run(options, words);
    } catch (const std::exception& failure) {
        std::cerr << "palvera-local-line: " << failure.what() << '\n';
        return 1;
    }
}
