// The limit that an upload is measured against: eight threads, each with one socket, that read a file and write it to
// storage. No HTTP library, no retries, no progress; what it costs is what the kernel (and TLS) costs.
//
// raw_sender FILE PART_BYTES ADDRESSES: sends part N of FILE to the N-th address of the file ADDRESSES, one a line.

#include "RawConnection.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace palvera::bench;

constexpr std::size_t sliceSize = 1 << 20;
constexpr int senders = 8;

void sendParts(int file, off_t size, off_t partSize, const std::vector<std::string>& urls,
               std::atomic<std::size_t>& next)
{
    std::vector<char> slice(sliceSize);
    RawConnection connection(parseAddress(urls.front()));
    for (std::size_t part = next++; part < urls.size(); part = next++) {
        off_t begin = off_t(part) * partSize;
        off_t end = std::min(size, begin + partSize);
        std::string head = "PUT " + parseAddress(urls[part]).target +
                           " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: " + std::to_string(end - begin) +
                           "\r\n\r\n";
        connection.write(head.data(), head.size());
        for (off_t at = begin; at < end;) {
            auto count = ::pread(file, slice.data(), std::min(slice.size(), std::size_t(end - at)), at);
            if (count <= 0)
                die("cannot read");
            connection.write(slice.data(), std::size_t(count));
            at += count;
        }
        connection.readHead("200"); // storage answers a part without a body
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        die("usage: raw_sender FILE PART_BYTES ADDRESSES");
    int file = ::open(arguments[1], O_RDONLY | O_CLOEXEC);
    struct stat status{};
    if (file < 0 || ::fstat(file, &status) != 0)
        die("cannot open the file");
    std::vector<std::string> urls;
    std::ifstream list(arguments[3]);
    for (std::string line; std::getline(list, line);)
        urls.push_back(line);
    if (urls.empty())
        die("no addresses");
    std::atomic<std::size_t> next{0};
    std::vector<std::jthread> threads;
    for (int i = 0; i < senders; ++i)
        threads.emplace_back([&] { sendParts(file, status.st_size, std::atol(arguments[2]), urls, next); });
}
